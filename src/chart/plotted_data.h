#pragma once

#include <string>

#include "chart/chart.h"

namespace orin::chart {

/// Everything the chart plots as CSV, UTF-8 with "\n": a line for each bar in view with the values
/// of all panes of bars (four decimals, empty where there is none; a bar beyond the newest one has
/// "+1", "+2" ... for its date), then, after an empty line and its title each, the tables of the
/// other panes.
std::string PlottedCsv(const Chart& chart);

}  // namespace orin::chart
