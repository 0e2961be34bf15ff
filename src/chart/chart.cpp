#include "chart/chart.h"

#include <algorithm>

namespace orin::chart {

BarRange NewestBars(ChartSource& source, const settings::ChartActionSettings& action,
                    int32_t future) {
  const int32_t count = std::max(0, source.Bars().Count());
  return {std::max(1, count - std::max(1, action.shown_bars) + 1), count,
          std::max(action.free_bars, future)};
}

int32_t FutureBars(const ChartOptions& options, const settings::ChartDisplaySettings& display) {
  int32_t bars = 0;
  for (const SubChart* chart : options.sub_charts) {
    bars = std::max(bars, FutureBars(*chart, display));
  }
  return bars;
}

Chart BuildChart(ChartSource& source, const settings::Settings& settings,
                 const ChartOptions& options, const BarRange& view) {
  const store::StockRecord& stock = source.Stock();
  Chart chart{.stock = "チャート銘柄：" + std::string(stock.code.Text()) + "(" + stock.name + ")",
              .period = std::string(store::PeriodName(source.Period())),
              .bar_period = source.Period(),
              .bars = source.Bars().Until(view.last),
              .view = view,
              .panes = {},
              .main_percent = settings.orin.main_chart_percent,
              .colors = ChartColors(settings.chart_common_color, options.theme)};
  const PlotRequest request{source,
                            settings.chart_display,
                            settings.chart_action,
                            settings.chart_common_color,
                            chart.colors,
                            options.main.style,
                            view};
  chart.panes.push_back(MainChart(request, settings.common, options.main));
  std::vector<const SubChart*> below = options.sub_charts;
  if (options.main.volume == VolumePlace::kPane) {
    // A volume chart that was asked for is the pane.
    const SubChart* volume = FindSubChart("volume", source.Period());
    if (std::ranges::find(below, volume) == below.end()) below.insert(below.begin(), volume);
  }
  for (const SubChart* sub_chart : below) {
    Plot plot = sub_chart->make(request, sub_chart->which);
    plot.title = sub_chart->Title();
    chart.panes.push_back(std::move(plot));
  }
  return chart;
}

}  // namespace orin::chart
