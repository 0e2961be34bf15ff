#include "analysis/evaluator.h"

#include <algorithm>

#include "analysis/operators.h"

namespace orin::analysis {

namespace {

// Columns of all nodes together take no more memory than this; a range that would is evaluated
// in several blocks. A text of a megabyte has some hundred thousand nodes, and every node keeps its
// column while others may still share it.
constexpr size_t kColumnBytes = size_t{64} << 20;
constexpr size_t kBytesPerPlace = sizeof(base::Currency) + sizeof(uint8_t);

constexpr uint8_t kValid = 1;
constexpr uint8_t kInvalid = 0;

int32_t BlockDays(size_t nodes) {
  return static_cast<int32_t>(std::max<size_t>(kColumnBytes / kBytesPerPlace / nodes, 1));
}

void Store(base::ValueColumn& column, size_t place, const std::optional<base::Currency>& result) {
  column.values[place] = result.value_or(base::Currency());
  column.valid[place] = result.has_value();
}

}  // namespace

Evaluator::Evaluator(const Program& program)
    : program_(program),
      block_days_(BlockDays(program.nodes_.size())),
      computed_in_(program.nodes_.size()),
      columns_(program.nodes_.size()) {}

bool Evaluator::EvaluateCondition(StockContext& context, base::DayIndex day) {
  if (program_.is_value_) return false;
  uint8_t truth = 0;
  EvaluateTruths({context, day, day, true}, &truth);
  return truth != 0;
}

Value Evaluator::EvaluateOperand(StockContext& context, base::DayIndex day) {
  if (!program_.is_value_) return Value::Failed();
  ++round_;
  const View view = Compute({context, day, day}, program_.value_operand_);
  return *view.valid != 0 ? Value::Of(*view.values) : Value::Failed();
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
    EvaluateTruths(block, truths.data() + done);
  });
}

void Evaluator::EvaluateOperandRange(StockContext& context, base::DayIndex first,
                                     base::DayIndex last, base::ValueColumn& values) {
  values.Reset(first > last ? 0 : Block{context, first, last}.Count());
  if (!program_.is_value_) return;
  ForEachBlock(context, first, last, [this, &values](const Block& block, size_t done) {
    ++round_;
    const View view = Compute(block, program_.value_operand_);
    for (size_t i = 0; i < block.Count(); ++i) {
      if (view.valid[i * view.step] != 0) values.Set(done + i, view.values[i * view.step]);
    }
  });
}

void Evaluator::EvaluateTruths(const Block& block, uint8_t* truths) {
  ++round_;
  const size_t count = block.Count();
  for (const Program::ComparisonRange& or_term : program_.or_terms_) {
    open_.resize(count);
    std::transform(truths, truths + count, open_.begin(),
                   [](uint8_t truth) { return static_cast<uint8_t>(truth ^ 1U); });
    bool any_open = true;
    for (uint32_t i = or_term.begin; i < or_term.end && any_open; ++i) {
      const Program::Comparison& comparison = program_.comparisons_[i];
      any_open = Narrow(block, comparison);
      const bool stores = comparison.stores_buy || comparison.stores_sell;
      if (any_open && stores && block.stores_prices) StorePrice(block, comparison);
    }
    if (!any_open) continue;
    for (size_t i = 0; i < count; ++i) truths[i] = static_cast<uint8_t>(truths[i] | open_[i]);
    // Later Or-terms, often the costly ones, matter only to days that are still false.
    if (std::find(truths, truths + count, 0) == truths + count) return;
  }
}

void Evaluator::StorePrice(const Block& block, const Program::Comparison& comparison) {
  const auto price = static_cast<float>(Compute(block, comparison.left).values->ToDouble());
  TradePrices& trade = block.context.Trade();
  if (comparison.stores_buy) trade.buy = price;
  if (comparison.stores_sell) trade.sell = price;
  // What rests on the old price is out of date. Finding out which nodes do would cost every
  // program; computing all of them anew costs the one day.
  ++round_;
}

// Closes the days on which the relation is false; tells whether any stays open.
bool Evaluator::Narrow(const Block& block, const Program::Comparison& comparison) {
  const View left = Compute(block, comparison.left);
  const View right = Compute(block, comparison.right);
  bool any_open = false;
  for (size_t i = 0; i < block.Count(); ++i) {
    const bool open = open_[i] != 0 && left.valid[i * left.step] != 0 &&
                      right.valid[i * right.step] != 0 &&
                      CompareValues(left.values[i * left.step], comparison.relation,
                                    right.values[i * right.step]);
    open_[i] = open;
    any_open = any_open || open;
  }
  return any_open;
}

Evaluator::View Evaluator::Compute(const Block& block, uint32_t operand) {
  const Program::Operand& needs = program_.operands_[operand];
  for (uint32_t i = needs.needed_begin; i < needs.needed_end; ++i) {
    const uint32_t number = program_.needed_[i];
    // Operands share nodes, within a block and never beyond it.
    if (computed_in_[number] == round_) continue;
    computed_in_[number] = round_;
    ComputeNode(block, number);
  }
  return ViewOf(needs.root);
}

void Evaluator::ComputeNode(const Block& block, uint32_t number) {
  const Node& node = program_.nodes_[number];
  base::ValueColumn& column = columns_[number];
  if (node.kind == Node::Kind::kItem) {
    program_.items_[node.left].Evaluate(block.context, block.first, block.last, column);
    return;
  }
  const size_t count = block.Count();
  column.values.resize(count);
  column.valid.resize(count);
  const View left = ViewOf(node.left);
  if (node.kind == Node::Kind::kNegated) {
    for (size_t i = 0; i < count; ++i) {
      Store(column, i, left.valid[i] != 0 ? left.values[i].Negated() : std::nullopt);
    }
    return;
  }
  const View right = ViewOf(node.right);
  const Operation operation = OperationOf(node.operation);
  for (size_t i = 0; i < count; ++i) {
    const bool valid = left.valid[i * left.step] != 0 && right.valid[i * right.step] != 0;
    Store(
        column, i,
        valid ? operation(left.values[i * left.step], right.values[i * right.step]) : std::nullopt);
  }
}

Evaluator::View Evaluator::ViewOf(uint32_t number) const {
  const Node& node = program_.nodes_[number];
  switch (node.kind) {
    case Node::Kind::kFailed:
      return {&node.literal, &kInvalid, 0};
    case Node::Kind::kLiteral:
      return {&node.literal, &kValid, 0};
    default:
      return {columns_[number].values.data(), columns_[number].valid.data(), 1};
  }
}

}  // namespace orin::analysis
