#include "analysis/operand_builder.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

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

}  // namespace

bool OperandBuilder::HasRoomForNotes() const { return notes_.size() < kMaximumNotes; }

void OperandBuilder::AddNoteAt(size_t position, std::string message) {
  const auto after =
      std::upper_bound(explained_.begin(), explained_.end(), position,
                       [](size_t place, const Stretch& stretch) { return place < stretch.first; });
  const bool is_explained = after != explained_.begin() && position <= std::prev(after)->last;
  if (!is_explained) AddNote(notes_, position, std::move(message));
}

const OperandBuilder::Leaf& OperandBuilder::BindLeaf(std::string_view text) {
  const auto [place, is_new] = leaves_.try_emplace(text, Leaf{NodeTable::kFailed, "", 0});
  if (is_new) FindLeaf(text, place->second);
  return place->second;
}

void OperandBuilder::FindLeaf(std::string_view text, Leaf& leaf) {
  if (text.empty()) {
    leaf.fault = "ここに数値か分析項目がありません。";
  } else if (const auto number = base::Currency::Parse(text)) {
    leaf.node = nodes_.Literal(*number);
  } else if (LooksNumeric(text)) {
    leaf.fault = Quoted(text) + "は数値として扱えません。";
  } else {
    BindItem(text, leaf);
  }
}

void OperandBuilder::BindItem(std::string_view text, Leaf& leaf) {
  // A text of a megabyte holds more faults than anyone reads, and each sentence takes a search.
  const auto call = ItemCall::Bind(text, HasRoomForNotes());
  if (!call) {
    leaf.fault = call.error().message;
    leaf.before = call.error().before;
  } else if (auto never = call->WhyNever()) {
    leaf.fault = std::move(*never);
  } else if (const auto number = call->FunctionNumber()) {
    // As literals, so that a function of a literal is computed, or found impossible, right here.
    leaf.node = nodes_.Literal(base::Currency::FromInt(*number));
  } else {
    leaf.node = nodes_.Item(*call);
  }
}

void OperandBuilder::ReadTokens(const Piece& piece, size_t place_if_empty) {
  entries_.clear();
  for (const Token& token : TokenizeOperand(piece.text)) {
    const auto place_of = [&](size_t position) -> size_t {
      const bool has_place = position > 0 && position <= piece.positions.size();
      return has_place ? piece.positions[position - 1] : place_if_empty;
    };
    uint32_t node = NodeTable::kFailed;
    if (token.kind == Token::Kind::kOperand) {
      const Leaf& leaf = BindLeaf(token.text);
      if (!leaf.fault.empty()) AddNoteAt(place_of(token.position + leaf.before), leaf.fault);
      node = Used(leaf.node);
    }
    entries_.push_back({token.kind, token.code, node, place_of(token.position)});
  }
}

OperandBuilder::Operand OperandBuilder::Build(const Piece& piece, size_t place_if_empty) {
  used_.clear();
  ReadTokens(piece, place_if_empty);
  if (!ApplyPasses() || entries_[0].node == NodeTable::kFailed) return {};
  std::sort(used_.begin(), used_.end());
  used_.erase(std::unique(used_.begin(), used_.end()), used_.end());
  return {entries_[0].node, used_};
}

bool OperandBuilder::ApplyPasses() {
  // Most of the 24 passes have nothing to do, and a condition is built while its writer types.
  std::array<std::array<bool, kPasses>, kDeepestCode + 1> present = {};
  for (const Entry& entry : entries_) {
    if (entry.kind == Token::Kind::kOperator) present[entry.code.depth][PassOf(entry.code)] = true;
  }
  for (size_t level = 0; level <= kDeepestCode; ++level) {
    const size_t depth = kDeepestCode - level;
    // A sign binds tighter than any operator of its depth: it was typed as part of the operand,
    // and "2 ^ -1" has no left side for a subtraction. One of a lesser depth stands outside the
    // braces and has to wait for their value.
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
  // A side that fails has a note of its own.
  if (node == NodeTable::kFailed && left.node != node && right.node != node) {
    AddNoteAt(operation.position, "この計算は結果を持ちません（ゼロでの割り算、範囲外の値など）。");
  }
  left.node = Used(node);
}

void OperandBuilder::NoteBrokenArithmetic(const Entry& operation) {
  AddNoteAt(operation.position,
            "この演算子のすぐ右に後から計算される「-」があります。「-」とその値を「{」と「}"
            "」で囲んでください。");
}

void OperandBuilder::NoteSignBeforeFunction(size_t sign, size_t operand) {
  const bool before_function = operand + 1 < entries_.size() &&
                               entries_[operand + 1].kind == Token::Kind::kOperator &&
                               entries_[operand + 1].code.kind == OperatorKind::kFunction;
  if (before_function && entries_[operand].node != NodeTable::kFailed) {
    AddNoteAt(entries_[sign].position,
              "この「-」は関数の値ではなく「?」の左にかかります。関数全体を「{」と「}"
              "」で囲んでください。");
  }
}

uint32_t OperandBuilder::Used(uint32_t node) {
  if (nodes_.IsComputed(node)) used_.push_back(node);
  return node;
}

}  // namespace orin::analysis
