#include <algorithm>
#include <cmath>
#include <limits>

#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

using base::BarsView;
using base::Currency;

namespace {

constexpr double kUnderlayShare = 0.24;  // of the height
constexpr double kBandShare = 0.4;       // of the width, for the largest

/// The smallest and the largest of currencies, quicker than one by one in double.
struct RawExtent {
  int64_t low = std::numeric_limits<int64_t>::max();
  int64_t high = std::numeric_limits<int64_t>::min();

  void Add(Currency value) {
    low = std::min(low, value.Raw());
    high = std::max(high, value.Raw());
  }
  void MoveTo(ValueExtent& extent, double factor) const {
    if (low > high) return;
    extent.Add(Currency::FromRaw(low).ToDouble() * factor);
    extent.Add(Currency::FromRaw(high).ToDouble() * factor);
  }
};

void AddLine(const PlotLine& line, int32_t first, int32_t last, ValueExtent& extent) {
  RawExtent raw;
  const int32_t end = std::min(last, static_cast<int32_t>(line.values.Size()));
  for (int32_t t = std::max(1, first); t <= end; ++t) {
    const auto place = static_cast<size_t>(t - 1);
    if (line.values.Has(place)) raw.Add(line.values.At(place));
  }
  raw.MoveTo(extent, line.factor);
}

void AddPrices(const BarsView& bars, const PricePlot& prices, int32_t first, int32_t last,
               ValueExtent& extent) {
  const bool is_close = prices.style == PriceStyle::kCloseLine;
  RawExtent raw;
  for (int32_t t = std::max(bars.First(), first); t <= std::min(bars.Count(), last); ++t) {
    if (!bars.HasData(t)) continue;
    raw.Add(is_close ? bars.Close(t) : bars.High(t));
    raw.Add(is_close ? bars.Close(t) : bars.Low(t));
  }
  raw.MoveTo(extent, 1);
}

void DrawBands(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  double largest = 0;
  for (const auto& band : plot.bands) largest = std::max(largest, band.share.ToDouble());
  if (largest <= 0) return;
  Boxes boxes{SeriesInk(plot.band_color, 0), {}};
  boxes.ink.alpha = 110;
  for (const auto& band : plot.bands) {
    const double width = band.share.ToDouble() / largest * place.plot.width * kBandShare;
    const int32_t top = place.values.Pixel(band.high.ToDouble()) + 1;
    const int32_t bottom = place.values.Pixel(band.low.ToDouble());
    boxes.rects.push_back(
        {place.plot.left, top, static_cast<int32_t>(width), std::max(1, bottom - top)});
  }
  context.items.emplace_back(std::move(boxes));
}

void DrawUnderlay(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  if (plot.underlay.empty()) return;
  ValueExtent extent;
  extent.Add(0);
  const BarRange& range = place.bars.Range();
  for (const PlotLine& line : plot.underlay) AddLine(line, range.first, range.last, extent);
  PaneLayout lower = place;
  lower.plot.height = static_cast<int32_t>(place.plot.height * kUnderlayShare);
  lower.plot.top = place.plot.Bottom() - lower.plot.height;
  lower.values = ValueScale(extent.Range(0), ScaleForm::kLinear, lower.plot.top, lower.plot.height);
  const size_t begin = context.items.size();
  DrawLines(context, plot.underlay, lower, 0);
  // It lies behind the prices.
  for (size_t i = begin; i < context.items.size(); ++i) {
    std::visit(
        [](auto& item) {
          if constexpr (requires { item.ink; }) item.ink.alpha = 120;
        },
        context.items[i]);
  }
}

void DrawSegments(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  for (const BarSegment& segment : plot.segments) {
    Line line{SeriesInk(segment.color, 0), context.style.line, {}};
    line.points = {
        {place.bars.X(segment.first_bar), place.values.Y(segment.first_price.ToDouble())},
        {place.bars.X(segment.second_bar), place.values.Y(segment.second_price.ToDouble())}};
    context.items.emplace_back(std::move(line));
  }
}

/// A dotted line left of the bar, and its text at the top; texts that would meet are left out.
void DrawBarMarks(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  const ViewStyle& style = context.style;
  double free_from = place.plot.left;
  for (const BarMark& mark : plot.bar_marks) {
    const BarRange& range = place.bars.Range();
    if (mark.bar <= range.first || mark.bar > range.last) continue;
    const double x = place.bars.X(mark.bar) - place.bars.Pitch() / 2;
    context.items.emplace_back(
        DottedDown(FaintInk(context.TextColor()), place.plot, static_cast<int32_t>(x), style));
    const double width = TextWidth(mark.text) * style.text;
    const bool is_right = x + style.gap + width < place.plot.Right();
    const double left = is_right ? x + style.gap / 2.0 : x - style.gap / 2.0 - width;
    if (left < free_from) continue;
    free_from = left + width + style.gap;
    context.items.emplace_back(Label{TextInk(context.TextColor()),
                                     {left, place.plot.top + style.row / 2.0},
                                     Align::kLeft,
                                     style.text,
                                     mark.text});
  }
}

}  // namespace

std::optional<ValueRange> RangeOf(const TimePlot& plot, const BarsView& bars,
                                  const BarRange& view) {
  const ScaleRule& rule = plot.scale;
  if (rule.kind == ScaleRule::Kind::kFixed) return rule.fixed;
  const bool is_held = rule.kind == ScaleRule::Kind::kHeld;
  const int32_t first = is_held ? 1 : view.first;
  const int32_t last =
      is_held ? std::numeric_limits<int32_t>::max() : view.first + view.Places() - 1;
  ValueExtent extent;
  if (plot.prices) AddPrices(bars, *plot.prices, first, last, extent);
  for (const PlotLine& line : plot.lines) AddLine(line, first, last, extent);
  if (extent.IsEmpty()) return std::nullopt;
  if (rule.with_zero) extent.Add(0);
  if (!rule.is_flush) return extent.Range(rule.gap, rule.form);
  // Columns stand on the bottom, which zero is, or else a little below the lowest.
  const ValueRange range = extent.Range(rule.gap, rule.form);
  const ValueRange tight = extent.Range(0, rule.form);
  return ValueRange{rule.with_zero ? std::min(0.0, tight.low) : range.low, range.high};
}

void DrawContent(const ViewContext& context, const TimePlot& plot, const PaneLayout& place) {
  context.items.emplace_back(Clip{place.plot});
  DrawUnderlay(context, plot, place);
  DrawBands(context, plot, place);
  DrawCloud(context, plot, place);
  if (plot.price_mark) {
    const double price = plot.price_mark->price.ToDouble();
    context.items.emplace_back(DottedAcross(FaintInk(plot.price_mark->color), place.plot,
                                            place.values.Pixel(price), context.style));
  }
  if (plot.prices) DrawPrices(context, context.chart.bars, *plot.prices, place);
  DrawLines(context, plot.lines, place, place.values.Range().low);
  DrawSegments(context, plot, place);
  DrawBarMarks(context, plot, place);
}

}  // namespace orin::chart
