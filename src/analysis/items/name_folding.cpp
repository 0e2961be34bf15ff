#include "analysis/items/name_folding.h"

#include <string>

#include "base/utf8.h"

namespace orin::analysis {

namespace {

constexpr char32_t kHalfWidthVoiced = 0xFF9E;
constexpr char32_t kHalfWidthSemiVoiced = 0xFF9F;

/// U+FF66 to U+FF9D as hiragana.
constexpr std::u32string_view kHalfWidthKana =
    U"をぁぃぅぇぉゃゅょっーあいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめも"
    U"やゆよ"
    U"らりるれろわん";

char32_t Fold(char32_t c) {
  if (c >= 0xFF01 && c <= 0xFF5E) c -= 0xFF01 - U'!';  // full-width forms of ASCII
  if (c >= U'A' && c <= U'Z') return c - U'A' + U'a';
  if (c >= U'ァ' && c <= U'ヶ') return c - (U'ァ' - U'ぁ');
  const bool is_half_width = c >= 0xFF66 && c < kHalfWidthVoiced;
  return is_half_width ? kHalfWidthKana[c - 0xFF66] : c;
}

}  // namespace

std::string FoldName(std::string_view name) {
  std::u32string folded;
  while (!name.empty()) {
    const base::CodePoint point = base::FirstCodePoint(name);
    name.remove_prefix(point.length);
    const char32_t c = point.value;
    if (c == U' ' || c == U'\u3000') continue;
    const bool is_mark = c == kHalfWidthVoiced || c == kHalfWidthSemiVoiced;
    if (is_mark && !folded.empty()) {
      // The voiced kana follow the plain ones, ば and ぱ after は.
      folded.back() += c - kHalfWidthVoiced + 1;
    } else {
      folded += Fold(c);
    }
  }
  std::string text;
  for (const char32_t c : folded) base::AppendUtf8(text, c);
  return text;
}

}  // namespace orin::analysis
