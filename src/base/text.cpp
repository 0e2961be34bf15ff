#include "base/text.h"

#include <algorithm>

#include "base/utf8.h"

namespace orin::base {

namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsHalfWidth(char32_t value) { return value < 0x80 || (value >= 0xFF61 && value <= 0xFF9F); }

}  // namespace

size_t Columns(std::string_view text) {
  size_t columns = 0;
  while (!text.empty()) {
    const CodePoint point = FirstCodePoint(text);
    columns += !point.valid || IsHalfWidth(point.value) ? 1U : 2U;
    text.remove_prefix(point.length);
  }
  return columns;
}

namespace {

std::string Padding(std::string_view text, size_t width) {
  const size_t columns = Columns(text);
  return std::string(columns < width ? width - columns : 0, ' ');
}

}  // namespace

Result<std::vector<std::string_view>> SplitByDelimiter(std::string_view text,
                                                       std::string_view delimiter) {
  std::vector<std::string_view> pieces;
  size_t start = 0;
  while (!delimiter.empty()) {
    const size_t end = text.find(delimiter, start);
    if (end == std::string_view::npos) break;
    pieces.push_back(text.substr(start, end - start));
    start = end + delimiter.size();
    if (pieces.size() == kMaximumPieces) {
      return Fail("「" + std::string(delimiter) + "」で区切られた部分が" +
                  std::to_string(kMaximumPieces) + "個を超えています。");
    }
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, LowerAscii, LowerAscii);
}

std::string PadRight(std::string_view text, size_t width) {
  return std::string(text) + Padding(text, width);
}

std::string PadLeft(std::string_view text, size_t width) {
  return Padding(text, width) + std::string(text);
}

}  // namespace orin::base
