#include "analysis/condition_text.h"

#include "base/text.h"
#include "base/utf8.h"

namespace orin::analysis {

namespace {

// Messages quote what was typed, and a text without a single operator is one operand of any length.
constexpr size_t kShownCharacters = 40;

}  // namespace

ConditionText ConditionText::Decode(std::string_view text) {
  ConditionText decoded;
  decoded.bytes.reserve(text.size());
  decoded.positions.reserve(text.size());
  for (uint32_t position = 1; !text.empty(); ++position) {
    const base::CodePoint point = base::FirstCodePoint(text);
    base::AppendUtf8(decoded.bytes, point.value);
    decoded.positions.resize(decoded.bytes.size(), position);
    text.remove_prefix(point.length);
  }
  return decoded;
}

void ConditionText::Append(TextView part) {
  bytes += part.bytes;
  positions.insert(positions.end(), part.positions, part.positions + part.bytes.size());
}

Piece MakePiece(const ConditionText& text) {
  Piece piece;
  piece.text = text.bytes;
  for (size_t i = 0; i < text.bytes.size(); ++i) {
    if (BeginsCharacter(text.bytes[i])) piece.positions.push_back(text.positions[i]);
  }
  return piece;
}

std::string_view TrimAllBlanks(std::string_view text) {
  // The widths mix, so that each may uncover the other.
  for (;;) {
    const size_t before = text.size();
    text = base::TrimBlanks(text);
    if (text.starts_with(kFullWidthBlank)) text.remove_prefix(kFullWidthBlank.size());
    if (text.ends_with(kFullWidthBlank)) text.remove_suffix(kFullWidthBlank.size());
    if (text.size() == before) return text;
  }
}

std::string Shortened(std::string_view text) {
  size_t characters = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (BeginsCharacter(text[i]) && ++characters > kShownCharacters) {
      return std::string(text.substr(0, i)) + "…";
    }
  }
  return std::string(text);
}

std::string Quoted(std::string_view text) { return "「" + Shortened(text) + "」"; }

}  // namespace orin::analysis
