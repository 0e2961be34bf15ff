#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/result.h"

namespace orin::base {

// Text is UTF-8 in memory and code page 932 in files.

/// Bytes that are no character become U+FFFD, one for each byte.
std::string DecodeCp932(std::string_view bytes);

/// Fails with a sentence that shows the first character code page 932 lacks. The two forms of
/// the wave dash, the minus sign and the double vertical line are taken as one.
Result<std::string> EncodeCp932(std::string_view utf8);

/// For texts that must be written whatever they hold: a character that cannot be becomes its
/// number, as "U+1F600".
std::string EncodeCp932Lossy(std::string_view utf8);

/// The field of `width` bytes, padded on the right with blanks, without its padding.
std::string DecodeFixedField(std::string_view field);

/// `utf8` as a field of exactly `width` bytes: cut at a character, padded with blanks.
Result<std::string> EncodeFixedField(std::string_view utf8, size_t width);

/// How a text handed in from outside was written.
enum class TextEncoding { kUtf8, kCp932 };

struct DecodedText {
  std::string text;
  TextEncoding encoding;
};

/// UTF-8 where the bytes are valid UTF-8 (a byte order mark is dropped), else code page 932.
DecodedText DecodeText(std::string_view bytes);

bool IsValidUtf8(std::string_view bytes);

}  // namespace orin::base
