#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/bars.h"
#include "base/ordinal.h"

namespace orin::analysis {

/// The scratch memory of a run. One object serves any number of stocks for one program, which
/// must outlive it. Relations are evaluated from left to right and no further than the outcome
/// needs; an operand that fails makes its relation false.
class Evaluator {
 public:
  explicit Evaluator(const Program& program);
  explicit Evaluator(Program&&) = delete;

  /// The condition's truth on one day. A bare operand is no truth: false. Each relation found true
  /// whose first operand contains 買い値 (売り値) stores that operand's value as the buy (sell)
  /// price of the context's trade, in single precision; items evaluated later read the new price.
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
  /// The values of a node for the days of a block; a step of 0 gives each day the first one.
  struct View {
    const base::Currency* values;
    const uint8_t* valid;
    size_t step;
  };

  /// Consecutive days that are evaluated at once.
  struct Block {
    StockContext& context;
    base::DayIndex first;
    base::DayIndex last;
    bool stores_prices = false;
    [[nodiscard]] size_t Count() const {
      return static_cast<size_t>(int64_t{last.Value()} - first.Value() + 1);
    }
  };

  template <typename Evaluate>
  void ForEachBlock(StockContext& context, base::DayIndex first, base::DayIndex last,
                    Evaluate evaluate);
  void EvaluateTruths(const Block& block, uint8_t* truths);
  View Compute(const Block& block, uint32_t operand);
  void ComputeNode(const Block& block, uint32_t number);
  [[nodiscard]] View ViewOf(uint32_t number) const;
  void StorePrice(const Block& block, const Program::Comparison& comparison);
  bool Narrow(const Block& block, const Program::Comparison& comparison);

  const Program& program_;
  int32_t block_days_;
  uint64_t round_ = 0;                      // one for each block
  std::vector<uint64_t> computed_in_;       // for each node the last round that computed it
  std::vector<base::ValueColumn> columns_;  // for each node
  std::vector<uint8_t> open_;               // days on which the Or-term under way can still be true
};

}  // namespace orin::analysis
