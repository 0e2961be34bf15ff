#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "analysis/items/item_call.h"
#include "analysis/operator_codes.h"
#include "base/currency.h"

namespace orin::analysis {

/// One step of a computation. The numbers of nodes it reads are less than its own.
struct Node {
  enum class Kind : uint8_t { kFailed, kLiteral, kItem, kNegated, kOperation };

  Kind kind = Kind::kFailed;
  OperatorKind operation = OperatorKind::kFunction;  // of kOperation
  uint32_t left = 0;   // a node; of kItem the number of the item call, in a program of the column
  uint32_t right = 0;  // a node; of kItem in a program the place of the column for the first day
  base::Currency literal;

  bool operator==(const Node&) const = default;
};

/// The nodes of all operands of a condition, each computation once. What depends on literals
/// alone is computed here.
class NodeTable {
 public:
  /// The number of the node that fails; whatever reads it is that node too.
  static constexpr uint32_t kFailed = 0;

  NodeTable();

  // Each gives the number of the one node that computes this.

  uint32_t Literal(base::Currency value);
  uint32_t Item(const ItemCall& call);
  uint32_t Negated(uint32_t node);
  uint32_t Operation(uint32_t left, OperatorKind operation, uint32_t right);

  [[nodiscard]] const Node& operator[](uint32_t number) const { return nodes_[number]; }
  /// Whether the node has a value of its own for each day.
  [[nodiscard]] bool IsComputed(uint32_t number) const {
    return nodes_[number].kind > Node::Kind::kLiteral;
  }

  std::vector<Node> TakeNodes() { return std::move(nodes_); }
  std::vector<ItemCall> TakeItems() { return std::move(items_); }

 private:
  struct Hash {
    size_t operator()(const Node& node) const;
  };

  uint32_t Intern(const Node& node);

  std::vector<Node> nodes_;
  std::vector<ItemCall> items_;
  std::unordered_map<Node, uint32_t, Hash> numbers_;
};

}  // namespace orin::analysis
