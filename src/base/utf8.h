#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orin::base {

/// What a byte that belongs to no character is read as.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

struct CodePoint {
  char32_t value;
  size_t length;  // bytes taken, 1 where not valid
  bool valid;
};

/// The first character of a text that is not empty. Overlong forms, surrogates and values above
/// U+10FFFF are not valid and read as U+FFFD.
CodePoint FirstCodePoint(std::string_view utf8);

/// `value` up to U+10FFFF.
void AppendUtf8(std::string& text, char32_t value);

}  // namespace orin::base
