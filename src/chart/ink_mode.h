#pragma once

#include "chart/draw_list.h"

namespace orin::chart {

enum class InkMode {
  kColor,
  kGrey,     // shades of grey
  kPattern,  // black on white alone: lines by their dashes, surfaces by their hatching
};

/// Turns the inks of a picture, drawn for a white ground, into those of a mode. Series that differ
/// in colour alone differ in shade or pattern then, and rising bars are hollow.
DrawList InMode(DrawList list, InkMode mode);

}  // namespace orin::chart
