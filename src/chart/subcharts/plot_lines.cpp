#include "chart/subcharts/plot_lines.h"

#include <algorithm>
#include <array>

#include "base/shown_number.h"
#include "indicators/indicator.h"

namespace orin::chart {

using base::BarsView;
using base::Currency;

namespace {

constexpr std::array<std::string_view, 3> kItemPrefixes = {"", "週間", "月間"};

/// Decimals below which nothing is lost, at least `least` of four.
int32_t DecimalsOf(Currency value, int32_t least) {
  int32_t decimals = 4;
  for (int64_t raw = value.Raw(); decimals > least && raw % 10 == 0; raw /= 10) --decimals;
  return decimals;
}

}  // namespace

std::string ItemCallName(store::BarPeriod period, std::string_view item,
                         std::initializer_list<int32_t> arguments) {
  std::string name(kItemPrefixes.at(static_cast<size_t>(period)));
  name += item;
  name += '(';
  for (const int32_t argument : arguments) name += std::to_string(argument) + ",";
  return name + "0)";
}

base::ValueColumn IndicatorColumn(const BarsView& bars, std::string_view indicator,
                                  std::initializer_list<int32_t> parameters) {
  base::ValueColumn values;
  const int32_t count = std::max(0, bars.Count());
  values.Reset(static_cast<size_t>(count));
  const indicators::Indicator* found = indicators::FindIndicator(indicator);
  indicators::Parameters all{};
  std::copy(parameters.begin(), parameters.end(), all.begin());
  if (count > 0 && found != nullptr && found->Accepts(all)) {
    indicators::ComputeColumn(*found, bars, all, 1, count, values);
  }
  return values;
}

PlotLine LineOf(const PlotRequest& request, const IndicatorLine& indicator, std::string label,
                base::Color color, NumberForm number) {
  PlotLine line;
  line.label = std::move(label);
  line.name = ItemCallName(request.source.Period(), indicator.item, indicator.parameters);
  line.color = request.colors.Of(color);
  line.number = number;
  line.values = IndicatorColumn(BarsOfView(request), indicator.indicator, indicator.parameters);
  return line;
}

void AddPrices(const PlotRequest& request, TimePlot& plot) {
  const bool is_daily = request.source.Period() == store::BarPeriod::kDay;
  plot.prices = PricePlot{request.style, !is_daily || request.action.has_daily_shadows};
  plot.number = NumberForm::kPrice;
  plot.scale.gap = request.action.free_height_percent / 100.0;
}

base::Result<base::ValueColumn> ExpressionColumn(const PlotRequest& request,
                                                 const std::string& expression) {
  const auto all = request.source.Evaluate(expression);
  if (!all) return base::Forward(all);
  base::ValueColumn values;
  values.Reset(std::min(all->Size(), static_cast<size_t>(std::max(0, request.view.last))));
  for (size_t i = 0; i < values.Size(); ++i) {
    if (all->Has(i)) values.Set(i, all->At(i));
  }
  return values;
}

base::ValueColumn CloseColumn(const BarsView& bars) { return IndicatorColumn(bars, "close", {}); }

std::string ShownValue(const std::optional<Currency>& value, NumberForm number) {
  if (!value) return {};
  const int32_t least = number == NumberForm::kPrice ? 2 : number == NumberForm::kPercent ? 1 : 0;
  const int32_t most = number == NumberForm::kVolume ? 0 : DecimalsOf(*value, least);
  return base::Grouped(*value, most, false);
}

BarsView BarsOfView(const PlotRequest& request) {
  return request.source.Bars().Until(request.view.last);
}

}  // namespace orin::chart
