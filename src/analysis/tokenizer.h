#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/operator_codes.h"

namespace orin::analysis {

/// An operand or an operator of an operand text, into which its views point.
struct Token {
  enum class Kind : uint8_t { kOperand, kOperator, kSign };

  Kind kind;
  /// An operand without blanks at its ends, empty where an operator lacks one; or an operator's
  /// code as it stands.
  std::string_view text;
  /// Of the first character in the operand text, from 1. An absent operand has the place of the
  /// operator that ended the search for it, or of the last character; 0 in an empty text.
  size_t position;
  /// Of an operator; a sign is a subtraction.
  OperatorCode code;
};

/// The tokens of an operand text in its order: signs and an operand, then any number of times an
/// operator, signs and an operand. A subtraction where an operand would begin is a sign; any
/// other operator there, and the end of the text, find the operand absent. What stands in
/// parentheses, and a "-" directly after a date or time keyword, belongs to the operand.
std::vector<Token> TokenizeOperand(std::string_view text);

}  // namespace orin::analysis
