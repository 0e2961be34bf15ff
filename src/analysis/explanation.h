#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/condition.h"
#include "analysis/items/item_span.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/currency.h"
#include "base/ordinal.h"

namespace orin::analysis {

// Every `text` below is a part of the condition as it was typed, without comments and with the
// braces around it; every `failure` is a Japanese sentence, empty where there is a value.

/// An item call of an operand, or what stands in the place of one.
struct ExplainedItem {
  std::string text;
  Value value;
  std::string failure;
  /// The bars it read; none where it reads no bars, or where not all of them exist.
  std::optional<DatedSpan> bars;
};

struct ExplainedOperand {
  std::string text;
  Value value;
  std::string failure;
  /// In the order of the text, each once, those of numeric functions left out.
  std::vector<ExplainedItem> items;

  [[nodiscard]] bool IsOneItem() const { return items.size() == 1 && items[0].text == text; }
};

struct ExplainedRelation {
  std::string text;
  ExplainedOperand left;
  std::string relation;  // empty for a bare operand, which is no truth
  ExplainedOperand right;
  bool truth = false;
  /// Whether an evaluation looks at it: because the outcome of the condition hangs on it, or for
  /// the price of the trade that it may store. The others, behind a false relation or a true
  /// Or-term, have their truth here all the same.
  bool needed = true;
  /// left - right, where both sides have a value.
  std::optional<base::Currency> difference;
  /// The difference in percent of the right side, where that is not 0.
  std::optional<base::Currency> difference_rate;
};

struct ExplainedAndTerm {
  std::string text;
  bool truth = false;
  std::vector<ExplainedRelation> relations;
};

struct ExplainedOrTerm {
  std::string text;
  bool truth = false;
  std::vector<ExplainedAndTerm> and_terms;
};

/// Why a stock fulfils a condition on a day, or does not.
struct Explanation {
  bool truth = false;
  std::vector<ExplainedOrTerm> or_terms;  // none for a value
  std::optional<ExplainedOperand> value;  // of one bare operand
  std::vector<Note> notes;                // the compiler's, by position
};

/// The relation that keeps an Or-term from being true.
struct FirstFalse {
  size_t and_term = 0;  // from 1
  const ExplainedRelation* relation = nullptr;
};
/// nullopt for a term that is true.
std::optional<FirstFalse> FindFirstFalse(const ExplainedOrTerm& or_term);

/// Explains a condition, or a value, for the stock and day of a context that was loaded for the
/// needs of the text's program. The truth is that of Evaluator::EvaluateCondition, but the prices
/// of the context's trade stay as they are. Fails where the text cannot be compiled.
tl::expected<Explanation, Note> Explain(std::string_view text, StockContext& context,
                                        base::DayIndex day);

}  // namespace orin::analysis
