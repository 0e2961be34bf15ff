#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/color.h"

namespace orin::chart {

// What a picture consists of, in device pixels from its upper left corner. Whoever paints it knows
// nothing of bars and prices.

/// The size of a picture in device pixels; `scale` of them are one pixel of a screen at 100 %.
struct PictureSize {
  int32_t width = 1000;
  int32_t height = 700;
  double scale = 1;
};

/// What something is drawn as. In print without colours it decides the pattern.
enum class InkRole : uint8_t {
  kGround,  // the paper
  kFaint,   // frames and grid
  kText,
  kRise,  // bodies of rising and falling bars
  kFall,
  kSeries,  // a line, column or mark of the numbered series
};

enum class Dash : uint8_t { kSolid, kDash, kDot, kDashDot, kDashDotDot };
enum class Hatch : uint8_t { kSolid, kForward, kBackward, kCross, kHorizontal, kVertical };

struct Ink {
  base::Color color;
  InkRole role = InkRole::kText;
  uint8_t number = 0;  // of a series in its pane, from 0
  uint8_t alpha = 255;
  Dash dash = Dash::kSolid;     // of lines
  Hatch hatch = Hatch::kSolid;  // of surfaces

  bool operator==(const Ink&) const = default;
};

struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};

/// The pixels left..left + width - 1, top..top + height - 1; none where a size is below 1.
struct Rect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;

  [[nodiscard]] int32_t Right() const { return left + width; }
  [[nodiscard]] int32_t Bottom() const { return top + height; }
  [[nodiscard]] bool IsEmpty() const { return width < 1 || height < 1; }
  [[nodiscard]] bool Contains(double x, double y) const {
    return x >= left && x < Right() && y >= top && y < Bottom();
  }
  bool operator==(const Rect&) const = default;
};

/// Filled pixels: the crisp horizontal and vertical lines are such, too.
struct Boxes {
  Ink ink;
  std::vector<Rect> rects;
};

/// The edges of rectangles, `width` pixels wide and within them.
struct Frames {
  Ink ink;
  int32_t width = 1;
  std::vector<Rect> rects;
};

/// A line through points, smoothed.
struct Line {
  Ink ink;
  double width = 1;
  std::vector<Point> points;
};

/// A closed surface without an edge.
struct Surface {
  Ink ink;
  std::vector<Point> points;
};

/// Circles or crosses of the same size around points.
enum class MarkShape : uint8_t { kDot, kCircle, kCross };
struct Marks {
  Ink ink;
  MarkShape shape = MarkShape::kDot;
  double radius = 1;
  double width = 1;  // of the strokes
  std::vector<Point> points;
};

enum class Align : uint8_t { kLeft, kCenter, kRight };

/// One line of text: `at` is its left end, middle or right end, at half its height.
struct Label {
  Ink ink;
  Point at;
  Align align = Align::kLeft;
  double size = 12;  // pixels of the letters' height
  std::string text;  // UTF-8
};

/// What follows is painted within the rectangle alone.
struct Clip {
  Rect rect;
};

using DrawItem = std::variant<Boxes, Frames, Line, Surface, Marks, Label, Clip>;

struct DrawList {
  int32_t width = 0;
  int32_t height = 0;
  Ink ground;
  std::vector<DrawItem> items;  // painted in this order
};

}  // namespace orin::chart
