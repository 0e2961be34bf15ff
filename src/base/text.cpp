#include "base/text.h"

#include <algorithm>

#include "base/utf8.h"

namespace orin::base {

namespace {

char SmallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsHalfWidth(char32_t value) { return value < 0x80 || (value >= 0xFF61 && value <= 0xFF9F); }

bool IsControl(char32_t value) { return value < 0x20 || (value >= 0x7F && value <= 0x9F); }

void AppendNumbers(std::string& text, std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += "\\x";
    text += kDigits[value >> 4U];
    text += kDigits[value & 0xFU];
  }
}

std::string WithNumbers(std::string_view text, bool keeps_line_feed) {
  std::string shown;
  while (!text.empty()) {
    const CodePoint point = FirstCodePoint(text);
    const std::string_view bytes = text.substr(0, point.length);
    const bool is_kept = keeps_line_feed && point.valid && point.value == '\n';
    if (!is_kept && (!point.valid || IsControl(point.value))) {
      AppendNumbers(shown, bytes);
    } else {
      shown += bytes;
    }
    text.remove_prefix(point.length);
  }
  return shown;
}

}  // namespace

std::string Printable(std::string_view text) { return WithNumbers(text, true); }

std::string PrintableLine(std::string_view text) { return WithNumbers(text, false); }

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

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), SmallLetter);
  return lower;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, SmallLetter, SmallLetter);
}

std::string PadRight(std::string_view text, size_t width) {
  return std::string(text) + Padding(text, width);
}

std::string PadLeft(std::string_view text, size_t width) {
  return Padding(text, width) + std::string(text);
}

}  // namespace orin::base
