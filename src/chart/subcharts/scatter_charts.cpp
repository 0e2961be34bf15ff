#include <algorithm>
#include <cstdlib>
#include <string>

#include "base/shown_number.h"
#include "chart/subcharts/plot_lines.h"
#include "indicators/change_rate_correlation.h"
#include "indicators/inverse_watch.h"

// Sub-charts of points on a plane.

namespace orin::chart {

using base::BarsView;
using base::Currency;

namespace {

constexpr store::BarPeriod PeriodOf(indicators::CorrelationPeriod period) {
  return static_cast<store::BarPeriod>(static_cast<int32_t>(period) - 1);
}

std::string Signed(Currency value) { return base::Grouped(value, 2, true); }

/// "y = 0.92x + 0.13".
std::string Equation(const indicators::RegressionLine& line) {
  const Currency size = line.intercept.Abs().value_or(Currency());
  return "y = " + base::Grouped(line.slope, 2, false) + "x " +
         (line.intercept < Currency() ? "- " : "+ ") + base::Grouped(size, 2, false);
}

void AddRegression(const indicators::RegressionLine& line, base::Color color, PlanePlot& plot) {
  double low = 0;
  double high = 0;
  for (const PlanePoint& point : plot.points) {
    low = std::min(low, point.at.x);
    high = std::max(high, point.at.x);
  }
  const auto at = [&](double x) {
    return Point{x, line.slope.ToDouble() * x + line.intercept.ToDouble()};
  };
  plot.lines.push_back({color, 0, false, {at(low), at(high)}});
}

void FillCorrelation(const PlotRequest& request, const store::StockRecord& other,
                     store::BarPeriod period, PlanePlot& plot, Plot& result) {
  const settings::CorrelationChart& chart = request.display.correlation;
  const BarsView chart_bars = BarsOfView(request);
  if (chart_bars.Count() < 1) return;
  const base::Date last = chart_bars.DateOf(chart_bars.Count());
  const base::BarColumns own = request.source.BarsUntil(request.source.Stock(), period, last);
  const base::BarColumns compared = request.source.BarsUntil(other, period, last);
  const BarsView bars(own);
  const BarsView others(compared);
  const indicators::ChangeRateCorrelation found =
      indicators::CorrelateChangeRates(bars, others, chart.average, chart.plot_count);
  const base::Color color = request.colors.Of(chart.plot_color);
  PlaneMarks marks{color, 1, MarkShape::kDot, {}};
  const std::string across(other.code.Text());
  const std::string up(request.source.Stock().code.Text());
  result.subtitle += " 横：" + across + " 縦：" + up + "（変化率％）";
  result.table.headings = {"年月日", across + "の変化率", up + "の変化率"};
  for (const indicators::ChangeRatePoint& point : found.points) {
    const Point at{point.comparison.ToDouble(), point.stock.ToDouble()};
    const base::Date date = bars.DateOf(point.bar);
    marks.points.push_back(at);
    plot.across.extent.Add(at.x);
    plot.up.extent.Add(at.y);
    plot.points.push_back({at,
                           {{"日付 ", date.ToText(), {}},
                            {across + ":", Signed(point.comparison), {}},
                            {up + ":", Signed(point.stock), {}}}});
    result.table.rows.push_back({date.ToText(), point.comparison.ToText(), point.stock.ToText()});
  }
  const PlaneMarks newest{
      request.colors.SubText(), 0, MarkShape::kCircle,
      marks.points.empty() ? std::vector<Point>() : std::vector{marks.points.back()}};
  plot.marks = {std::move(marks), newest};
  if (found.coefficient) {
    result.captions.push_back({"相関係数 ", base::Grouped(*found.coefficient, 4, false), {}});
  }
  if (found.line) {
    AddRegression(*found.line, request.colors.Of(chart.color), plot);
    result.captions.push_back({"", Equation(*found.line), {}});
  }
  if (found.points.empty()) result.notes.emplace_back("両方の変化率がそろう足がありません。");
}

}  // namespace

Plot CorrelationChart(const PlotRequest& request, size_t /*which*/) {
  const settings::CorrelationChart& chart = request.display.correlation;
  Plot result;
  PlanePlot plot;
  plot.has_zero_lines = true;
  plot.across.number = plot.up.number = NumberForm::kPercent;
  plot.across.extent.Add(0);
  plot.up.extent.Add(0);
  const store::StockRecord* other = request.source.Find(chart.stock_code);
  const auto period = indicators::CorrelationPeriodOf(chart.data_type);
  if (!chart.check || !period) {
    result.notes.emplace_back(kSwitchedOff);
  } else if (other == nullptr) {
    result.notes.push_back("比較銘柄（" + chart.stock_code + "）が見つかりません。");
  } else {
    result.subtitle = std::string(store::PeriodName(PeriodOf(*period))) + " " +
                      std::to_string(chart.average) + "本平均";
    FillCorrelation(request, *other, PeriodOf(*period), plot, result);
  }
  result.content = std::move(plot);
  return result;
}

Plot InverseWatchChart(const PlotRequest& request, size_t /*which*/) {
  const settings::PeriodLine& chart = request.display.inverse_watch;
  Plot result;
  PlanePlot plot;
  plot.across.number = NumberForm::kVolume;
  result.subtitle = "横：出来高 縦：終値（" + std::to_string(chart.period) + "本平均）";
  if (!chart.check) {
    result.notes.emplace_back(kSwitchedOff);
    result.content = std::move(plot);
    return result;
  }
  const BarsView bars = BarsOfView(request);
  const auto points = indicators::InverseWatchPoints(bars, chart.period,
                                                     std::max(1, request.view.first), bars.Count());
  PlaneLine line{request.colors.Of(chart.color), 0, false, {}};
  PlaneMarks months{request.colors.SubText(), 1, MarkShape::kCross, {}};
  result.table.headings = {"年月日", "DI", "KI"};
  for (size_t i = 0; i < points.size(); ++i) {
    const indicators::InverseWatchPoint& point = points[i];
    const Point at{point.volume.ToDouble(), point.price.ToDouble()};
    const base::Date date = bars.DateOf(point.bar);
    line.points.push_back(at);
    plot.across.extent.Add(at.x);
    plot.up.extent.Add(at.y);
    // Crosses show where the line has got to by each month, the last one where it is now.
    const bool is_month = i > 0 && YearMonth(date) != YearMonth(bars.DateOf(points[i - 1].bar));
    if (is_month || i + 1 == points.size()) months.points.push_back(at);
    plot.points.push_back({at,
                           {{"日付 ", date.ToText(), {}},
                            {"KI:", ShownValue(point.price, NumberForm::kPrice), {}},
                            {"DI:", ShownValue(point.volume, NumberForm::kVolume), {}}}});
    result.table.rows.push_back({date.ToText(), point.volume.ToText(), point.price.ToText()});
  }
  if (points.empty()) {
    result.notes.emplace_back("移動平均が計算できる足がありません。");
  } else {
    const auto& newest = plot.points.back().readout;
    result.captions = {newest[1], newest[2]};
  }
  plot.lines.push_back(std::move(line));
  plot.marks.push_back(std::move(months));
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
