#include <algorithm>
#include <string>

#include "chart/subcharts/plot_lines.h"
#include "indicators/index_deviation.h"

// Sub-charts of a stock against another.

namespace orin::chart {

using base::BarsView;

namespace {

constexpr const char* kDowIndex = "^DJI";
constexpr const char* kSpread = "さや(0)";
// In per cent, multiplied first: a quotient has four decimals only.
constexpr const char* kRatio = "終値(0) * 100 / 第二銘柄終値(0)";

/// A line of both closes of a day.
Plot PairPlot(const PlotRequest& request, const char* expression, std::string label,
              const char* between) {
  Plot result;
  TimePlot plot;
  plot.number = NumberForm::kPrice;
  const store::StockRecord* second = request.source.Second();
  if (second == nullptr) {
    result.notes.emplace_back("比較銘柄が指定されていません。");
    result.content = std::move(plot);
    return result;
  }
  result.subtitle =
      std::string(request.source.Stock().code.Text()) + between + std::string(second->code.Text());
  PlotLine line;
  line.label = std::move(label);
  line.name = expression;
  line.color = request.colors.Of(request.display.correlation.color);
  line.number = NumberForm::kPrice;
  if (auto values = ExpressionColumn(request, expression)) {
    line.values = std::move(*values);
  } else {
    result.notes.push_back(values.error().message);
  }
  plot.lines.push_back(std::move(line));
  result.content = std::move(plot);
  return result;
}

}  // namespace

Plot IndexDeviationChart(const PlotRequest& request, size_t /*which*/) {
  Plot result;
  TimePlot plot;
  plot.scale.with_zero = true;
  const store::StockRecord* index = request.source.Find(kDowIndex);
  const BarsView bars = BarsOfView(request);
  if (index == nullptr) {
    result.notes.push_back(std::string("比較銘柄（") + kDowIndex + "）が見つかりません。");
  } else if (bars.Count() >= 1) {
    const int32_t base = std::max(1, request.view.first);
    const auto found = indicators::DeviationFromIndex(
        bars, request.source.Bars(*index, request.source.Period()), base, bars.Count());
    PlotLine line;
    line.label = "乖離:";
    line.name = "ダウ指数乖離";
    line.color = request.colors.Of(request.display.deviation[0].color);
    line.values.Reset(static_cast<size_t>(bars.Count()));
    for (size_t i = 0; i < found.values.Size(); ++i) {
      const size_t place = static_cast<size_t>(base - 1) + i;
      if (found.values.Has(i)) line.values.Set(place, found.values.At(i));
    }
    if (found.base_bar == 0) result.notes.emplace_back("指数と比べられる足がありません。");
    plot.lines.push_back(std::move(line));
  }
  result.content = std::move(plot);
  return result;
}

Plot SpreadChart(const PlotRequest& request, size_t /*which*/) {
  return PairPlot(request, kSpread, "さや:", " － ");
}

Plot RatioChart(const PlotRequest& request, size_t /*which*/) {
  return PairPlot(request, kRatio, "比率％:", " ÷ ");
}

}  // namespace orin::chart
