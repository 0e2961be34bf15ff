#include "analysis/operand_builder.h"

#include <algorithm>
#include <array>
#include <optional>

#include "analysis/condition_notes.h"
#include "analysis/condition_text.h"

namespace orin::analysis {

namespace {

// The pass in which each kind is applied, in the order of OperatorKind.
constexpr std::array<size_t, 8> kPassOfKind = {0, 1, 2, 2, 3, 4, 5, 5};
constexpr size_t kPasses = 6;

size_t PassOf(const OperatorCode& code) { return kPassOfKind[static_cast<size_t>(code.kind)]; }

bool LooksNumeric(std::string_view text) {
  return text.find_first_not_of("0123456789.") == std::string_view::npos;
}

size_t PositionInCondition(const Piece& piece, size_t position) {
  return position == 0 || position > piece.positions.size() ? 0 : piece.positions[position - 1];
}

}  // namespace

const OperandBuilder::Leaf& OperandBuilder::BindLeaf(std::string_view text) {
  const auto [place, is_new] = leaves_.try_emplace(text, Leaf{NodeTable::kFailed, ""});
  Leaf& leaf = place->second;
  if (!is_new) return leaf;
  if (text.empty()) {
    leaf.fault = "ここに数値か分析項目がありません。";
  } else if (const auto number = base::Currency::Parse(text)) {
    leaf.node = nodes_.Literal(*number);
  } else if (LooksNumeric(text)) {
    leaf.fault = "「" + Shortened(text) + "」は数値として扱えません。";
  } else if (const auto call = ItemCall::Bind(text)) {
    leaf.node = nodes_.Item(*call);
  } else {
    leaf.fault = call.error().message;
  }
  return leaf;
}

void OperandBuilder::ReadTokens(const Piece& piece) {
  entries_.clear();
  for (const Token& token : TokenizeOperand(piece.text)) {
    const size_t position = PositionInCondition(piece, token.position);
    uint32_t node = NodeTable::kFailed;
    if (token.kind == Token::Kind::kOperand) {
      const Leaf& leaf = BindLeaf(token.text);
      if (!leaf.fault.empty()) AddNote(notes_, position, leaf.fault);
      node = Used(leaf.node);
    }
    entries_.push_back({token.kind, token.code, node, position});
  }
}

OperandBuilder::Operand OperandBuilder::Build(const Piece& piece) {
  used_.clear();
  ReadTokens(piece);
  if (!ApplyPasses() || entries_[0].node == NodeTable::kFailed) return {};
  std::sort(used_.begin(), used_.end());
  used_.erase(std::unique(used_.begin(), used_.end()), used_.end());
  return {entries_[0].node, used_};
}

bool OperandBuilder::ApplyPasses() {
  // Most passes have nothing to do.
  std::array<std::array<bool, kPasses>, kDeepestCode + 1> present = {};
  for (const Entry& entry : entries_) {
    if (entry.kind == Token::Kind::kOperator) present[entry.code.depth][PassOf(entry.code)] = true;
  }
  for (size_t level = 0; level <= kDeepestCode; ++level) {
    const size_t depth = kDeepestCode - level;
    if (!ApplySigns(depth)) return false;
    for (size_t pass = 0; pass < kPasses; ++pass) {
      if (present[depth][pass] && !ApplyPass(depth, pass)) return false;
    }
  }
  return true;
}

bool OperandBuilder::ApplySigns(size_t depth) {
  const auto is_sign = [depth](const Entry& entry) {
    return entry.kind == Token::Kind::kSign && entry.code.depth == depth;
  };
  size_t kept = 0;
  for (size_t i = 0; i < entries_.size(); ++i) {
    const size_t first_sign = i;
    while (i < entries_.size() && is_sign(entries_[i])) ++i;
    Entry entry = entries_[i];
    if (i > first_sign) {
      if (entry.kind != Token::Kind::kOperand) {
        NoteBrokenArithmetic(entries_[first_sign]);
        return false;
      }
      NoteSignBeforeFunction(first_sign, i);
      for (size_t sign = first_sign; sign < i; ++sign) {
        entry.node = Used(nodes_.Negated(entry.node));
      }
    }
    entries_[kept++] = entry;
  }
  entries_.resize(kept);
  return true;
}

bool OperandBuilder::ApplyPass(size_t depth, size_t pass) {
  size_t kept = 0;
  for (size_t i = 0; i < entries_.size(); ++i) {
    const Entry entry = entries_[i];
    if (entry.kind != Token::Kind::kOperator || entry.code.depth != depth ||
        PassOf(entry.code) != pass) {
      entries_[kept++] = entry;
      continue;
    }
    // An operator stands between two operands or signs.
    Entry& left = entries_[kept - 1];
    const Entry& right = entries_[++i];
    if (right.kind != Token::Kind::kOperand) {
      NoteBrokenArithmetic(entry);
      return false;
    }
    Combine(left, entry, right);
  }
  entries_.resize(kept);
  return true;
}

void OperandBuilder::Combine(Entry& left, const Entry& operation, const Entry& right) {
  const uint32_t node = nodes_.Operation(left.node, operation.code.kind, right.node);
  if (node == NodeTable::kFailed && left.node != node && right.node != node) {
    AddNote(notes_, operation.position,
            "この計算は結果を持ちません（ゼロでの割り算、範囲外の値など）。");
  }
  left.node = Used(node);
}

void OperandBuilder::NoteBrokenArithmetic(const Entry& operation) {
  AddNote(notes_, operation.position,
          "この演算子のすぐ右に後から計算される「-」があります。「-」とその値を「{」と「}"
          "」で囲んでください。");
}

void OperandBuilder::NoteSignBeforeFunction(size_t sign, size_t operand) {
  const bool before_function = operand + 1 < entries_.size() &&
                               entries_[operand + 1].kind == Token::Kind::kOperator &&
                               entries_[operand + 1].code.kind == OperatorKind::kFunction;
  if (before_function && nodes_[entries_[operand].node].kind == Node::Kind::kItem) {
    AddNote(notes_, entries_[sign].position,
            "この「-」は関数の値ではなく「?」の左にかかります。関数全体を「{」と「}"
            "」で囲んでください。");
  }
}

uint32_t OperandBuilder::Used(uint32_t node) {
  if (nodes_.IsComputed(node)) used_.push_back(node);
  return node;
}

}  // namespace orin::analysis
