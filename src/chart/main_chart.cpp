#include "chart/main_chart.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "base/shown_number.h"
#include "chart/subcharts/plot_lines.h"

namespace orin::chart {

using base::BarsView;
using base::Currency;
using base::Int128;
using store::BarPeriod;

namespace {

constexpr std::array kAverageNames = {"日移動平均", "週移動平均", "月移動平均"};
constexpr int64_t kWhole = 100 * Currency::kScale;  // a rate of 100 per cent

const settings::MainChartLines& LinesOf(const PlotRequest& request) {
  switch (request.source.Period()) {
    case BarPeriod::kWeek:
      return request.display.week;
    case BarPeriod::kMonth:
      return request.display.month;
    case BarPeriod::kDay:
      break;
  }
  return request.display.day;
}

std::string AverageName(const PlotRequest& request, int32_t period) {
  return std::to_string(period) + kAverageNames.at(static_cast<size_t>(request.source.Period()));
}

/// A number as a condition has it: without decimals that say nothing.
std::string Literal(Currency value) {
  std::string text = value.ToText();
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

/// `average` × (100 + rate) / 100, halves to even.
base::ValueColumn BandColumn(const base::ValueColumn& average, Currency rate) {
  base::ValueColumn band;
  band.Reset(average.Size());
  for (size_t i = 0; i < average.Size(); ++i) {
    if (!average.Has(i)) continue;
    const Int128 raw =
        base::DivideHalfToEven(Int128{average.At(i).Raw()} * (kWhole + rate.Raw()), Int128{kWhole});
    const bool fits =
        raw > -std::numeric_limits<int64_t>::max() && raw < std::numeric_limits<int64_t>::max();
    if (fits) band.Set(i, Currency::FromRaw(static_cast<int64_t>(raw)));
  }
  return band;
}

void AddBands(const PlotRequest& request, const settings::MainChartLines& lines,
              const base::ValueColumn& average, TimePlot& plot) {
  const int32_t period = lines.averages[0].period;
  const std::string rate = Literal(lines.band.rate);
  for (const bool is_above : {true, false}) {
    PlotLine band;
    band.label = AverageName(request, period) + (is_above ? "＋" : "－") + rate + "％乖離 ";
    const Currency part =
        is_above ? lines.band.rate : lines.band.rate.Negated().value_or(Currency());
    band.name = ItemCallName(request.source.Period(), "移動平均", {period}) + " * " +
                Literal(Currency::FromRaw((kWhole + part.Raw()) / 100));
    band.color = request.colors.Of(lines.band.color);
    band.number = NumberForm::kPrice;
    band.values = BandColumn(average, part);
    plot.lines.push_back(std::move(band));
  }
}

void AddAverages(const PlotRequest& request, TimePlot& plot) {
  const settings::MainChartLines& lines = LinesOf(request);
  for (const settings::PeriodLine& average : lines.averages) {
    if (!average.check) continue;
    plot.lines.push_back(LineOf(request, {"moving_average", "移動平均", {average.period}},
                                AverageName(request, average.period) + " ", average.color,
                                NumberForm::kPrice));
  }
  if (!lines.band.check) return;
  AddBands(request, lines,
           IndicatorColumn(BarsOfView(request), "moving_average", {lines.averages[0].period}),
           plot);
}

/// The closes of the second stock, drawn from the first close in view that both have.
void AddComparison(const PlotRequest& request, Plot& result, TimePlot& plot) {
  const store::StockRecord* second = request.source.Second();
  if (second == nullptr) return;
  const BarsView bars = BarsOfView(request);
  const BarsView others =
      request.source.Bars(*second, request.source.Period()).Until(request.view.last);
  const std::string code(second->code.Text());
  PlotLine line;
  line.label = code + " ";
  line.name = code + "の終値";
  line.color = request.colors.Of(request.common.cross_hair);
  line.number = NumberForm::kPrice;
  line.values = CloseColumn(others);
  for (int32_t t = std::max(1, request.view.first); t <= bars.Count(); ++t) {
    if (!bars.HasData(t) || t > others.Count() || !others.HasData(t)) continue;
    if (others.Close(t) <= Currency() || bars.Close(t) <= Currency()) continue;
    line.factor = bars.Close(t).ToDouble() / others.Close(t).ToDouble();
    plot.lines.push_back(std::move(line));
    return;
  }
  result.notes.push_back("比較銘柄（" + code + "）と重なる期間がありません。");
}

void AddTrendLines(const PlotRequest& request, Plot& result, TimePlot& plot) {
  const auto lines = request.source.TrendLines();
  if (!lines) {
    result.notes.push_back(lines.error().message);
    return;
  }
  for (const store::TrendLine& line : *lines) {
    const base::Date first = line.first_date.Day();
    const base::Date second = line.second_date.Day();
    if (first.IsNone() || second.IsNone()) continue;
    plot.segments.push_back({request.source.BarOf(first), line.first_price,
                             request.source.BarOf(second), line.second_price,
                             request.colors.Of(request.common.trend_lines)});
  }
}

/// The first bar with the new shares.
void AddSplits(const PlotRequest& request, TimePlot& plot) {
  for (const store::SplitEvent& event : request.source.Splits()) {
    const base::Date first = base::Date::FromSerial(event.last_day_with_rights.Serial() + 1);
    const auto ratio = Currency::FromDouble(event.ratio);
    const std::string text =
        "分割 " + (event.ratio_text.empty() && ratio ? Literal(*ratio) : event.ratio_text);
    plot.bar_marks.push_back({request.source.BarOf(first), text});
  }
}

void FixScale(const PlotRequest& request, const settings::CommonSettings& common, TimePlot& plot) {
  const BarPeriod period = request.source.Period();
  const bool is_meant = period == BarPeriod::kDay    ? common.fixes_main_chart
                        : period == BarPeriod::kWeek ? common.fixes_weekly_charts
                                                     : common.fixes_monthly_charts;
  const bool is_range = common.fixed_low < common.fixed_high;
  if (!common.has_fixed_scale || !is_meant || !is_range) return;
  plot.scale.kind = ScaleRule::Kind::kFixed;
  plot.scale.fixed = {common.fixed_low.ToDouble(), common.fixed_high.ToDouble()};
}

void AddLastClose(const PlotRequest& request, TimePlot& plot) {
  const BarsView bars = BarsOfView(request);
  for (int32_t t = bars.Count(); t >= bars.First(); --t) {
    if (!bars.HasData(t)) continue;
    plot.price_mark = PriceMark{bars.Close(t), request.colors.Text()};
    return;
  }
}

}  // namespace

Plot MainChart(const PlotRequest& request, const settings::CommonSettings& common,
               const MainChartOptions& options) {
  Plot result;
  TimePlot plot;
  AddPrices(request, plot);
  plot.scale.form = options.scale;
  FixScale(request, common, plot);
  AddAverages(request, plot);
  if (options.shows_comparison) AddComparison(request, result, plot);
  if (options.volume == VolumePlace::kOverlay) {
    plot.underlay = std::get<TimePlot>(VolumeChart(request, 0).content).lines;
  }
  if (common.shows_trend_lines) AddTrendLines(request, result, plot);
  if (request.action.marks_splits) AddSplits(request, plot);
  if (request.action.marks_last_close) AddLastClose(request, plot);
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
