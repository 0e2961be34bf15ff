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

}  // namespace

Plot KagiChart(const PlotRequest& request, size_t /*which*/) {
  const shell::KagiChart& chart = request.display.kagi;
  Plot result;
  PlanePlot plot;
  plot.column_width = kKagiColumn;
  if (chart.check) {
    const base::BarColumns visible = VisibleBars(request, BarsOfView(request));
    const BarsView bars(visible);
    const indicators::KagiLine line = indicators::BuildKagi(bars, chart.rate);
    DrawKagi(line, request.colors.Of(chart.color), plot);
    result.captions = {{"かぎ足：", std::to_string(chart.rate) + "%", {}},
                       {"  転換数：", std::to_string(line.turns), {}}};
    if (line.points.empty()) result.notes.emplace_back("率だけの値動きがまだありません。");
    result.table.headings = {"番号", "年月日", "株価"};
    base::Date before;
    for (size_t i = 0; i < line.points.size(); ++i) {
      const base::Date date = bars.DateOf(line.points[i].bar);
      const Currency price = line.points[i].price;
      if (i + 1 < line.points.size()) AddColumnTick(plot, i, date, before);
      before = date;
      plot.points.push_back(
          {{static_cast<double>(i), price.ToDouble()},
           {{"日付 ", date.ToText(), {}}, {"終値 ", ShownValue(price, NumberForm::kPrice), {}}}});
      result.table.rows.push_back({std::to_string(i + 1), date.ToText(), price.ToText()});
    }
  } else {
    result.notes.emplace_back(kSwitchedOff);
  }
  result.content = std::move(plot);
  return result;
}

Plot PointAndFigureChart(const PlotRequest& request, size_t /*which*/) {
  const shell::PointAndFigureChart& chart = request.display.point_and_figure;
  Plot result;
  PlanePlot plot;
  plot.column_width = kFigureColumn;
  if (!chart.check) {
    result.notes.emplace_back(kSwitchedOff);
    result.content = std::move(plot);
    return result;
  }
  const BarsView bars = BarsOfView(request);
  const int32_t span = bars.Count() - std::max(1, request.view.first) + 1;
  const auto figure = indicators::BuildPointAndFigure(bars, span, chart.rate, chart.reversal_boxes);
  result.captions = {{"P&F値幅率：", std::to_string(chart.rate) + "%", {}},
                     {"  総ﾎﾟｲﾝﾄ数：", std::to_string(figure ? figure->points : 0), {}}};
  result.table.headings = {"番号",         "種類",       "最初の年月日",
                           "最後の年月日", "最も低い枠", "最も高い枠"};
  if (!figure || figure->columns.empty()) {
    result.notes.emplace_back("枠を埋める値動きがまだありません。");
  } else {
    plot.mark_height = figure->box.ToDouble();
    DrawFigure(*figure, request, plot);
    base::Date before;
    for (size_t i = 0; i < figure->columns.size(); ++i) {
      const indicators::PointAndFigureColumn& column = figure->columns[i];
      const base::Date from = bars.DateOf(column.from);
      const base::Date to = bars.DateOf(column.to);
      AddColumnTick(plot, i, from, before);
      before = from;
      const int64_t boxes = column.high - column.low + 1;
      const double middle = static_cast<double>(column.low + column.high) / 2;
      plot.points.push_back({{static_cast<double>(i), middle * plot.mark_height},
                             {{"日付 ", from.ToText() + "～" + to.ToText(), {}},
                              {column.rising ? "× " : "○ ", std::to_string(boxes), {}}}});
      result.table.rows.push_back({std::to_string(i + 1), column.rising ? "×" : "○", from.ToText(),
                                   to.ToText(), std::to_string(column.low),
                                   std::to_string(column.high)});
    }
  }
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
