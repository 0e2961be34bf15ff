#include "analysis/pasted_condition.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/condition_words.h"
#include "analysis/items/item_catalogue.h"
#include "analysis/items/name_folding.h"
#include "base/text.h"
#include "base/utf8.h"

namespace orin::analysis {

namespace {

constexpr std::string_view kWideOpen = "（";
constexpr std::string_view kWideClose = "）";
// In bytes, with its parentheses; keeps the search for the closing one short.
constexpr size_t kLongestAbbreviation = 40;

/// Full-width signs of the language, and what they stand for.
constexpr std::array<std::pair<char32_t, std::string_view>, 25> kSigns = {{
    {U'（', "("}, {U'）', ")"}, {U'｛', "{"},  {U'｝', "}"},  {U'，', ","},
    {U'＜', "<"}, {U'＞', ">"}, {U'＝', "="},  {U'≦', "<="},  {U'≧', ">="},
    {U'≠', "<>"}, {U'≤', "<="}, {U'≥', ">="},  {U'＋', "+"},  {U'－', "-"},
    {U'−', "-"},  {U'＊', "*"}, {U'×', "*"},   {U'／', "/"},  {U'÷', "/"},
    {U'＾', "^"}, {U'？', "?"}, {U'＼', "\\"}, {U'￥', "\\"}, {U'¥', "\\"},
}};

constexpr std::array<std::string_view, 3> kKeywords = {"And", "Or", "Mod"};

bool IsLineBreak(char32_t c) { return c == U'\r' || c == 0x85 || c == 0x2028 || c == 0x2029; }

bool IsInvisible(char32_t c) {
  return (c < 0x20 && c != U'\n') || c == 0x7F || c == 0xFEFF || (c >= 0x200B && c <= 0x200F);
}

/// Line breaks and blanks alike everywhere, comments too.
std::string WithPlainBlanks(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const base::CodePoint point = base::FirstCodePoint(text);
    if (point.value == U'\r' && text.substr(1).starts_with('\n')) {
      text.remove_prefix(1);
      continue;
    }
    if (IsLineBreak(point.value)) {
      plain += '\n';
    } else if (point.value == U'\t' || point.value == 0xA0 || point.value == U'\v' ||
               point.value == U'\f') {
      plain += ' ';
    } else if (!IsInvisible(point.value)) {
      plain += text.substr(0, point.length);
    }
    text.remove_prefix(point.length);
  }
  return plain;
}

/// The length of an abbreviation in parentheses behind the item name that `before` ends in; 0
/// where there is none.
size_t LengthOfAbbreviation(std::string_view before, std::string_view rest) {
  const size_t close = rest.substr(0, kLongestAbbreviation).find(kWideClose);
  if (close == std::string_view::npos) return 0;
  const std::string_view inside = rest.substr(kWideOpen.size(), close - kWideOpen.size());
  for (const ItemEntry& entry : ItemCatalogue()) {
    const bool fits =
        !entry.abbreviation.empty() && inside == entry.abbreviation && before.ends_with(entry.name);
    if (fits) return close + kWideClose.size();
  }
  return 0;
}

/// The signs of the language in half width, outside of comments.
std::string WithPlainSigns(std::string_view text) {
  std::string plain;
  bool in_comment = false;
  while (!text.empty()) {
    const base::CodePoint point = base::FirstCodePoint(text);
    std::string_view put = text.substr(0, point.length);
    size_t taken = point.length;
    if (point.value == U'"') in_comment = !in_comment;
    if (!in_comment) {
      const size_t abbreviation =
          point.value == U'（' ? LengthOfAbbreviation(plain, text) : size_t{0};
      const auto sign =
          std::ranges::find(kSigns, point.value, [](const auto& s) { return s.first; });
      if (abbreviation > 0) {
        put = "";
        taken = abbreviation;
      } else if (sign != kSigns.end()) {
        put = sign->second;
      }
    }
    plain += put;
    text.remove_prefix(taken);
  }
  return plain;
}

/// The names of all forms by what they are folded.
using FoldedNames = std::unordered_map<std::string, std::string>;

FoldedNames MakeFoldedNames() {
  FoldedNames names;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      std::string name = ItemName(entry, form);
      names.try_emplace(FoldName(name), name);
    }
  }
  return names;
}

/// A word that means nothing as it stands, as its writer meant it.
std::string Mended(std::string_view word) {
  const std::string folded = FoldName(word);
  if (folded.find_first_not_of("0123456789.-") == std::string::npos) return folded;
  for (const std::string_view keyword : kKeywords) {
    if (word.size() > keyword.size() && base::EqualsIgnoreCase(folded, keyword)) {
      return std::string(keyword);
    }
  }
  static const FoldedNames names = MakeFoldedNames();
  const auto item = names.find(folded);
  return item == names.end() ? std::string(word) : item->second;
}

std::string WithMendedWords(std::string_view line, LineEnd& state) {
  const std::vector<MarkedWord> words = MarkWords(line, state);
  std::string mended;
  size_t character = 0;
  const auto take = [&line, &character](size_t until) {
    size_t bytes = 0;
    for (; character < until; ++character) {
      bytes += base::FirstCodePoint(line.substr(bytes)).length;
    }
    const std::string_view taken = line.substr(0, bytes);
    line.remove_prefix(bytes);
    return taken;
  };
  for (const MarkedWord& word : words) {
    mended += take(word.first);
    const std::string_view text = take(word.first + word.count);
    mended += word.kind == WordKind::kUnknownItem ? Mended(text) : std::string(text);
  }
  return mended += line;
}

}  // namespace

std::string PastedCondition(std::string_view utf8) {
  const std::string plain = WithPlainSigns(WithPlainBlanks(utf8));
  std::string mended;
  LineEnd state;
  size_t begin = 0;
  while (begin <= plain.size()) {
    const size_t end = std::min(plain.find('\n', begin), plain.size());
    mended += WithMendedWords(std::string_view(plain).substr(begin, end - begin), state);
    if (end < plain.size()) mended += '\n';
    begin = end + 1;
  }
  return mended;
}

}  // namespace orin::analysis
