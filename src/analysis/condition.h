#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace orin::analysis {

/// Something about a condition text that its writer should know. `position` counts the
/// characters of the text from 1; what is missing has the place of the text nearest to it.
struct Note {
  size_t position = 1;
  std::string message;  // one Japanese sentence

  bool operator==(const Note&) const = default;
};

/// The characters first..last of a condition text, from 1.
struct Stretch {
  size_t first = 0;
  size_t last = 0;
};

/// One place of the compiled condition table: text after the collapsing of blanks, operators in
/// braces as the letter codes of their depth.
struct Piece {
  std::string text;
  /// For each character of `text` its place in the condition text, from 1.
  std::vector<uint32_t> positions;
};

/// Operand, relational operator, operand, ...; at most 10 pieces.
using AndTerm = std::vector<Piece>;
using OrTerm = std::vector<AndTerm>;

/// The compiled condition table: Or-terms of And-terms of pieces.
struct CompiledCondition {
  static constexpr size_t kMaximumOrTerms = 100;
  static constexpr size_t kMaximumAndTerms = 100;
  static constexpr size_t kMaximumRelationPieces = 10;

  std::vector<OrTerm> or_terms;
  /// Unbalanced braces, keywords in a mix of cases that is none, and the like.
  std::vector<Note> notes;
  /// Where one of the notes says all there is to say; ascending, apart from each other.
  std::vector<Stretch> explained = {};

  /// One bare operand and nothing else: a value, not a truth.
  [[nodiscard]] bool IsValue() const {
    return or_terms.size() == 1 && or_terms[0].size() == 1 && or_terms[0][0].size() == 1;
  }
};

/// Fills the table from a condition text (UTF-8). Fails where a limit is exceeded.
tl::expected<CompiledCondition, Note> CompileCondition(std::string_view text);

}  // namespace orin::analysis
