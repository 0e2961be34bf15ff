#include "analysis/evaluator.h"

#include <algorithm>

#include "analysis/operators.h"
#include "kernels/kernels.h"

namespace orin::analysis {

using base::Currency;
using base::kNoValue;
using base::RawIntegers;

namespace {

// Columns of all nodes together take no more memory than this; a range that would is evaluated
// in several blocks. A text of a megabyte has some hundred thousand nodes, and every node keeps its
// column while others may still share it.
constexpr size_t kColumnBytes = size_t{8} << 20;

int32_t BlockDays(size_t nodes) {
  return static_cast<int32_t>(std::max<size_t>(kColumnBytes / sizeof(Currency) / nodes, 1));
}

kernels::Outcomes OutcomesOf(Relation relation) {
  const auto when = [relation](Relation outcome) -> int64_t {
    return (static_cast<unsigned>(relation) & static_cast<unsigned>(outcome)) != 0 ? -1 : 0;
  };
  return {when(Relation::kLess), when(Relation::kEqual), when(Relation::kGreater)};
}

}  // namespace

Evaluator::Evaluator(const Program& program)
    : program_(program),
      block_days_(BlockDays(program.nodes_.size())),
      nodes_(program.nodes_.size()),
      items_(program.item_columns_.size()) {}

bool Evaluator::EvaluateCondition(StockContext& context, base::DayIndex day) {
  if (program_.is_value_) return false;
  const Block block = {context, day, day};
  EvaluateTruths(block);
  if (program_.StoresPrices()) StorePrices(block);
  return true_days_[0] != 0;
}

Value Evaluator::EvaluateOperand(StockContext& context, base::DayIndex day) {
  if (!program_.is_value_) return Value::Failed();
  ++round_;
  const Currency value = *Compute({context, day, day}, program_.value_operand_);
  return value != kNoValue ? Value::Of(value) : Value::Failed();
}

template <typename Evaluate>
void Evaluator::ForEachBlock(StockContext& context, base::DayIndex first, base::DayIndex last,
                             Evaluate evaluate) {
  size_t done = 0;
  for (int64_t begin = first.Value(); begin <= last.Value(); begin += block_days_) {
    const int64_t end = std::min<int64_t>(begin + block_days_ - 1, last.Value());
    const Block block = {context, base::DayIndex(static_cast<int32_t>(begin)),
                         base::DayIndex(static_cast<int32_t>(end))};
    evaluate(block, done);
    done += block.Count();
  }
}

void Evaluator::EvaluateConditionRange(StockContext& context, base::DayIndex first,
                                       base::DayIndex last, std::vector<uint8_t>& truths) {
  truths.assign(first > last ? 0 : Block{context, first, last}.Count(), 0);
  if (program_.is_value_) return;
  ForEachBlock(context, first, last, [this, &truths](const Block& block, size_t done) {
    EvaluateTruths(block);
    for (size_t i = 0; i < block.Count(); ++i) truths[done + i] = true_days_[i] != 0 ? 1 : 0;
  });
}

void Evaluator::EvaluateOperandRange(StockContext& context, base::DayIndex first,
                                     base::DayIndex last, base::ValueColumn& values) {
  values.Reset(first > last ? 0 : Block{context, first, last}.Count());
  if (!program_.is_value_) return;
  ForEachBlock(context, first, last, [this, &values](const Block& block, size_t done) {
    ++round_;
    const Currency* computed = Compute(block, program_.value_operand_);
    std::copy_n(computed, block.Count(), values.Data() + done);
  });
}

void Evaluator::EvaluateTruths(const Block& block) {
  ++round_;
  const size_t count = block.Count();
  true_days_.assign(count, 0);
  open_.resize(count);
  for (const Program::ComparisonRange& or_term : program_.or_terms_) {
    for (size_t i = 0; i < count; ++i) open_[i] = ~true_days_[i];
    bool any_open = true;
    for (uint32_t i = or_term.begin; i < or_term.end && any_open; ++i) {
      any_open = Narrow(block, program_.comparisons_[i]);
    }
    if (!any_open) continue;
    for (size_t i = 0; i < count; ++i) true_days_[i] |= open_[i];
    // Later Or-terms, often the costly ones, matter only to days that are still false.
    if (std::find(true_days_.begin(), true_days_.end(), 0) == true_days_.end()) return;
  }
}

// Apart from the truths, which end as soon as they are decided: the price a trade gets must not
// depend on the order of the terms. No price changes before the last operand is computed.
void Evaluator::StorePrices(const Block& block) {
  TradePrices after = block.context.Trade();
  for (const Program::StoringComparison& storing : program_.storing_) {
    const Program::Comparison& comparison = program_.comparisons_[storing.comparison];
    const Currency left = *Compute(block, comparison.left);
    const Currency right = *Compute(block, comparison.right);
    const bool both = left != kNoValue && right != kNoValue;
    if (!both || !CompareValues(left, comparison.relation, right)) continue;
    const auto price = static_cast<float>(left.ToDouble());
    if (storing.stores_buy) after.buy = price;
    if (storing.stores_sell) after.sell = price;
  }
  block.context.Trade() = after;
}

// Closes the days on which the relation is false; tells whether any stays open.
bool Evaluator::Narrow(const Block& block, const Program::Comparison& comparison) {
  const Currency* left = Compute(block, comparison.left);
  const Currency* right = Compute(block, comparison.right);
  return kernels::Best().narrow(RawIntegers(left), OutcomesOf(comparison.relation),
                                RawIntegers(right), block.Count(), open_.data());
}

const Currency* Evaluator::Compute(const Block& block, uint32_t operand) {
  const Program::Operand& needs = program_.operands_[operand];
  for (uint32_t i = needs.needed_begin; i < needs.needed_end; ++i) {
    ComputeNode(block, program_.needed_[i]);
  }
  // An operand without nodes to compute is a literal or the one that fails.
  if (needs.needed_begin == needs.needed_end) FillLiteral(needs.root, block.Count());
  return ValuesOf(needs.root);
}

void Evaluator::ComputeNode(const Block& block, uint32_t number) {
  // Operands share nodes, within a block and never beyond it.
  Computed& computed = nodes_[number];
  if (computed.round == round_) return;
  computed.round = round_;
  const Node& node = program_.nodes_[number];
  if (node.kind == Node::Kind::kItem) return ComputeItemColumn(block, node.left);

  const size_t count = block.Count();
  for (const uint32_t operand : {node.left, node.right}) FillLiteral(operand, count);
  if (computed.values.Size() < count) computed.values.Reset(count);
  const Currency* left = ValuesOf(node.left);
  Currency* out = computed.values.Data();
  if (node.kind == Node::Kind::kNegated) {
    for (size_t i = 0; i < count; ++i) {
      out[i] = left[i] != kNoValue ? Currency::FromRaw(-left[i].Raw()) : kNoValue;
    }
    return;
  }
  const Currency* right = ValuesOf(node.right);
  if (node.operation == OperatorKind::kAdd) {
    return kernels::Best().add(RawIntegers(left), RawIntegers(right), count, RawIntegers(out));
  }
  if (node.operation == OperatorKind::kSubtract) {
    return kernels::Best().subtract(RawIntegers(left), RawIntegers(right), count, RawIntegers(out));
  }
  const Operation operation = OperationOf(node.operation);
  for (size_t i = 0; i < count; ++i) {
    const bool valid = left[i] != kNoValue && right[i] != kNoValue;
    out[i] = valid ? operation(left[i], right[i]).value_or(kNoValue) : kNoValue;
  }
}

void Evaluator::ComputeItemColumn(const Block& block, uint32_t number) {
  Computed& computed = items_[number];
  if (computed.round == round_) return;
  computed.round = round_;
  const Program::ItemColumn& column = program_.item_columns_[number];
  const base::DayIndex first(block.first.Value() - column.span);
  column.call.Evaluate(block.context, first, block.last, computed.values);
}

// Literals, and the node that fails, have the same value on all days; their columns grow to the
// longest block.
void Evaluator::FillLiteral(uint32_t number, size_t count) {
  const Node& node = program_.nodes_[number];
  const bool is_literal = node.kind == Node::Kind::kLiteral;
  base::ValueColumn& values = nodes_[number].values;
  if ((!is_literal && node.kind != Node::Kind::kFailed) || values.Size() >= count) return;
  values.Reset(count);
  if (is_literal) std::fill_n(values.Data(), count, node.literal);
}

const Currency* Evaluator::ValuesOf(uint32_t number) const {
  const Node& node = program_.nodes_[number];
  if (node.kind != Node::Kind::kItem) return nodes_[number].values.Data();
  return items_[node.left].values.Data() + node.right;
}

}  // namespace orin::analysis
