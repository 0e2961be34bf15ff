#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/ordinal.h"
#include "base/value_column.h"

namespace orin::analysis {

/// The scratch memory of a run. One object serves any number of stocks for one program, which
/// must outlive it. Relations are evaluated from left to right and no further than the outcome
/// needs, but for those that store a price; an operand that fails makes its relation false.
class Evaluator {
 public:
  explicit Evaluator(const Program& program);
  explicit Evaluator(Program&&) = delete;

  /// The condition's truth on one day. A bare operand is no truth: false. Each true relation whose
  /// first operand contains 買い値 (売り値) stores that operand's value as the buy (sell) price of
  /// the context's trade, in single precision, wherever in the condition it stands. All of them
  /// read the prices from before; of several that store a price the last one of the text wins.
  bool EvaluateCondition(StockContext& context, base::DayIndex day);
  /// The value of a program that is one bare operand; of a condition: failed.
  Value EvaluateOperand(StockContext& context, base::DayIndex day);

  /// The same for each of the days first..last, evaluated as columns. `truths` and `values` are
  /// reset to one place a day, to none where last is before first. No price is stored, and every
  /// day reads the prices of the context: the days of a range have no order.
  void EvaluateConditionRange(StockContext& context, base::DayIndex first, base::DayIndex last,
                              std::vector<uint8_t>& truths);
  void EvaluateOperandRange(StockContext& context, base::DayIndex first, base::DayIndex last,
                            base::ValueColumn& values);

 private:
  /// Consecutive days that are evaluated at once.
  struct Block {
    StockContext& context;
    base::DayIndex first;
    base::DayIndex last;
    [[nodiscard]] size_t Count() const {
      return static_cast<size_t>(int64_t{last.Value()} - first.Value() + 1);
    }
  };
  /// What was computed last, and in which round; the values of literals serve every round.
  struct Computed {
    uint64_t round = 0;
    base::ValueColumn values;
  };

  template <typename Evaluate>
  void ForEachBlock(StockContext& context, base::DayIndex first, base::DayIndex last,
                    Evaluate evaluate);
  /// Leaves in true_days_ -1 for each day on which the condition is true, else 0.
  void EvaluateTruths(const Block& block);
  /// The values of an operand, one a day of the block; kNoValue where it fails.
  const base::Currency* Compute(const Block& block, uint32_t operand);
  void ComputeNode(const Block& block, uint32_t number);
  void ComputeItemColumn(const Block& block, uint32_t number);
  void FillLiteral(uint32_t number, size_t count);
  [[nodiscard]] const base::Currency* ValuesOf(uint32_t number) const;
  /// For a block of one day whose truths have been evaluated.
  void StorePrices(const Block& block);
  bool Narrow(const Block& block, const Program::Comparison& comparison);

  const Program& program_;
  int32_t block_days_;
  uint64_t round_ = 0;           // one for each block
  std::vector<Computed> nodes_;  // of each node that has values of its own
  std::vector<Computed> items_;  // of each item column
  std::vector<int64_t> open_;    // -1: days on which the Or-term under way can still be true
  std::vector<int64_t> true_days_;
};

}  // namespace orin::analysis
