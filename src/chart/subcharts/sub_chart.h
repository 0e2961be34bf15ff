#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "chart/chart_colors.h"
#include "chart/chart_source.h"
#include "chart/plot.h"
#include "chart/scales.h"
#include "settings/chart_action_settings.h"
#include "settings/chart_display_settings.h"

namespace orin::chart {

/// What a pane is made from. Everything must outlive the call alone.
struct PlotRequest {
  ChartSource& source;
  const settings::ChartDisplaySettings& display;
  const settings::ChartActionSettings& action;
  const settings::ChartCommonColorSettings& common;
  const ChartColors& colors;
  PriceStyle style = PriceStyle::kCandles;  // of panes with prices
  /// The bars in view. Whatever depends on an end of the chart ends with the last of them.
  BarRange view;
};

/// A row of the catalogue of sub-charts.
struct SubChart {
  int32_t number = 0;     // of the setting sub_chart, from 1; weekly and monthly composite
                          // charts have that of their daily sibling
  std::string_view key;   // for the command line, as "rsi"
  std::string_view name;  // as "ＲＳＩチャート"; the title has it in 【 】
  Plot (*make)(const PlotRequest& request, size_t which);
  size_t which = 0;  // of several charts of one kind, from 0
  /// The only bars it is drawn on; none: on all.
  std::optional<store::BarPeriod> period;

  [[nodiscard]] std::string Title() const { return "【" + std::string(name) + "】"; }
};

/// The whole catalogue, in the order of the numbers.
std::span<const SubChart> SubCharts();
/// By number and kind of bars; null for 0 and other numbers that there are not.
const SubChart* FindSubChart(int32_t number, store::BarPeriod period);
/// By what a user types: the key, the name or the number, whatever its width and letter case. Of
/// charts that differ by the kind of bars the one for `period`. Null where nothing is meant.
const SubChart* FindSubChart(std::string_view typed, store::BarPeriod period);
/// The number of bars that the charts reach beyond the newest one.
int32_t FutureBars(const SubChart& chart, const settings::ChartDisplaySettings& display);

// The charts of the catalogue, a family a file. `which` counts from 0.

Plot RsiChart(const PlotRequest& request, size_t which);
Plot VolumeRatioChart(const PlotRequest& request, size_t which);
Plot StochasticsChart(const PlotRequest& request, size_t which);
Plot RciChart(const PlotRequest& request, size_t which);
Plot DeviationChart(const PlotRequest& request, size_t which);

Plot KagiChart(const PlotRequest& request, size_t which);
Plot PointAndFigureChart(const PlotRequest& request, size_t which);

Plot CorrelationChart(const PlotRequest& request, size_t which);
Plot InverseWatchChart(const PlotRequest& request, size_t which);

Plot VolumeChart(const PlotRequest& request, size_t which);
Plot VolumeByPriceChart(const PlotRequest& request, size_t which);
Plot IntradayChart(const PlotRequest& request, size_t which);

Plot IchimokuChart(const PlotRequest& request, size_t which);
Plot BollingerChart(const PlotRequest& request, size_t which);
Plot ParabolicChart(const PlotRequest& request, size_t which);

Plot IndexDeviationChart(const PlotRequest& request, size_t which);
Plot SpreadChart(const PlotRequest& request, size_t which);
Plot RatioChart(const PlotRequest& request, size_t which);

Plot OriginalChart(const PlotRequest& request, size_t which);
Plot DayCompositeChart(const PlotRequest& request, size_t which);
Plot WeekCompositeChart(const PlotRequest& request, size_t which);
Plot MonthCompositeChart(const PlotRequest& request, size_t which);

}  // namespace orin::chart
