#include <algorithm>
#include <cmath>

#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kLineOfText = 1.45;  // of the letters' height, from line to line

/// The beginning of `text` that fits a width, at least one character of it.
size_t FittingBytes(std::string_view text, double width) {
  size_t end = 0;
  while (end < text.size()) {
    size_t next = end + 1;
    while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xC0) == 0x80) ++next;
    if (end > 0 && TextWidth(text.substr(0, next)) > width) break;
    end = next;
  }
  return end;
}

}  // namespace

Boxes DottedAcross(const Ink& ink, const Rect& plot, int32_t y, const ViewStyle& style) {
  Boxes dots{ink, {}};
  const int32_t length = 3 * style.hair;
  for (int32_t x = plot.left; x < plot.Right(); x += 2 * length) {
    dots.rects.push_back({x, y, std::min(length, plot.Right() - x), style.hair});
  }
  return dots;
}

Boxes DottedDown(const Ink& ink, const Rect& plot, int32_t x, const ViewStyle& style) {
  Boxes dots{ink, {}};
  const int32_t length = 3 * style.hair;
  for (int32_t y = plot.top; y < plot.Bottom(); y += 2 * length) {
    dots.rects.push_back({x, y, style.hair, std::min(length, plot.Bottom() - y)});
  }
  return dots;
}

void DrawValueAxis(const ViewContext& context, std::span<const Tick> ticks,
                   const PaneLayout& place) {
  const ViewStyle& style = context.style;
  Boxes lines{FaintInk(context.GridColor()), {}};
  // Texts at the edges stay within the pane. Where there is no room for all, those in between are
  // written first: what lies at the edges goes without saying.
  std::vector<Label> within;
  std::vector<Label> at_edges;
  const double half = style.text * 0.55;
  const double highest = place.plot.top + half;
  const double lowest = std::max(highest, place.plot.Bottom() - half);
  for (const Tick& tick : ticks) {
    const int32_t y = place.values.Pixel(tick.value);
    if (y < place.plot.top || y >= place.plot.Bottom()) continue;
    lines.rects.push_back({place.plot.left, y, place.plot.width, style.hair});
    const bool is_at_edge = y < highest || y > lowest;
    std::vector<Label>& labels = is_at_edge ? at_edges : within;
    labels.push_back({TextInk(context.TextColor()),
                      {static_cast<double>(place.plot.Right() + style.gap),
                       std::clamp(y + 0.5, highest, lowest)},
                      Align::kLeft,
                      style.text,
                      tick.text});
  }
  if (!lines.rects.empty()) context.items.emplace_back(std::move(lines));
  std::vector<double> taken;
  for (std::vector<Label>* labels : {&within, &at_edges}) {
    for (Label& label : *labels) {
      const bool is_free = std::ranges::all_of(
          taken, [&](double y) { return std::abs(y - label.at.y) >= style.text; });
      if (!is_free) continue;
      taken.push_back(label.at.y);
      context.items.emplace_back(std::move(label));
    }
  }
}

void DrawDateLines(const ViewContext& context, std::span<const DateTick> ticks,
                   const PaneLayout& place) {
  Boxes lines{FaintInk(context.GridColor()), {}};
  for (const DateTick& tick : ticks) {
    const auto x = static_cast<int32_t>(place.bars.X(tick.bar));
    lines.rects.push_back({x, place.plot.top, context.style.hair, place.plot.height});
  }
  if (!lines.rects.empty()) context.items.emplace_back(std::move(lines));
}

void DrawNotes(const ViewContext& context, const Plot& plot, const Rect& place) {
  const ViewStyle& style = context.style;
  std::vector<std::string_view> lines;
  const double width = (place.width - 2 * style.gap) / style.text;
  if (width < 2) return;
  for (const std::string& note : plot.notes) {
    std::string_view rest = note;
    while (!rest.empty()) {
      const size_t length = FittingBytes(rest, width);
      lines.push_back(rest.substr(0, length));
      rest.remove_prefix(length);
    }
  }
  const double step = style.text * kLineOfText;
  double y = place.top + place.height / 2.0 - step * (static_cast<double>(lines.size()) - 1) / 2;
  for (const std::string_view line : lines) {
    const bool fits = y - style.text / 2 >= place.top && y + style.text / 2 <= place.Bottom();
    if (fits) {
      context.items.emplace_back(Label{TextInk(context.TextColor()),
                                       {place.left + place.width / 2.0, y},
                                       Align::kCenter,
                                       style.text,
                                       std::string(line)});
    }
    y += step;
  }
}

}  // namespace orin::chart
