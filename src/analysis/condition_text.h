#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/condition.h"

namespace orin::analysis {

/// The blank of Japanese text, U+3000.
inline constexpr std::string_view kFullWidthBlank = "\xE3\x80\x80";

/// A stretch of a ConditionText, which must outlive it.
struct TextView {
  std::string_view bytes;
  const uint32_t* positions = nullptr;  // one for each byte

  [[nodiscard]] TextView Part(size_t begin, size_t end) const {
    return {bytes.substr(begin, end - begin), positions + begin};
  }
};

/// A text on its way through the compiler: valid UTF-8 in which each byte knows the place, from
/// 1, that its character had in the text as typed. Everything the language looks for is ASCII or
/// U+3000, so that all steps may work on bytes.
struct ConditionText {
  std::string bytes;
  std::vector<uint32_t> positions;

  /// Bytes that are no UTF-8 become U+FFFD, one character for each byte.
  static ConditionText Decode(std::string_view text);

  void Append(TextView part);
  [[nodiscard]] TextView View() const { return {bytes, positions.data()}; }
};

/// The text with one position for each character instead of each byte.
Piece MakePiece(const ConditionText& text);

/// Whether a byte of UTF-8 begins a character.
inline bool BeginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

/// Without blanks of both widths and tabs at both ends.
std::string_view TrimAllBlanks(std::string_view text);

// For messages.

/// The first characters of `text`, with "…" where it is longer.
std::string Shortened(std::string_view text);
/// The shortened text in 「 and 」.
std::string Quoted(std::string_view text);

}  // namespace orin::analysis
