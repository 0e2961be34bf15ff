#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orin::analysis {

/// What a stretch of a condition text is to its reader.
enum class WordKind : uint8_t {
  kItem,         // an item name that the catalogue has, numeric functions included
  kUnknownItem,  // a name before "(" that no item has, and other words that mean nothing
  kDayKeyword,   // analysisdate1 and the like; also 買い値 and its kin without "(0)"
  kNumber,       // a literal, with its sign where that can be nothing else
  kArithmetic,   // ? ^ * / \ Mod + -
  kRelation,
  kLogic,        // And, Or
  kBrace,        // "{" or "}"
  kParenthesis,  // "(" ")" ","
  kComment,      // with its quotes
};

/// Characters first .. first + count - 1 of a line, counted from 0.
struct MarkedWord {
  size_t first = 0;
  size_t count = 0;
  WordKind kind = WordKind::kItem;
  /// Of a brace, 1 for the outermost pair; of an arithmetic operator the depth whose code it
  /// gets, 0 where it gets none. 0 for all others.
  int32_t depth = 0;

  bool operator==(const MarkedWord&) const = default;
};

/// What a line of a condition leaves to the next one.
struct LineEnd {
  int32_t depth = 0;  // of braces; never below 0
  bool in_comment = false;

  bool operator==(const LineEnd&) const = default;
};

/// The words of one line (UTF-8) of a condition that may have several, in their order and apart
/// from each other; blanks and whatever is none of them are left out. `state` is what the line
/// before left and becomes what this one leaves. Takes time in proportion to the line.
std::vector<MarkedWord> MarkWords(std::string_view line, LineEnd& state);

}  // namespace orin::analysis
