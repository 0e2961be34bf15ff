#include "analysis/node_table.h"

#include <algorithm>
#include <optional>

#include "analysis/operators.h"

namespace orin::analysis {

namespace {

// Differently written texts of one item call are recognised among this many calls. Texts that
// are equal to the letter never get here, so no condition a person writes has more; without a
// bound a condition of many thousand calls would take quadratic time.
constexpr size_t kComparedItems = 256;

}  // namespace

NodeTable::NodeTable() { Intern(Node{}); }

size_t NodeTable::Hash::operator()(const Node& node) const {
  constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15;
  uint64_t hash = static_cast<uint64_t>(node.kind) << 8 | static_cast<uint64_t>(node.operation);
  for (const uint64_t part :
       {uint64_t{node.left}, uint64_t{node.right}, static_cast<uint64_t>(node.literal.Raw())}) {
    hash = (hash ^ part) * kMultiplier;
    hash ^= hash >> 32;
  }
  return hash;
}

uint32_t NodeTable::Intern(const Node& node) {
  const auto [place, is_new] = numbers_.try_emplace(node, static_cast<uint32_t>(nodes_.size()));
  if (is_new) nodes_.push_back(node);
  return place->second;
}

uint32_t NodeTable::Literal(base::Currency value) {
  Node node;
  node.kind = Node::Kind::kLiteral;
  node.literal = value;
  return Intern(node);
}

uint32_t NodeTable::Item(const ItemCall& call) {
  const auto compared_end =
      items_.begin() + static_cast<ptrdiff_t>(std::min(items_.size(), kComparedItems));
  const auto found = std::find(items_.begin(), compared_end, call);
  Node node;
  node.kind = Node::Kind::kItem;
  node.left = static_cast<uint32_t>(
      found == compared_end ? items_.size() : static_cast<size_t>(found - items_.begin()));
  if (found == compared_end) items_.push_back(call);
  return Intern(node);
}

uint32_t NodeTable::Negated(uint32_t operand) {
  if (operand == kFailed) return kFailed;
  if (nodes_[operand].kind == Node::Kind::kLiteral) {
    const std::optional<base::Currency> value = nodes_[operand].literal.Negated();
    return value ? Literal(*value) : kFailed;
  }
  Node node;
  node.kind = Node::Kind::kNegated;
  node.left = operand;
  return Intern(node);
}

uint32_t NodeTable::Operation(uint32_t left, OperatorKind operation, uint32_t right) {
  if (left == kFailed || right == kFailed) return kFailed;
  if (nodes_[left].kind == Node::Kind::kLiteral && nodes_[right].kind == Node::Kind::kLiteral) {
    const Value value = ApplyOperator(nodes_[left].literal, operation, nodes_[right].literal);
    return value.ok ? Literal(value.value) : kFailed;
  }
  Node node;
  node.kind = Node::Kind::kOperation;
  node.operation = operation;
  node.left = left;
  node.right = right;
  return Intern(node);
}

}  // namespace orin::analysis
