#include <algorithm>
#include <optional>
#include <string>

#include "base/shown_number.h"
#include "chart/subcharts/plot_lines.h"
#include "indicators/kagi.h"
#include "indicators/point_and_figure.h"

// Sub-charts of columns that follow each other whatever time lies between them.

namespace orin::chart {

using base::BarsView;
using base::Currency;

namespace {

constexpr double kKagiColumn = 7;  // pixels at least
constexpr double kFigureColumn = 5;
// Above that the marks of a figure cannot be told apart anyway.
constexpr int64_t kMostMarks = 20'000;

/// The bars in view alone.
base::BarColumns VisibleBars(const PlotRequest& request, const BarsView& bars) {
  base::BarColumns columns;
  for (int32_t t = std::max(1, request.view.first); t <= bars.Count(); ++t) {
    columns.Append(
        {bars.DateOf(t), bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t), bars.Volume(t)});
  }
  return columns;
}

/// Columns are dated where a month begins.
void AddColumnTick(PlanePlot& plot, size_t column, base::Date date, base::Date before) {
  const bool is_new = before.IsNone() || YearMonth(date) != YearMonth(before);
  if (is_new) plot.column_ticks.push_back({static_cast<double>(column), YearMonth(date)});
}

/// A kagi line as it is drawn: thick from where it rises above its last shoulder, thin from where
/// it falls below its last waist.
class KagiPen {
 public:
  KagiPen(PlanePlot& plot, base::Color color, bool is_thick)
      : plot_(plot), color_(color), is_thick_(is_thick) {}

  void Vertical(double column, double from, double to, std::optional<double> turn) {
    const bool rises = to > from;
    const bool passes = turn && (rises ? to > *turn : to < *turn);
    if (passes && is_thick_ != rises) {
      Add(column, from, column, *turn);
      is_thick_ = rises;
      from = *turn;
    }
    Add(column, from, column, to);
  }
  void Shoulder(double column, double price) { Add(column, price, column + 1, price); }

 private:
  void Add(double x1, double y1, double x2, double y2) {
    plot_.lines.push_back({color_, 0, is_thick_, {{x1, y1}, {x2, y2}}});
  }

  PlanePlot& plot_;
  base::Color color_;
  bool is_thick_;
};

void DrawKagi(const indicators::KagiLine& line, base::Color color, PlanePlot& plot) {
  if (line.points.empty()) return;
  const auto price = [&](size_t i) { return line.points[i].price.ToDouble(); };
  KagiPen pen(plot, color, price(1) > price(0));
  for (size_t i = 0; i + 1 < line.points.size(); ++i) {
    const auto column = static_cast<double>(i);
    const std::optional<double> turn = i > 0 ? std::optional<double>(price(i - 1)) : std::nullopt;
    pen.Vertical(column, price(i), price(i + 1), turn);
    if (i + 2 < line.points.size()) pen.Shoulder(column, price(i + 1));
  }
}

/// The boxes of a column at once where there are too many for marks.
void DrawFigure(const indicators::PointAndFigure& figure, const PlotRequest& request,
                PlanePlot& plot) {
  const bool has_marks = figure.points <= kMostMarks;
  PlaneMarks rises{request.colors.Rise(), 0, MarkShape::kCross, {}};
  PlaneMarks falls{request.colors.Fall(), 1, MarkShape::kCircle, {}};
  const double box = figure.box.ToDouble();
  for (size_t i = 0; i < figure.columns.size(); ++i) {
    const indicators::PointAndFigureColumn& column = figure.columns[i];
    const auto x = static_cast<double>(i);
    PlaneMarks& marks = column.rising ? rises : falls;
    if (!has_marks) {
      plot.lines.push_back({marks.color,
                            marks.number,
                            true,
                            {{x, static_cast<double>(column.low) * box},
                             {x, static_cast<double>(column.high) * box}}});
      continue;
    }
    for (int64_t k = column.low; k <= column.high; ++k) {
      marks.points.push_back({x, static_cast<double>(k) * box});
    }
  }
  plot.marks = {std::move(rises), std::move(falls)};
}

void FillKagi(const indicators::KagiLine& line, const BarsView& bars, PlanePlot& plot,
              PlotTable& table) {
  table.headings = {"番号", "年月日", "株価"};
  base::Date before;
  for (size_t i = 0; i < line.points.size(); ++i) {
    const base::Date date = bars.DateOf(line.points[i].bar);
    const Currency price = line.points[i].price;
    if (i + 1 < line.points.size()) AddColumnTick(plot, i, date, before);
    before = date;
    plot.points.push_back(
        {{static_cast<double>(i), price.ToDouble()},
         {{"日付 ", date.ToText(), {}}, {"終値 ", ShownValue(price, NumberForm::kPrice), {}}}});
    table.rows.push_back({std::to_string(i + 1), date.ToText(), price.ToText()});
  }
}

std::string DaysText(const std::string& from, const std::string& to) { return from + "～" + to; }

void FillFigure(const indicators::PointAndFigure& figure, const BarsView& bars, PlanePlot& plot,
                PlotTable& table) {
  // A box lies within the closes, so that its price is in the range of prices.
  const auto price = [&](int64_t box) { return Currency::FromRaw(box * figure.box.Raw()); };
  table.headings = {
      "番号", "種類", "最初の年月日", "最後の年月日", "最も低い枠の株価", "最も高い枠の株価"};
  base::Date before;
  for (size_t i = 0; i < figure.columns.size(); ++i) {
    const indicators::PointAndFigureColumn& column = figure.columns[i];
    const std::string from = bars.DateOf(column.from).ToText();
    const std::string to = bars.DateOf(column.to).ToText();
    const std::string mark = column.rising ? "×" : "○";
    AddColumnTick(plot, i, bars.DateOf(column.from), before);
    before = bars.DateOf(column.from);
    const double middle = (price(column.low).ToDouble() + price(column.high).ToDouble()) / 2;
    plot.points.push_back({{static_cast<double>(i), middle},
                           {{"日付 ", DaysText(from, to), {}},
                            {mark + " ", std::to_string(column.high - column.low + 1), {}}}});
    table.rows.push_back({std::to_string(i + 1), mark, from, to, price(column.low).ToText(),
                          price(column.high).ToText()});
  }
}

/// A pane of columns that the settings switch off.
Plot SwitchedOff(double column_width) {
  Plot result;
  PlanePlot plot;
  plot.column_width = column_width;
  result.notes.emplace_back(kSwitchedOff);
  result.content = std::move(plot);
  return result;
}

}  // namespace

Plot KagiChart(const PlotRequest& request, size_t /*which*/) {
  const settings::KagiChart& chart = request.display.kagi;
  if (!chart.check) return SwitchedOff(kKagiColumn);
  const base::BarColumns visible = VisibleBars(request, BarsOfView(request));
  const BarsView bars(visible);
  const indicators::KagiLine line = indicators::BuildKagi(bars, chart.rate);
  Plot result;
  result.captions = {{"かぎ足：", std::to_string(chart.rate) + "%", {}},
                     {"  転換数：", std::to_string(line.turns), {}}};
  if (line.points.empty()) result.notes.emplace_back("率だけの値動きがまだありません。");
  PlanePlot plot;
  plot.column_width = kKagiColumn;
  DrawKagi(line, request.colors.Of(chart.color), plot);
  FillKagi(line, bars, plot, result.table);
  result.content = std::move(plot);
  return result;
}

Plot PointAndFigureChart(const PlotRequest& request, size_t /*which*/) {
  const settings::PointAndFigureChart& chart = request.display.point_and_figure;
  if (!chart.check) return SwitchedOff(kFigureColumn);
  const BarsView bars = BarsOfView(request);
  const int32_t span = bars.Count() - std::max(1, request.view.first) + 1;
  const auto figure = indicators::BuildPointAndFigure(bars, span, chart.rate, chart.reversal_boxes);
  Plot result;
  result.captions = {{"P&F値幅率：", std::to_string(chart.rate) + "%", {}},
                     {"  総ﾎﾟｲﾝﾄ数：", std::to_string(figure ? figure->points : 0), {}}};
  PlanePlot plot;
  plot.column_width = kFigureColumn;
  if (figure && !figure->columns.empty()) {
    plot.mark_height = figure->box.ToDouble();
    DrawFigure(*figure, request, plot);
    FillFigure(*figure, bars, plot, result.table);
  } else {
    result.notes.emplace_back("枠を埋める値動きがまだありません。");
  }
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
