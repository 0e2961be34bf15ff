#include "analysis/operator_codes.h"

#include <algorithm>

namespace orin::analysis {

namespace {

using LetterTable = std::array<std::optional<OperatorCode>, 256>;

// Operators of one letter by that letter.
constexpr LetterTable MakeLetterTable() {
  LetterTable table = {};
  for (const OperatorRow& row : kOperatorRows) {
    for (uint8_t depth = 0; depth <= kDeepestCode; ++depth) {
      const std::string_view code = row.codes[depth];
      if (code.size() == 1) {
        table[static_cast<unsigned char>(code[0])] = OperatorCode{row.kind, depth, 1};
      }
    }
  }
  return table;
}

constexpr LetterTable kLetters = MakeLetterTable();

std::optional<OperatorCode> ModAt(std::string_view text) {
  if (StartsWithKeyword(text, kModForms)) return OperatorCode{OperatorKind::kMod, 0, 3};
  const OperatorRow& row = kOperatorRows[static_cast<size_t>(OperatorKind::kMod)];
  for (uint8_t depth = 1; depth <= kDeepestCode; ++depth) {
    if (text.starts_with(row.codes[depth])) return OperatorCode{OperatorKind::kMod, depth, 3};
  }
  return std::nullopt;
}

struct DatedKeyword {
  std::string_view name;
  char last_number;  // '0' where no number follows the name
};

constexpr std::array<DatedKeyword, 5> kDatedKeywords = {{
    {"buyselltime", '0'},
    {"tcurrentday", '0'},
    {"analysisdate", '7'},
    {"dailyanalysistime", '9'},
    {"dailyanalysisinterval", '9'},
}};

bool EndsWith(std::string_view before, const DatedKeyword& keyword) {
  if (keyword.last_number != '0') {
    if (before.empty() || before.back() < '1' || before.back() > keyword.last_number) return false;
    before.remove_suffix(1);
  }
  return before.ends_with(keyword.name);
}

struct RelationText {
  std::string_view text;
  Relation relation;
};

// The longer ones first, or "<=" would read as "<" and an operand that begins with "=".
constexpr std::array<RelationText, 6> kRelations = {{
    {"<>", Relation::kNotEqual},
    {"<=", Relation::kLessOrEqual},
    {">=", Relation::kGreaterOrEqual},
    {"<", Relation::kLess},
    {">", Relation::kGreater},
    {"=", Relation::kEqual},
}};

}  // namespace

bool StartsWithKeyword(std::string_view text, const KeywordForms& forms) {
  return std::any_of(forms.begin(), forms.end(),
                     [text](std::string_view form) { return text.starts_with(form); });
}

size_t FindKeyword(std::string_view text, const KeywordForms& forms, size_t from) {
  // Each form begins with the letter of one of the first two, and few bytes of a text do.
  const char small = forms[0][0];
  const char capital = forms[1][0];
  for (size_t i = from; i < text.size(); ++i) {
    if (text[i] != small && text[i] != capital) continue;
    if (StartsWithKeyword(text.substr(i), forms)) return i;
  }
  return std::string_view::npos;
}

std::optional<OperatorCode> OperatorAt(std::string_view text) {
  if (text.empty()) return std::nullopt;
  if (text[0] == 'm' || text[0] == 'M') return ModAt(text);
  return kLetters[static_cast<unsigned char>(text[0])];
}

std::string AsTyped(std::string_view text) {
  std::string typed;
  for (size_t i = 0; i < text.size();) {
    const auto code = OperatorAt(text.substr(i));
    const bool stands_for_another = code && code->depth > 0;
    const size_t length = code ? code->length : 1;
    typed += stands_for_another ? kOperatorRows[static_cast<size_t>(code->kind)].codes[0]
                                : text.substr(i, length);
    i += length;
  }
  return typed;
}

std::optional<RelationCode> RelationAt(std::string_view text) {
  // The three signs follow each other; most bytes of a text are something else.
  if (text.empty() || text[0] < '<' || text[0] > '>') return std::nullopt;
  for (const RelationText& entry : kRelations) {
    if (text.starts_with(entry.text)) {
      return RelationCode{entry.relation, static_cast<uint8_t>(entry.text.size())};
    }
  }
  return std::nullopt;
}

bool EndsWithDayKeyword(std::string_view before) {
  return std::any_of(kDatedKeywords.begin(), kDatedKeywords.end(),
                     [before](const DatedKeyword& keyword) { return EndsWith(before, keyword); });
}

}  // namespace orin::analysis
