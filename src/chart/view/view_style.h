#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "chart/chart_colors.h"
#include "chart/draw_list.h"

namespace orin::chart {

/// The sizes a picture is drawn with, in device pixels.
struct ViewStyle {
  explicit ViewStyle(double scale)
      : text(12 * scale),
        row(static_cast<int32_t>(std::lround(17 * scale))),
        gap(static_cast<int32_t>(std::lround(6 * scale))),
        hair(std::max(1, static_cast<int32_t>(scale))),
        line(1.4 * scale) {}

  double text;   // height of letters
  int32_t row;   // of text
  int32_t gap;   // between things that do not belong together
  int32_t hair;  // the thinnest line; a whole number of pixels, so that it is crisp
  double line;   // of values
};

inline Ink TextInk(base::Color color) { return {.color = color, .role = InkRole::kText}; }
inline Ink FaintInk(base::Color color) { return {.color = color, .role = InkRole::kFaint}; }
inline Ink SeriesInk(base::Color color, size_t number) {
  return {.color = color, .role = InkRole::kSeries, .number = static_cast<uint8_t>(number)};
}

/// A dash of boxes down or across a rectangle.
Boxes DottedAcross(const Ink& ink, const Rect& plot, int32_t y, const ViewStyle& style);
Boxes DottedDown(const Ink& ink, const Rect& plot, int32_t x, const ViewStyle& style);

}  // namespace orin::chart
