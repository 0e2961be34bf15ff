#include "analysis/splitters.h"

#include <string>
#include <utility>

#include "analysis/operator_codes.h"
#include "base/text.h"

namespace orin::analysis {

namespace {

constexpr size_t kMaximumRemovalPieces = 10000;

tl::unexpected<Note> TooMany(uint32_t position, std::string message) {
  return tl::unexpected<Note>(Note{position, std::move(message)});
}

struct Delimiter {
  size_t at;  // npos: no delimiter is left
  size_t length;
};

// `next_delimiter` finds the first delimiter at or after a position.
template <typename NextDelimiter>
Split<std::vector<TextView>> SplitWhere(TextView text, size_t maximum, std::string_view message,
                                        NextDelimiter next_delimiter) {
  std::vector<TextView> pieces;
  size_t begin = 0;
  for (;;) {
    const Delimiter next = next_delimiter(text.bytes, begin);
    if (next.at == std::string_view::npos) break;
    pieces.push_back(text.Part(begin, next.at));
    if (pieces.size() == maximum) return TooMany(text.positions[next.at], std::string(message));
    begin = next.at + next.length;
  }
  pieces.push_back(text.Part(begin, text.bytes.size()));
  return pieces;
}

auto NextOf(std::string_view delimiter) {
  return [delimiter](std::string_view text, size_t from) {
    return Delimiter{text.find(delimiter, from), delimiter.size()};
  };
}

auto NextOf(const KeywordForms& forms) {
  return [&forms](std::string_view text, size_t from) {
    return Delimiter{FindKeyword(text, forms, from), forms[0].size()};
  };
}

Split<ConditionText> CollapseRuns(TextView text, std::string_view blank) {
  const auto pieces =
      SplitWhere(text, base::kMaximumPieces,
                 "空白が多すぎます。一つの式に書ける空白は999個までです。", NextOf(blank));
  if (!pieces) return tl::unexpected<Note>(pieces.error());
  ConditionText collapsed;
  size_t blank_at = 0;  // the one after the last piece kept
  for (const TextView& piece : *pieces) {
    if (piece.bytes.empty()) continue;
    if (!collapsed.bytes.empty()) collapsed.Append(text.Part(blank_at, blank_at + blank.size()));
    collapsed.Append(piece);
    blank_at = static_cast<size_t>(piece.bytes.data() - text.bytes.data()) + piece.bytes.size();
  }
  return collapsed;
}

}  // namespace

Split<std::vector<TextView>> SplitQuotes(TextView text) {
  return SplitWhere(text, base::kMaximumPieces,
                    "注釈を囲む「\"」が多すぎます。「\"」は999個までです。", NextOf("\""));
}

Split<std::vector<TextView>> SplitOr(TextView text) {
  return SplitWhere(text, CompiledCondition::kMaximumOrTerms,
                    "Or でつないだ条件が100個を超えています。", NextOf(kOrForms));
}

Split<std::vector<TextView>> SplitAnd(TextView text) {
  return SplitWhere(text, CompiledCondition::kMaximumAndTerms,
                    "And でつないだ条件が100個を超えています。", NextOf(kAndForms));
}

Split<std::vector<TextView>> SplitRelation(TextView text) {
  std::vector<TextView> pieces;
  size_t begin = 0;
  for (size_t i = 0; i < text.bytes.size();) {
    const auto found = RelationAt(text.bytes.substr(i));
    if (!found) {
      ++i;
      continue;
    }
    // The operand, the operator and what follows it.
    if (pieces.size() + 3 > CompiledCondition::kMaximumRelationPieces) {
      return TooMany(text.positions[i],
                     "一つの条件に書ける比較演算子（=、<>、<、<=、>、>=）は4個までです。");
    }
    pieces.push_back(text.Part(begin, i));
    pieces.push_back(text.Part(i, i + found->length));
    i += found->length;
    begin = i;
  }
  pieces.push_back(text.Part(begin, text.bytes.size()));
  return pieces;
}

Split<ConditionText> CollapseSpaces(TextView text) {
  auto collapsed = CollapseRuns(text, " ");
  if (!collapsed) return collapsed;
  // One width after the other: a run that mixes them stays as it is.
  return CollapseRuns(collapsed->View(), kFullWidthBlank);
}

Split<ConditionText> RemoveAll(TextView text, char delimiter) {
  const std::string name(1, delimiter);
  const auto pieces =
      SplitWhere(text, kMaximumRemovalPieces,
                 "「" + name + "」が多すぎます。「" + name + "」は9999個までです。", NextOf(name));
  if (!pieces) return tl::unexpected<Note>(pieces.error());
  ConditionText removed;
  for (const TextView& piece : *pieces) removed.Append(piece);
  return removed;
}

size_t FindNot(std::string_view text) { return FindKeyword(text, kNotForms, 0); }

}  // namespace orin::analysis
