#include <array>
#include <string>

#include "chart/subcharts/plot_lines.h"

// Sub-charts of one or two lines between fixed limits, and the deviation from the average.

namespace orin::chart {

namespace {

/// A sub-chart of up to two lines of one indicator.
struct PairRow {
  std::string_view label;  // before the period in the readout
  std::string_view indicator;
  std::string_view item;
};

Plot PairPlot(const PlotRequest& request, const PairRow& row,
              const std::array<settings::PeriodLine, 2>& lines, const ScaleRule& scale) {
  TimePlot plot;
  plot.scale = scale;
  for (const settings::PeriodLine& line : lines) {
    if (!line.check) continue;
    plot.lines.push_back(LineOf(request, {row.indicator, row.item, {line.period}},
                                std::string(row.label) + std::to_string(line.period) + ":",
                                line.color, NumberForm::kPercent));
  }
  Plot result;
  if (plot.lines.empty()) result.notes.emplace_back(kSwitchedOff);
  result.content = std::move(plot);
  return result;
}

ScaleRule Between(double low, double high, std::vector<double> levels) {
  ScaleRule scale;
  scale.kind = ScaleRule::Kind::kFixed;
  scale.fixed = {low, high};
  scale.gap = 0;
  scale.levels = std::move(levels);
  return scale;
}

}  // namespace

Plot RsiChart(const PlotRequest& request, size_t /*which*/) {
  return PairPlot(request, {"RSI", "rsi", "ＲＳＩ"}, request.display.rsi,
                  Between(0, 100, {0, 30, 50, 70, 100}));
}

Plot VolumeRatioChart(const PlotRequest& request, size_t /*which*/) {
  return PairPlot(request, {"VR", "volume_ratio", "ＶＲ"}, request.display.volume_ratio,
                  Between(0, 100, {0, 30, 50, 70, 100}));
}

Plot RciChart(const PlotRequest& request, size_t /*which*/) {
  return PairPlot(request, {"RCI", "rci", "ＲＣＩ"}, request.display.rci,
                  Between(-100, 100, {-100, -80, 0, 80, 100}));
}

Plot DeviationChart(const PlotRequest& request, size_t /*which*/) {
  ScaleRule scale;
  scale.with_zero = true;
  return PairPlot(request, {"乖離", "deviation_rate", "移動平均乖離率"}, request.display.deviation,
                  scale);
}

Plot StochasticsChart(const PlotRequest& request, size_t /*which*/) {
  const settings::StochasticsChart& chart = request.display.stochastics;
  Plot result;
  TimePlot plot;
  plot.scale = Between(0, 100, {0, 20, 50, 80, 100});
  if (chart.check) {
    plot.lines.push_back(LineOf(request, {"stochastic_k", "％Ｋ", {chart.k_period}},
                                "%K:", chart.k_color, NumberForm::kPercent));
    plot.lines.push_back(LineOf(request, {"stochastic_d", "％Ｄ", {chart.k_period, chart.d_period}},
                                "%D:", chart.d_color, NumberForm::kPercent));
  } else {
    result.notes.emplace_back(kSwitchedOff);
  }
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
