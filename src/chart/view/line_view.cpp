#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kColumnShare = 0.72;
constexpr double kDotShare = 0.28;

/// The places of a line that are in view.
struct Places {
  int32_t first;
  int32_t last;
};
Places PlacesOf(const PlotLine& line, const BarScale& scale) {
  const BarRange& range = scale.Range();
  return {std::max(1, range.first),
          std::min(range.first + range.Places() - 1, static_cast<int32_t>(line.values.Size()))};
}

double Value(const PlotLine& line, int32_t bar) {
  return line.values.At(static_cast<size_t>(bar - 1)).ToDouble() * line.factor;
}
bool Has(const PlotLine& line, int32_t bar) {
  return line.values.Has(static_cast<size_t>(bar - 1));
}

/// A line as what each pixel across shows of it, from low to high.
void DrawSpans(const Ink& ink, const PlotLine& line, const PaneLayout& place, int32_t width,
               std::vector<DrawItem>& items) {
  Boxes boxes{ink, {}};
  struct Span {
    int32_t x;
    double low;
    double high;
    double first;
    double last;
  };
  std::optional<Span> open;
  // Neighbouring spans meet.
  std::optional<Span> before;
  const auto close = [&] {
    if (!open) return;
    double low = open->low;
    double high = open->high;
    if (before && before->x + 1 >= open->x) {
      low = std::min(low, before->last);
      high = std::max(high, before->last);
    }
    const int32_t top = place.values.Pixel(high);
    const int32_t bottom = place.values.Pixel(low);
    boxes.rects.push_back({open->x, top, width, std::max(width, bottom - top + 1)});
    before = open;
    open.reset();
  };
  const Places places = PlacesOf(line, place.bars);
  for (int32_t t = places.first; t <= places.last; ++t) {
    if (!Has(line, t)) continue;
    const auto x = static_cast<int32_t>(place.bars.X(t));
    const double value = Value(line, t);
    if (open && open->x != x) close();
    if (!open) open = Span{x, value, value, value, value};
    open->low = std::min(open->low, value);
    open->high = std::max(open->high, value);
    open->last = value;
  }
  close();
  if (!boxes.rects.empty()) items.emplace_back(std::move(boxes));
}

/// A line from bar to bar, interrupted where there is no value.
void DrawCurve(const Ink& ink, const PlotLine& line, const PaneLayout& place, double width,
               std::vector<DrawItem>& items) {
  Line curve{ink, width, {}};
  const auto close = [&] {
    // A single value is a point as wide as the line.
    if (curve.points.size() == 1) {
      const Point at = curve.points.front();
      curve.points = {{at.x - width / 2, at.y}, {at.x + width / 2, at.y}};
    }
    if (!curve.points.empty()) items.emplace_back(curve);
    curve.points.clear();
  };
  const Places places = PlacesOf(line, place.bars);
  for (int32_t t = places.first; t <= places.last; ++t) {
    if (Has(line, t)) {
      curve.points.push_back({place.bars.X(t), place.values.Y(Value(line, t))});
    } else {
      close();
    }
  }
  close();
}

void DrawDots(const Ink& ink, const PlotLine& line, const PaneLayout& place, const ViewStyle& style,
              std::vector<DrawItem>& items) {
  const double radius =
      std::clamp(place.bars.Pitch() * kDotShare, style.hair * 0.5, style.line * 1.6);
  const Places places = PlacesOf(line, place.bars);
  if (radius < 1) {
    Boxes dots{ink, {}};
    for (int32_t t = places.first; t <= places.last; ++t) {
      if (!Has(line, t)) continue;
      dots.rects.push_back({static_cast<int32_t>(place.bars.X(t)),
                            place.values.Pixel(Value(line, t)), style.hair, style.hair});
    }
    items.emplace_back(std::move(dots));
    return;
  }
  Marks dots{ink, MarkShape::kDot, radius, 0, {}};
  for (int32_t t = places.first; t <= places.last; ++t) {
    if (!Has(line, t)) continue;
    dots.points.push_back({place.bars.X(t), place.values.Y(Value(line, t))});
  }
  items.emplace_back(std::move(dots));
}

void DrawColumns(const Ink& ink, const PlotLine& line, const PaneLayout& place, double base,
                 std::vector<DrawItem>& items) {
  Boxes boxes{ink, {}};
  const double pitch = place.bars.Pitch();
  const int32_t width = std::max(1, static_cast<int32_t>(pitch * kColumnShare));
  const int32_t foot = place.values.Pixel(base);
  int32_t last_x = std::numeric_limits<int32_t>::min();
  const Places places = PlacesOf(line, place.bars);
  for (int32_t t = places.first; t <= places.last; ++t) {
    if (!Has(line, t)) continue;
    const auto middle = static_cast<int32_t>(std::floor(place.bars.X(t)));
    const int32_t head = place.values.Pixel(Value(line, t));
    const Rect rect{middle - width / 2, std::min(head, foot), width, std::abs(foot - head) + 1};
    if (rect.left == last_x) {
      if (rect.height > boxes.rects.back().height) boxes.rects.back() = rect;
      continue;
    }
    last_x = rect.left;
    boxes.rects.push_back(rect);
  }
  if (!boxes.rects.empty()) items.emplace_back(std::move(boxes));
}

}  // namespace

size_t SeriesNumber(std::span<const PlotLine> lines, size_t line) {
  // The colours before that of the line, each once.
  size_t number = 0;
  for (size_t i = 0; lines[i].color != lines[line].color; ++i) {
    const auto earlier = lines.first(i);
    if (std::ranges::find(earlier, lines[i].color, &PlotLine::color) == earlier.end()) ++number;
  }
  return number;
}

void DrawLines(const ViewContext& context, std::span<const PlotLine> lines, const PaneLayout& place,
               double base) {
  const ViewStyle& style = context.style;
  for (size_t i = 0; i < lines.size(); ++i) {
    const PlotLine& line = lines[i];
    const Ink ink = SeriesInk(line.color, SeriesNumber(lines, i));
    if (line.form == LineForm::kDots) {
      DrawDots(ink, line, place, style, context.items);
    } else if (line.form == LineForm::kColumns) {
      DrawColumns(ink, line, place, base, context.items);
    } else if (place.bars.Pitch() < 1) {
      DrawSpans(ink, line, place, style.hair, context.items);
    } else {
      DrawCurve(ink, line, place, style.line, context.items);
    }
  }
}

void DrawCloud(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  if (!plot.cloud) return;
  const PlotLine& one = plot.lines.at(plot.cloud->first);
  const PlotLine& other = plot.lines.at(plot.cloud->second);
  const Places first = PlacesOf(one, place.bars);
  const Places second = PlacesOf(other, place.bars);
  // A piece ends where a line ends or the lines cross.
  std::vector<Point> upper;
  std::vector<Point> lower;
  bool is_above = false;
  const auto close = [&] {
    if (upper.size() > 1) {
      Surface surface{SeriesInk(is_above ? plot.cloud->above : plot.cloud->below,
                                is_above ? plot.cloud->first : plot.cloud->second),
                      upper};
      surface.ink.alpha = 70;
      surface.points.insert(surface.points.end(), lower.rbegin(), lower.rend());
      context.items.emplace_back(std::move(surface));
    }
    upper.clear();
    lower.clear();
  };
  for (int32_t t = std::max(first.first, second.first); t <= std::min(first.last, second.last);
       ++t) {
    if (!Has(one, t) || !Has(other, t)) {
      close();
      continue;
    }
    const Point a{place.bars.X(t), place.values.Y(Value(one, t))};
    const Point b{place.bars.X(t), place.values.Y(Value(other, t))};
    const bool above = Value(one, t) >= Value(other, t);
    if (!upper.empty() && above != is_above) {
      const Point a0 = upper.back();
      const Point b0 = lower.back();
      const double gap_before = a0.y - b0.y;
      const double part = gap_before / (gap_before - (a.y - b.y));
      const Point crossing{a0.x + (a.x - a0.x) * part, a0.y + (a.y - a0.y) * part};
      upper.push_back(crossing);
      lower.push_back(crossing);
      close();
      upper.push_back(crossing);
      lower.push_back(crossing);
    }
    is_above = above;
    upper.push_back(a);
    lower.push_back(b);
  }
  close();
}

}  // namespace orin::chart
