#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "chart/draw_list.h"

namespace orin::chart {

// A draw list as bytes, as orin-cli hands it to orin-draw. Numbers are little-endian; counts,
// pixels and other integers have 4 bytes, places and measures are doubles of 8 bytes.
//
//   picture  "ODL1", width, height, ink of the ground, count, items; then nothing more
//   item     1 byte, its place among the alternatives of DrawItem from 0 on, then
//            Boxes    ink, count, rects
//            Frames   ink, width as an integer, count, rects
//            Line     ink, width, count, points
//            Surface  ink, count, points
//            Marks    ink, shape (1 byte), radius, width, count, points
//            Label    ink, point, align (1 byte), size, length, UTF-8
//            Clip     rect
//   ink      8 bytes: red, green, blue, role, number, alpha, dash, hatch
//   rect     left, top, width, height
//   point    x, y

std::string DrawListBytes(const DrawList& picture);

/// Fails for bytes that are no draw list, and for one that no painter should be given: a picture
/// larger than IsPaintable, a place further off than a layout ever has one, a line or a letter
/// larger than any.
base::Result<DrawList> ReadDrawList(std::string_view bytes);

}  // namespace orin::chart
