#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chart/chart.h"
#include "chart/layout.h"
#include "chart/plot.h"

namespace orin::chart {

// What is told of a chart: all of it as data, in the order in which it is shown.

/// "19/07/23～20/01/10", the bars in view; empty without any.
std::string ViewDates(const Chart& chart);

/// The price of a bar: "日付 ", "始値 ", "高値 ", "安値 ", "終値 ", "前日比 " ("前週比 ", "前月比
/// ") and "出来高 ". The change is that from the last bar with data before it. A bar without data
/// has its date alone, a place beyond the bars nothing.
std::vector<ReadoutEntry> PriceReadout(const Chart& chart, int32_t bar);

/// The values of a pane of bars at a bar, its lines in order; empty for other panes.
std::vector<ReadoutEntry> LineReadout(const Plot& plot, const Chart& chart, int32_t bar);

/// The lines with their values at the newest bar in view.
std::vector<ReadoutEntry> Legend(const Chart& chart, const Plot& plot);

/// What is told of a point of the picture: of the main chart the prices and its lines, of other
/// panes the lines at the bar under x, or what lies nearest. Empty outside the panes.
std::vector<ReadoutEntry> ReadoutAt(const Chart& chart, const ChartLayout& layout, double x,
                                    double y);

}  // namespace orin::chart
