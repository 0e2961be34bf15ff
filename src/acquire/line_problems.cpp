#include "acquire/line_problems.h"

#include <algorithm>

namespace orin::acquire {

std::string Quoted(std::string_view value) {
  constexpr size_t kLongest = 60;
  std::string text = "「";
  size_t length = std::min(value.size(), kLongest);
  // Not inside a character of several bytes.
  while (length < value.size() && length > 0 && (value[length] & 0xc0) == 0x80) --length;
  for (const char c : value.substr(0, length)) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    text += control ? '?' : c;
  }
  if (length < value.size()) text += "…";
  return text + "」";
}

}  // namespace orin::acquire
