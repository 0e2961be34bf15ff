#include <algorithm>
#include <array>
#include <string>

#include "chart/subcharts/plot_lines.h"
#include "indicators/parabolic.h"

// Sub-charts of lines over the prices.

namespace orin::chart {

using base::BarsView;

namespace {

Plot PricePlotOf(const PlotRequest& request, TimePlot plot) {
  AddPrices(request, plot);
  Plot result;
  result.content = std::move(plot);
  return result;
}

Plot SwitchedOff(const PlotRequest& request) {
  Plot result = PricePlotOf(request, {});
  result.notes.emplace_back(kSwitchedOff);
  return result;
}

/// The bars followed by `count` that have no data.
base::BarColumns Prolonged(const BarsView& bars, int32_t count) {
  base::BarColumns columns;
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    columns.Append(
        {bars.DateOf(t), bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t), bars.Volume(t)});
  }
  for (int32_t i = 0; i < count; ++i) columns.Append({});
  return columns;
}

/// The close `ahead` bars later, under the bar it is compared with.
base::ValueColumn LaggingColumn(const BarsView& bars, int32_t ahead) {
  base::ValueColumn values;
  values.Reset(static_cast<size_t>(std::max(0, bars.Count())));
  for (int32_t t = bars.First(); int64_t{t} + ahead <= bars.Count(); ++t) {
    if (bars.HasData(t + ahead)) values.Set(static_cast<size_t>(t - 1), bars.Close(t + ahead));
  }
  return values;
}

}  // namespace

Plot IchimokuChart(const PlotRequest& request, size_t /*which*/) {
  const settings::IchimokuChart& chart = request.display.ichimoku;
  if (!chart.check) return SwitchedOff(request);
  const BarsView bars = BarsOfView(request);
  const store::BarPeriod period = request.source.Period();
  TimePlot plot;
  const auto line = [&](const char* label, const IndicatorLine& indicator, base::Color color) {
    plot.lines.push_back(LineOf(request, indicator, label, color, NumberForm::kPrice));
  };
  line("基準線:", {"base_line", "基準値", {chart.base_line.period}}, chart.base_line.color);
  line("転換線:", {"conversion_line", "転換値", {chart.conversion.period}}, chart.conversion.color);

  // The spans lie ahead of the bars they are made from.
  const base::BarColumns prolonged = Prolonged(bars, chart.leading1.period - 1);
  const BarsView ahead(prolonged);
  const auto span = [&](const char* label, const char* item, const char* indicator,
                        std::initializer_list<int32_t> parameters, base::Color color) {
    PlotLine leading;
    leading.label = label;
    leading.name = ItemCallName(period, item, parameters);
    leading.color = request.colors.Of(color);
    leading.number = NumberForm::kPrice;
    leading.values = IndicatorColumn(ahead, indicator, parameters);
    plot.lines.push_back(std::move(leading));
  };
  span("先行１:", "先行スパン１", "leading_span_1",
       {chart.base_line.period, chart.conversion.period, chart.leading1.period},
       chart.leading1.color);
  span("先行２:", "先行スパン２", "leading_span_2", {chart.leading1.period, chart.leading2.period},
       chart.leading2.color);
  plot.cloud =
      Cloud{2, 3, request.colors.Of(chart.leading1.color), request.colors.Of(chart.leading2.color)};

  PlotLine lagging;
  lagging.label = "遅行線:";
  lagging.name = "遅行スパン(" + std::to_string(chart.lagging.period) + ")";
  lagging.color = request.colors.Of(chart.lagging.color);
  lagging.number = NumberForm::kPrice;
  lagging.values = LaggingColumn(bars, chart.lagging.period - 1);
  plot.lines.push_back(std::move(lagging));
  return PricePlotOf(request, std::move(plot));
}

Plot BollingerChart(const PlotRequest& request, size_t /*which*/) {
  constexpr std::array kUpper = {"+1 ", "+2 ", "+3 "};
  constexpr std::array kLower = {"-1 ", "-2 ", "-3 "};
  const settings::BollingerChart& chart = request.display.bollinger;
  if (!chart.check) return SwitchedOff(request);
  TimePlot plot;
  plot.lines.push_back(LineOf(request, {"moving_average", "移動平均", {chart.period}},
                              std::to_string(chart.period) + ":", chart.color, NumberForm::kPrice));
  for (size_t i = 0; i < chart.bands.size(); ++i) {
    if (!chart.bands[i].check) continue;
    const auto deviations = static_cast<int32_t>(i + 1);
    for (const auto& [label, k] :
         {std::pair{kUpper.at(i), deviations}, std::pair{kLower.at(i), -deviations}}) {
      plot.lines.push_back(LineOf(request, {"bollinger", "ボリンジャーバンド", {chart.period, k}},
                                  label, chart.bands[i].color, NumberForm::kPrice));
    }
  }
  return PricePlotOf(request, std::move(plot));
}

Plot ParabolicChart(const PlotRequest& request, size_t /*which*/) {
  const settings::ParabolicChart& chart = request.display.parabolic;
  const BarsView bars = BarsOfView(request);
  const indicators::ParabolicPath path =
      indicators::BuildParabolic(bars, {chart.initial, chart.step, chart.maximum});
  std::array<PlotLine, 2> sides;
  sides[0].label = "SARB:";
  sides[1].label = "SARS:";
  sides[0].color = request.colors.Rise();
  sides[1].color = request.colors.Fall();
  for (PlotLine& side : sides) {
    side.name = side.label.substr(0, 4);
    side.form = LineForm::kDots;
    side.number = NumberForm::kPrice;
    side.values.Reset(static_cast<size_t>(std::max(0, bars.Count())));
  }
  for (size_t i = 0; i < path.stops.size(); ++i) {
    const indicators::ParabolicStop& stop = path.stops[i];
    PlotLine& side = sides.at(stop.side == indicators::StopSide::kBuy ? 0 : 1);
    side.values.Set(static_cast<size_t>(path.first_bar) - 1 + i, stop.stop);
  }
  TimePlot plot;
  plot.lines.assign(sides.begin(), sides.end());
  return PricePlotOf(request, std::move(plot));
}

}  // namespace orin::chart
