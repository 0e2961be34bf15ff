#include <algorithm>
#include <array>
#include <cmath>

#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kColumnGap = 0.06;
constexpr double kSmallestMark = 1.6;  // pixels of radius
constexpr double kDotRadius = 2.2;
constexpr double kThick = 2.2;  // times the line

Point PlaceOf(const PaneLayout& place, const Point& point) {
  return {place.across.Y(point.x), place.values.Y(point.y)};
}

bool IsShown(double column, const BarRange& columns) {
  return column >= columns.first && column <= columns.last;
}

void DrawPlaneLines(const ViewContext& context, const PlanePlot& plot, const PaneLayout& place) {
  const ViewStyle& style = context.style;
  for (const PlaneLine& line : plot.lines) {
    const double width = style.line * (line.is_thick ? kThick : 1);
    Line drawn{SeriesInk(line.color, line.number), width, {}};
    for (const Point& point : line.points) drawn.points.push_back(PlaceOf(place, point));
    if (drawn.points.size() > 1) context.items.emplace_back(std::move(drawn));
  }
}

/// Marks that are too small for their shape become boxes, one for the marks of a column.
void DrawColumnsOfMarks(const ViewContext& context, const PlaneMarks& marks,
                        const PaneLayout& place, double radius) {
  Boxes boxes{SeriesInk(marks.color, marks.number), {}};
  const auto width = std::max(1, static_cast<int32_t>(radius * 2));
  for (const Point& point : marks.points) {
    const Point at = PlaceOf(place, point);
    const Rect rect{static_cast<int32_t>(at.x) - width / 2, static_cast<int32_t>(at.y), width, 1};
    const bool continues = !boxes.rects.empty() && boxes.rects.back().left == rect.left &&
                           rect.top <= boxes.rects.back().top;
    if (continues) {
      Rect& column = boxes.rects.back();
      column.height = column.Bottom() - rect.top;
      column.top = rect.top;
    } else {
      boxes.rects.push_back(rect);
    }
  }
  if (!boxes.rects.empty()) context.items.emplace_back(std::move(boxes));
}

void DrawPlaneMarks(const ViewContext& context, const PlanePlot& plot, const PaneLayout& place) {
  const ViewStyle& style = context.style;
  for (const PlaneMarks& marks : plot.marks) {
    double radius = kDotRadius * style.line;
    if (plot.mark_height > 0) {
      const double unit_up = place.values.Y(0) - place.values.Y(plot.mark_height);
      const double unit_across = place.across.Y(1) - place.across.Y(0);
      radius = std::min(unit_up, unit_across) * 0.42;
      if (radius < kSmallestMark) {
        DrawColumnsOfMarks(context, marks, place, std::max(0.5, unit_across * 0.35));
        continue;
      }
    }
    if (marks.shape == MarkShape::kDot) radius = kDotRadius * style.line * 0.7;
    Marks drawn{SeriesInk(marks.color, marks.number), marks.shape, radius, style.line * 0.8, {}};
    for (const Point& point : marks.points) drawn.points.push_back(PlaceOf(place, point));
    if (!drawn.points.empty()) context.items.emplace_back(std::move(drawn));
  }
}

void DrawZeroLines(const ViewContext& context, const PaneLayout& place) {
  const Rect& plot = place.plot;
  const int32_t hair = context.style.hair;
  Boxes lines{FaintInk(context.TextColor()), {}};
  lines.ink.alpha = 150;
  lines.rects.push_back({plot.left, place.values.Pixel(0), plot.width, hair});
  lines.rects.push_back({place.across.Pixel(0), plot.top, hair, plot.height});
  context.items.emplace_back(std::move(lines));
}

/// Texts under the plot, as many as have room, and the lines up from them.
void DrawAcrossAxis(const ViewContext& context, const PlanePlot& plot, const PaneLayout& place) {
  const ViewStyle& style = context.style;
  const bool is_columns = plot.column_width > 0;
  const double spacing = style.text * 5;
  const std::vector<Tick> ticks =
      is_columns ? plot.column_ticks : ValueTicks(place.across, spacing, plot.across.number);
  Boxes lines{FaintInk(context.GridColor()), {}};
  std::vector<Label> labels;
  double free_from = place.plot.left;
  for (const Tick& tick : ticks) {
    const double x = place.across.Y(tick.value);
    const double half = TextWidth(tick.text) * style.text / 2;
    const bool is_within = x - half >= free_from && x + half <= place.plot.Right();
    if (!is_within) continue;
    free_from = x + half + style.gap;
    lines.rects.push_back({static_cast<int32_t>(x), place.plot.top, style.hair, place.plot.height});
    labels.push_back({TextInk(context.TextColor()),
                      {x, place.plot.Bottom() + style.row / 2.0},
                      Align::kCenter,
                      style.text,
                      tick.text});
  }
  if (!lines.rects.empty()) context.items.emplace_back(std::move(lines));
  for (Label& label : labels) context.items.emplace_back(std::move(label));
}

}  // namespace

BarRange ShownColumns(const PlanePlot& plot, int32_t width) {
  int32_t last = -1;
  for (const PlaneLine& line : plot.lines) {
    for (const Point& point : line.points) last = std::max(last, static_cast<int32_t>(point.x));
  }
  for (const PlaneMarks& marks : plot.marks) {
    for (const Point& point : marks.points) last = std::max(last, static_cast<int32_t>(point.x));
  }
  const auto room = static_cast<int32_t>(std::max(1.0, width / plot.column_width));
  return {std::max(0, last + 1 - room), last, 0};
}

ValueRange ColumnRange(const PlanePlot& plot, const BarRange& columns) {
  ValueExtent extent;
  const auto add = [&](const Point& point) {
    if (!IsShown(point.x, columns)) return;
    extent.Add(point.y - plot.mark_height / 2);
    extent.Add(point.y + plot.mark_height / 2);
  };
  for (const PlaneLine& line : plot.lines) std::ranges::for_each(line.points, add);
  for (const PlaneMarks& marks : plot.marks) std::ranges::for_each(marks.points, add);
  return extent.Range(kColumnGap);
}

void DrawContent(const ViewContext& context, const PlanePlot& plot, const PaneLayout& place) {
  DrawAcrossAxis(context, plot, place);
  context.items.emplace_back(Clip{place.plot});
  if (plot.has_zero_lines) DrawZeroLines(context, place);
  DrawPlaneLines(context, plot, place);
  DrawPlaneMarks(context, plot, place);
}

}  // namespace orin::chart
