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

// `delimiter_at` gives the length of the delimiter that a text begins with, 0 for none.
template <typename DelimiterAt>
Split<std::vector<TextView>> SplitWhere(TextView text, size_t maximum, std::string_view message,
                                        DelimiterAt delimiter_at) {
  std::vector<TextView> pieces;
  size_t begin = 0;
  for (size_t i = 0; i < text.bytes.size();) {
    const size_t length = delimiter_at(text.bytes.substr(i));
    if (length == 0) {
      ++i;
      continue;
    }
    pieces.push_back(text.Part(begin, i));
    if (pieces.size() == maximum) return TooMany(text.positions[i], std::string(message));
    i += length;
    begin = i;
  }
  pieces.push_back(text.Part(begin, text.bytes.size()));
  return pieces;
}

auto LengthOf(std::string_view delimiter) {
  return [delimiter](std::string_view rest) {
    return rest.starts_with(delimiter) ? delimiter.size() : 0;
  };
}

auto LengthOf(const KeywordForms& forms) {
  return [&forms](std::string_view rest) {
    return StartsWithKeyword(rest, forms) ? forms[0].size() : 0;
  };
}

Split<ConditionText> CollapseRuns(TextView text, std::string_view blank) {
  const auto pieces =
      SplitWhere(text, base::kMaximumPieces,
                 "空白が多すぎます。一つの式に書ける空白は999個までです。", LengthOf(blank));
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
                    "注釈を囲む「\"」が多すぎます。「\"」は999個までです。", LengthOf("\""));
}

Split<std::vector<TextView>> SplitOr(TextView text) {
  return SplitWhere(text, CompiledCondition::kMaximumOrTerms,
                    "Or でつないだ条件が100個を超えています。", LengthOf(kOrForms));
}

Split<std::vector<TextView>> SplitAnd(TextView text) {
  return SplitWhere(text, CompiledCondition::kMaximumAndTerms,
                    "And でつないだ条件が100個を超えています。", LengthOf(kAndForms));
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
  const auto pieces = SplitWhere(text, kMaximumRemovalPieces,
                                 "「" + name + "」が多すぎます。「" + name + "」は9999個までです。",
                                 LengthOf(name));
  if (!pieces) return tl::unexpected<Note>(pieces.error());
  ConditionText removed;
  for (const TextView& piece : *pieces) removed.Append(piece);
  return removed;
}

size_t FindNot(std::string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (StartsWithKeyword(text.substr(i), kNotForms)) return i;
  }
  return std::string_view::npos;
}

}  // namespace orin::analysis
