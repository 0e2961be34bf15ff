#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace orin::base {

/// The most pieces one split may give.
inline constexpr size_t kMaximumPieces = 1000;

/// The pieces of `text` between the delimiters, empty ones included; an empty text is one empty
/// piece. Fails where there would be more than kMaximumPieces.
Result<std::vector<std::string_view>> SplitByDelimiter(std::string_view text,
                                                       std::string_view delimiter);

/// What a text file in UTF-8 may begin with.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The lines of a text file; "\n" or "\r\n" ends a line and a last line may lack its end or half
/// of it.
std::vector<std::string_view> SplitLines(std::string_view text);

/// Without half-width blanks and tabs at both ends.
std::string_view TrimBlanks(std::string_view text);

/// `text` with its ASCII capitals as small letters.
std::string LowerAscii(std::string_view text);

/// ASCII letters compared without regard to case, all else byte by byte.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

/// `text` for a terminal: bytes that are no UTF-8 and control characters other than the line feed
/// are shown by their numbers, as "\x1B".
std::string Printable(std::string_view text);
/// The same with the line feed shown too: what is one argument or name stays on one line.
std::string PrintableLine(std::string_view text);

/// The columns a text takes where half-width characters take 1 and others 2.
size_t Columns(std::string_view text);

/// `text` at the left of a field of `width` columns, not cut when longer. The form "!@@@@@@@@" is
/// width 8.
std::string PadRight(std::string_view text, size_t width);
std::string PadLeft(std::string_view text, size_t width);

}  // namespace orin::base
