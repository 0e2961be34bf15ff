#include "chart/text_width.h"

#include "base/utf8.h"

namespace orin::chart {

namespace {

constexpr std::string_view kNarrow = " .,:;'|!()[]ijlt/-";
constexpr std::string_view kWide = "MW%@mw&+";

double WidthOf(char32_t c) {
  if (c < 0x80) {
    const char letter = static_cast<char>(c);
    if (kNarrow.find(letter) != std::string_view::npos) return 0.35;
    if (kWide.find(letter) != std::string_view::npos) return 0.9;
    return letter >= 'A' && letter <= 'Z' ? 0.66 : 0.57;
  }
  const bool is_half_katakana = c >= 0xFF61 && c <= 0xFF9F;
  return is_half_katakana ? 0.55 : 1;
}

}  // namespace

double TextWidth(std::string_view utf8) {
  double width = 0;
  while (!utf8.empty()) {
    const base::CodePoint character = base::FirstCodePoint(utf8);
    width += WidthOf(character.value);
    utf8.remove_prefix(character.length);
  }
  return width;
}

}  // namespace orin::chart
