#pragma once

#include <string_view>

namespace orin::chart {

/// About how wide a line of text is, in parts of the height of its letters: the layout must be the
/// same on screen and on paper, whatever font is there. Never less than what common fonts need.
double TextWidth(std::string_view utf8);

}  // namespace orin::chart
