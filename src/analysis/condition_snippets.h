#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace orin::analysis {

/// What a snippet asks for.
struct SnippetField {
  enum class Kind { kOperand, kCondition, kNumber };

  Kind kind;
  std::string_view label;
  std::string_view usual;  // what it proposes
  /// Of a number.
  int32_t minimum = 1;
  int32_t maximum = 1000;
};

/// A condition that is often wanted, written as plain condition text from a few fields.
struct Snippet {
  std::string_view group;        // heading in the list
  std::string_view name;         // "上抜け（ゴールデンクロス）"
  std::string_view explanation;  // one sentence on what it finds
  std::vector<SnippetField> fields;
  /// `values` as many as the fields. Fails with a sentence for what cannot be used.
  base::Result<std::string> (*make)(std::span<const std::string> values);
};

/// In the order in which they are offered.
std::span<const Snippet> Snippets();

/// Checks the fields (an operand must be one bare operand that compiles without a note, a
/// condition a condition, a number within its limits) and makes the text. The sentence of a
/// failure begins with the label.
base::Result<std::string> MakeSnippet(const Snippet& snippet, std::span<const std::string> values);

}  // namespace orin::analysis
