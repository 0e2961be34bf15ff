#pragma once

#include <string>
#include <vector>

#include "base/bars.h"
#include "chart/chart_colors.h"
#include "chart/chart_source.h"
#include "chart/main_chart.h"
#include "chart/plot.h"
#include "settings/settings.h"

namespace orin::chart {

struct ChartOptions {
  MainChartOptions main;
  std::vector<const SubChart*> sub_charts;  // from top to bottom; none is null
  ChartTheme theme = ChartTheme::kAsSet;
};

/// A chart before it is laid out: what its panes show. It keeps views of the source's bars.
struct Chart {
  std::string stock;   // "チャート銘柄：AAPL(APPLE)"
  std::string period;  // "日足"
  store::BarPeriod bar_period = store::BarPeriod::kDay;
  base::BarsView bars;  // up to the last one in view
  BarRange view;
  std::vector<Plot> panes;     // the main chart first
  int32_t main_percent = 100;  // of the height, for the main chart
  ChartColors colors;
};

/// The newest bars, as many as the settings show, with the free bars right of them. `future` bars
/// are free at least.
BarRange NewestBars(ChartSource& source, const settings::ChartActionSettings& action,
                    int32_t future);

/// The source must outlive the chart. `view` is within the source's bars; it may be empty.
Chart BuildChart(ChartSource& source, const settings::Settings& settings,
                 const ChartOptions& options, const BarRange& view);

/// The bars beyond the newest one that the chosen charts reach.
int32_t FutureBars(const ChartOptions& options, const settings::ChartDisplaySettings& display);

}  // namespace orin::chart
