#pragma once

#include <cstdint>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/condition.h"
#include "analysis/items/item_call.h"
#include "analysis/node_table.h"
#include "analysis/operator_codes.h"
#include "analysis/stock_context.h"

namespace orin::analysis {

/// What of a condition is evaluated: an immutable program, shared by all stocks and days.
class Program {
 public:
  /// Never fails: what cannot be bound is a node that fails, with a note.
  static Program Build(const CompiledCondition& condition);

  /// One bare operand, for EvaluateOperand; else a condition, for EvaluateCondition.
  [[nodiscard]] bool IsValue() const { return is_value_; }
  [[nodiscard]] const History& Needs() const { return needs_; }
  /// Whether an item reads the second stock: 第二銘柄... or さや... Without one those items fail.
  [[nodiscard]] bool NeedsSecondStock() const { return needs_second_stock_; }
  /// Whether the first operand of a relation contains 買い値 or 売り値, whose price it then stores
  /// where it is true.
  [[nodiscard]] bool StoresPrices() const { return !storing_.empty(); }
  /// The condition's notes and those of its operands, by position. At most 100.
  [[nodiscard]] const std::vector<Note>& Notes() const { return notes_; }

 private:
  friend class Evaluator;
  friend class ProgramBuilder;

  /// The nodes needed_[needed_begin] ... needed_[needed_end - 1], ascending, compute the root.
  struct Operand {
    uint32_t root = NodeTable::kFailed;
    uint32_t needed_begin = 0;
    uint32_t needed_end = 0;
  };
  /// Two numbers of operands. A bare operand where a relation should stand is compared with the
  /// operand that fails.
  struct Comparison {
    uint32_t left = 0;
    Relation relation = Relation::kEqual;
    uint32_t right = 0;
  };
  /// A comparison whose left operand contains 買い値 or 売り値.
  struct StoringComparison {
    uint32_t comparison = 0;
    bool stores_buy = false;
    bool stores_sell = false;
  };
  /// True when each of its comparisons is, whichever And-term they come from.
  struct ComparisonRange {
    uint32_t begin = 0;
    uint32_t end = 0;
  };

  /// The values of an item call on the days of a block and `span` days before them. Calls that
  /// differ in their day offset alone share it: the node of one reads it shifted.
  struct ItemColumn {
    ItemCall call;
    int32_t span = 0;
  };

  bool is_value_ = false;
  bool needs_second_stock_ = false;
  History needs_;
  std::vector<Note> notes_;
  std::vector<Node> nodes_;
  std::vector<ItemColumn> item_columns_;
  std::vector<uint32_t> needed_;
  std::vector<Operand> operands_;  // the first one fails
  uint32_t value_operand_ = 0;     // of a value
  std::vector<Comparison> comparisons_;
  std::vector<ComparisonRange> or_terms_;
  std::vector<StoringComparison> storing_;  // in the order of the text
};

/// Compiles and builds in one step.
tl::expected<Program, Note> BuildProgram(std::string_view text);

}  // namespace orin::analysis
