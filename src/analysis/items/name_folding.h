#pragma once

#include <string>
#include <string_view>

namespace orin::analysis {

/// A name as it is compared by those who typed it another way: without regard to the width and
/// case of letters and digits, to blanks, and to whether kana are half-width, katakana or hiragana.
std::string FoldName(std::string_view name);

}  // namespace orin::analysis
