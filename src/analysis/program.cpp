#include "analysis/program.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "analysis/condition_notes.h"
#include "analysis/operand_builder.h"

namespace orin::analysis {

class ProgramBuilder {
 public:
  explicit ProgramBuilder(const CompiledCondition& condition)
      : condition_(condition), operand_builder_(nodes_, program_.notes_, condition.explained) {
    program_.notes_ = condition.notes;
    // A relation that lacks a side refers to this operand, so that no evaluation has to ask.
    program_.operands_.emplace_back();
  }

  Program Build() {
    program_.is_value_ = condition_.IsValue();
    if (program_.is_value_) {
      program_.value_operand_ = AddOperand(condition_.or_terms[0][0][0]);
    } else {
      for (const OrTerm& or_term : condition_.or_terms) AddOrTerm(or_term);
    }
    program_.nodes_ = nodes_.TakeNodes();
    items_ = nodes_.TakeItems();
    for (const ItemCall& item : items_) {
      program_.needs_ = program_.needs_.Union(item.Needs());
      program_.needs_second_stock_ = program_.needs_second_stock_ || item.ReadsSecondStock();
    }
    ListStoringComparisons();
    ShareItemColumns();
    std::stable_sort(program_.notes_.begin(), program_.notes_.end(),
                     [](const Note& a, const Note& b) { return a.position < b.position; });
    return std::move(program_);
  }

 private:
  uint32_t AddOperand(const Piece& piece) {
    if (!piece.positions.empty()) last_position_ = piece.positions.back();
    // An empty piece has no place of its own; what it should stand behind has.
    const OperandBuilder::Operand built = operand_builder_.Build(piece, last_position_);
    // The needed nodes are what an evaluation computes for this operand alone, so that one behind
    // a relation already false costs nothing.
    // Equal roots are equal computations, so that one operand serves every place it stands at.
    const auto number = static_cast<uint32_t>(program_.operands_.size());
    const auto [place, is_new] = operand_of_root_.try_emplace(built.root, number);
    if (is_new) {
      const auto begin = static_cast<uint32_t>(program_.needed_.size());
      program_.needed_.insert(program_.needed_.end(), built.computed.begin(), built.computed.end());
      program_.operands_.push_back(
          {built.root, begin, static_cast<uint32_t>(program_.needed_.size())});
    }
    return place->second;
  }

  void AddOrTerm(const OrTerm& or_term) {
    const auto begin = static_cast<uint32_t>(program_.comparisons_.size());
    for (const AndTerm& and_term : or_term) AddAndTerm(and_term);
    program_.or_terms_.push_back({begin, static_cast<uint32_t>(program_.comparisons_.size())});
  }

  void AddAndTerm(const AndTerm& pieces) {
    if (pieces.size() < 2) {
      AddBareOperand(pieces);
      return;
    }
    uint32_t left = AddOperand(pieces[0]);
    for (size_t i = 1; i < pieces.size(); i += 2) {
      if (!pieces[i].positions.empty()) last_position_ = pieces[i].positions.back();
      auto code = RelationAt(pieces[i].text);
      if (code && code->length != pieces[i].text.size()) code.reset();
      const uint32_t right = code && i + 1 < pieces.size() ? AddOperand(pieces[i + 1]) : 0;
      program_.comparisons_.push_back({left, code ? code->relation : Relation::kEqual, right});
      left = right;
    }
  }

  void ListStoringComparisons() {
    const auto holds_price = [](const ItemCall& item) {
      return item.IsBuyPrice() || item.IsSellPrice();
    };
    if (std::none_of(items_.begin(), items_.end(), holds_price)) return;
    for (uint32_t number = 0; number < program_.comparisons_.size(); ++number) {
      Program::StoringComparison storing = {number};
      const Program::Operand& left = program_.operands_[program_.comparisons_[number].left];
      for (uint32_t i = left.needed_begin; i < left.needed_end; ++i) {
        const Node& node = program_.nodes_[program_.needed_[i]];
        if (node.kind != Node::Kind::kItem) continue;
        const ItemCall& item = items_[node.left];
        storing.stores_buy = storing.stores_buy || item.IsBuyPrice();
        storing.stores_sell = storing.stores_sell || item.IsSellPrice();
      }
      if (storing.stores_buy || storing.stores_sell) program_.storing_.push_back(storing);
    }
  }

  // Newest first, calls that read the same series a few days apart become one column, which costs
  // one day alone those few days more and a range of days nothing.
  void ShareItemColumns() {
    constexpr int32_t kLargestStep = 8;
    std::vector<uint32_t> order(items_.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [this](uint32_t a, uint32_t b) {
      return ItemCall::IsListedBefore(items_[a], items_[b]);
    });
    std::vector<Node> places(items_.size());  // the column of each call and how far back it is
    for (size_t i = 0; i < order.size(); ++i) {
      const ItemCall& item = items_[order[i]];
      auto& columns = program_.item_columns_;
      int32_t back = 0;
      if (i > 0 && item.IsShiftOf(columns.back().call)) {
        const int64_t days = int64_t{columns.back().call.Offset()} - item.Offset();
        if (days - columns.back().span <= kLargestStep) back = static_cast<int32_t>(days);
      }
      if (back == 0) columns.push_back({item, 0});
      columns.back().span = std::max(columns.back().span, back);
      places[order[i]].left = static_cast<uint32_t>(columns.size() - 1);
      places[order[i]].right = static_cast<uint32_t>(back);
    }
    for (Node& node : program_.nodes_) {
      if (node.kind != Node::Kind::kItem) continue;
      const Node& place = places[node.left];
      node.left = place.left;
      node.right = static_cast<uint32_t>(program_.item_columns_[place.left].span) - place.right;
    }
  }

  void AddBareOperand(const AndTerm& pieces) {
    const bool has_text = !pieces.empty() && !pieces[0].positions.empty();
    AddNote(program_.notes_, has_text ? pieces[0].positions[0] : last_position_,
            has_text ? "比較演算子（=、<>、<、<=、>、>=）がないので、この条件は成り立ちません。"
                     : "And や Or の前後に条件がないので、この条件は成り立ちません。");
    const uint32_t left = has_text ? AddOperand(pieces[0]) : 0;
    program_.comparisons_.push_back({left, Relation::kEqual, 0});
  }

  const CompiledCondition& condition_;
  Program program_;
  NodeTable nodes_;
  OperandBuilder operand_builder_;
  std::vector<ItemCall> items_;
  std::unordered_map<uint32_t, uint32_t> operand_of_root_ = {{NodeTable::kFailed, 0}};
  size_t last_position_ = 1;  // of what was read so far
};

Program Program::Build(const CompiledCondition& condition) {
  return ProgramBuilder(condition).Build();
}

tl::expected<Program, Note> BuildProgram(std::string_view text) {
  return CompileCondition(text).map(Program::Build);
}

}  // namespace orin::analysis
