#include "chart/ink_mode.h"

#include <array>
#include <utility>

namespace orin::chart {

using base::Color;

namespace {

constexpr Color kPaper = {255, 255, 255};
constexpr Color kInk = {0, 0, 0};

constexpr Color Grey(uint8_t shade) { return {shade, shade, shade}; }

// Neighbours differ most.
constexpr std::array kGreyShades = {Grey(0), Grey(130), Grey(70), Grey(160), Grey(100)};
constexpr std::array kDashes = {Dash::kSolid, Dash::kDash, Dash::kDot, Dash::kDashDot,
                                Dash::kDashDotDot};
constexpr std::array kHatches = {Hatch::kForward, Hatch::kBackward, Hatch::kHorizontal,
                                 Hatch::kVertical, Hatch::kCross};

/// What the surfaces of a role are in print.
Ink Printed(Ink ink, InkMode mode) {
  const bool is_grey = mode == InkMode::kGrey;
  switch (ink.role) {
    case InkRole::kGround:
      ink.color = kPaper;
      break;
    case InkRole::kFaint:
      ink.color = is_grey ? Grey(205) : kInk;
      ink.dash = is_grey ? Dash::kSolid : Dash::kDot;
      break;
    case InkRole::kText:
      ink.color = kInk;
      break;
    case InkRole::kRise:
      ink.color = is_grey ? Grey(225) : kPaper;
      break;
    case InkRole::kFall:
      ink.color = is_grey ? Grey(60) : kInk;
      break;
    case InkRole::kSeries:
      ink.color = is_grey ? kGreyShades.at(ink.number % kGreyShades.size()) : kInk;
      ink.dash = kDashes.at(ink.number % kDashes.size());
      break;
  }
  return ink;
}

/// Boxes that are thin in one way are lines: they stay filled.
bool IsSurface(const Boxes& boxes) {
  for (const Rect& rect : boxes.rects) {
    if (rect.width > 2 && rect.height > 2) return true;
  }
  return false;
}

/// Draws the items of a list anew into another.
class Printer {
 public:
  Printer(InkMode mode, std::vector<DrawItem>& items) : mode_(mode), items_(items) {}

  void operator()(Boxes& boxes) {
    const Ink ink = Printed(boxes.ink, mode_);
    const bool is_surface = IsSurface(boxes);
    Boxes printed{ink, std::move(boxes.rects)};
    if (boxes.ink.role == InkRole::kFaint)
      printed.ink.color = Grey(mode_ == InkMode::kGrey ? 205 : 170);
    if (boxes.ink.role == InkRole::kSeries && is_surface && mode_ == InkMode::kPattern) {
      printed.ink.hatch = kHatches.at(boxes.ink.number % kHatches.size());
    }
    const bool has_edge =
        is_surface && (boxes.ink.role == InkRole::kRise || boxes.ink.role == InkRole::kSeries);
    // What is hollow, and too thin to have an inside, is black.
    if (boxes.ink.role == InkRole::kRise && !is_surface) printed.ink.color = kInk;
    Frames edges;
    edges.ink = Printed(Ink(), mode_);
    if (has_edge) edges.rects = printed.rects;
    items_.emplace_back(std::move(printed));
    if (has_edge) items_.emplace_back(std::move(edges));
  }
  void operator()(Surface& surface) {
    const Ink ink = Printed(surface.ink, mode_);
    surface.ink = {
        ink.color,
        ink.role,
        ink.number,
        mode_ == InkMode::kGrey ? surface.ink.alpha : uint8_t{255},
        Dash::kSolid,
        mode_ == InkMode::kGrey ? Hatch::kSolid : kHatches.at(ink.number % kHatches.size())};
    items_.emplace_back(std::move(surface));
  }
  void operator()(Line& line) {
    line.ink = LineInk(line.ink);
    items_.emplace_back(std::move(line));
  }
  void operator()(Frames& frames) {
    frames.ink = LineInk(frames.ink);
    frames.ink.dash = Dash::kSolid;
    items_.emplace_back(std::move(frames));
  }
  void operator()(Marks& marks) {
    marks.ink = LineInk(marks.ink);
    marks.ink.dash = Dash::kSolid;
    items_.emplace_back(std::move(marks));
  }
  void operator()(Label& label) {
    label.ink = {kInk, label.ink.role};
    items_.emplace_back(std::move(label));
  }
  void operator()(Clip& clip) { items_.emplace_back(clip); }

 private:
  /// Rising and falling lines cannot be hollow.
  [[nodiscard]] Ink LineInk(const Ink& ink) const {
    Ink printed = Printed(ink, mode_);
    if (ink.role == InkRole::kRise) printed.color = kInk;
    return printed;
  }

  InkMode mode_;
  std::vector<DrawItem>& items_;
};

}  // namespace

DrawList InMode(DrawList list, InkMode mode) {
  if (mode == InkMode::kColor) return list;
  DrawList printed{list.width, list.height, Printed(list.ground, mode), {}};
  Printer printer(mode, printed.items);
  for (DrawItem& item : list.items) std::visit(printer, item);
  return printed;
}

}  // namespace orin::chart
