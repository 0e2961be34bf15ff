#include <algorithm>
#include <array>
#include <cmath>

#include "chart/view/views.h"

namespace orin::chart {

using base::BarsView;

namespace {

// Narrower bars have no bodies: only from low to high.
constexpr double kBodyPitch = 3;
constexpr double kBodyShare = 0.72;

/// What one pixel, or one bar, shows.
struct Column {
  int32_t x = 0;
  double open = 0;
  double high = 0;
  double low = 0;
  double close = 0;
  bool has_data = false;

  [[nodiscard]] bool Rises() const { return close >= open; }
};

Column ColumnOf(const BarsView& bars, int32_t t, int32_t x) {
  return {x,
          bars.Open(t).ToDouble(),
          bars.High(t).ToDouble(),
          bars.Low(t).ToDouble(),
          bars.Close(t).ToDouble(),
          true};
}

void Merge(const Column& later, Column& into) {
  if (!into.has_data) {
    into = later;
    return;
  }
  into.high = std::max(into.high, later.high);
  into.low = std::min(into.low, later.low);
  into.close = later.close;
}

/// The bars in view, those of one pixel as one.
std::vector<Column> ColumnsOf(const BarsView& bars, const BarScale& scale) {
  std::vector<Column> columns;
  const BarRange& range = scale.Range();
  const int32_t last = std::min(range.last, bars.Count());
  for (int32_t t = std::max(range.first, bars.First()); t <= last; ++t) {
    if (!bars.HasData(t)) continue;
    const auto x = static_cast<int32_t>(std::floor(scale.X(t)));
    const Column column = ColumnOf(bars, t, x);
    if (!columns.empty() && columns.back().x == x) {
      Merge(column, columns.back());
    } else {
      columns.push_back(column);
    }
  }
  return columns;
}

/// From the pixel of one price to that of another, both included; never thinner than a hair.
Rect Vertical(const ValueScale& scale, const ViewStyle& style, int32_t left, int32_t width,
              double one, double other) {
  const int32_t top = scale.Pixel(std::max(one, other));
  const int32_t bottom = scale.Pixel(std::min(one, other));
  return {left, top, width, std::max(style.hair, bottom - top + 1)};
}

/// Rising and falling bars apart, as their colours are.
struct Inked {
  Boxes rises;
  Boxes falls;

  explicit Inked(const ChartColors& colors)
      : rises{{.color = colors.Rise(), .role = InkRole::kRise}, {}},
        falls{{.color = colors.Fall(), .role = InkRole::kFall}, {}} {}
  Boxes& Of(const Column& column) { return column.Rises() ? rises : falls; }
  void MoveTo(std::vector<DrawItem>& items) {
    if (!rises.rects.empty()) items.emplace_back(std::move(rises));
    if (!falls.rects.empty()) items.emplace_back(std::move(falls));
  }
};

/// The width of a body: as odd or even as the shadow's, so that this is in its middle.
int32_t BodyWidth(double pitch, int32_t hair) {
  const auto width = static_cast<int32_t>(pitch * kBodyShare);
  return std::max(hair, (width - hair) % 2 == 0 ? width : width - 1);
}

void DrawCandles(const ViewContext& context, std::span<const Column> columns,
                 const PricePlot& prices, const PaneLayout& place) {
  const int32_t hair = context.style.hair;
  const double pitch = place.bars.Pitch();
  const int32_t body = BodyWidth(pitch, hair);
  Inked shadows(context.chart.colors);
  Inked bodies(context.chart.colors);
  for (const Column& column : columns) {
    const int32_t left = column.x - hair / 2;
    if (pitch < kBodyPitch * hair) {
      shadows.Of(column).rects.push_back(
          Vertical(place.values, context.style, left,
                   std::min(hair, std::max(1, static_cast<int32_t>(pitch))),
                   prices.has_shadows ? column.low : column.open,
                   prices.has_shadows ? column.high : column.close));
      continue;
    }
    if (prices.has_shadows) {
      shadows.Of(column).rects.push_back(
          Vertical(place.values, context.style, left, hair, column.low, column.high));
    }
    bodies.Of(column).rects.push_back(Vertical(
        place.values, context.style, left - (body - hair) / 2, body, column.open, column.close));
  }
  shadows.MoveTo(context.items);
  bodies.MoveTo(context.items);
}

void DrawBars(const ViewContext& context, std::span<const Column> columns,
              const PaneLayout& place) {
  const int32_t hair = context.style.hair;
  const double pitch = place.bars.Pitch();
  const int32_t arm = (BodyWidth(pitch, hair) - hair) / 2;
  Inked boxes(context.chart.colors);
  for (const Column& column : columns) {
    std::vector<Rect>& rects = boxes.Of(column).rects;
    const int32_t left = column.x - hair / 2;
    rects.push_back(Vertical(place.values, context.style, left, hair, column.low, column.high));
    if (pitch < kBodyPitch * hair || arm < 1) continue;
    rects.push_back({left - arm, place.values.Pixel(column.open), arm, hair});
    rects.push_back({left + hair, place.values.Pixel(column.close), arm, hair});
  }
  boxes.MoveTo(context.items);
}

PlotLine CloseLine(const ViewContext& context, const BarsView& bars) {
  PlotLine line;
  line.color = context.chart.colors.Rise();
  line.values.Reset(static_cast<size_t>(std::max(0, bars.Count())));
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    if (bars.HasData(t)) line.values.Set(static_cast<size_t>(t - 1), bars.Close(t));
  }
  return line;
}

/// A small mark on the bottom for each bar without data, while bars can be told apart.
void DrawDatalessBars(const ViewContext& context, const BarsView& bars, const PaneLayout& place) {
  if (place.bars.Pitch() < kBodyPitch) return;
  Boxes marks{FaintInk(context.TextColor()), {}};
  marks.ink.alpha = 150;
  const BarRange& range = place.bars.Range();
  const int32_t size = 2 * context.style.hair;
  for (int32_t t = std::max(range.first, bars.First()); t <= std::min(range.last, bars.Count());
       ++t) {
    if (bars.HasData(t)) continue;
    const auto x = static_cast<int32_t>(place.bars.X(t));
    marks.rects.push_back({x - size / 2, place.plot.Bottom() - size, size, size});
  }
  if (!marks.rects.empty()) context.items.emplace_back(std::move(marks));
}

}  // namespace

void DrawPrices(const ViewContext& context, const BarsView& bars, const PricePlot& prices,
                const PaneLayout& place) {
  DrawDatalessBars(context, bars, place);
  if (prices.style == PriceStyle::kCloseLine) {
    const PlotLine line = CloseLine(context, bars);
    DrawLines(context, std::span(&line, 1), place, 0);
    return;
  }
  const std::vector<Column> columns = ColumnsOf(bars, place.bars);
  if (prices.style == PriceStyle::kBars) {
    DrawBars(context, columns, place);
  } else {
    DrawCandles(context, columns, prices, place);
  }
}

}  // namespace orin::chart
