#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/condition.h"
#include "analysis/node_table.h"
#include "analysis/tokenizer.h"

namespace orin::analysis {

/// Turns operand texts into nodes: replays the evaluation of the token list, pass by pass, on
/// nodes instead of values. Each pass is linear in the list.
class OperandBuilder {
 public:
  /// `nodes` and `notes` receive what is found, but no notes about the stretches `explained`. All
  /// must outlive the object.
  OperandBuilder(NodeTable& nodes, std::vector<Note>& notes, const std::vector<Stretch>& explained)
      : nodes_(nodes), notes_(notes), explained_(explained) {}

  struct Operand {
    uint32_t root = NodeTable::kFailed;
    std::vector<uint32_t> computed;  // the nodes to compute, ascending; the root is the last
  };

  /// Never fails: an operand that can have no value is the failing node, with a note.
  /// The piece's text must outlive the object. An empty piece is noted at `place_if_empty`.
  Operand Build(const Piece& piece, size_t place_if_empty);

 private:
  struct Entry {
    Token::Kind kind;
    OperatorCode code;  // of an operator or a sign
    uint32_t node;      // of an operand
    size_t position;    // in the condition text
  };
  struct Leaf {
    uint32_t node;
    std::string fault;  // empty where the node has a value, and where there is no room for notes
    size_t before;      // characters of the operand before the place of the fault
  };

  // The list under way always is: signs and an operand, then any number of times an operator, signs
  // and an operand. Every step keeps it so; false where the operand can have no value.

  const Leaf& BindLeaf(std::string_view text);
  void FindLeaf(std::string_view text, Leaf& leaf);
  void BindItem(std::string_view text, Leaf& leaf);
  void ReadTokens(const Piece& piece, size_t place_if_empty);
  bool ApplySigns(size_t depth);
  bool ApplyPass(size_t depth, size_t pass);
  bool ApplyPasses();
  void Combine(Entry& left, const Entry& operation, const Entry& right);
  [[nodiscard]] bool HasRoomForNotes() const;
  void AddNoteAt(size_t position, std::string message);
  void NoteBrokenArithmetic(const Entry& operation);
  void NoteSignBeforeFunction(size_t sign, size_t operand);
  uint32_t Used(uint32_t node);

  NodeTable& nodes_;
  std::vector<Note>& notes_;
  const std::vector<Stretch>& explained_;
  std::unordered_map<std::string_view, Leaf> leaves_;  // by operand text
  std::vector<Entry> entries_;
  std::vector<uint32_t> used_;
};

}  // namespace orin::analysis
