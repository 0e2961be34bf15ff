#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "analysis/operator_codes.h"
#include "analysis/value.h"
#include "base/currency.h"

namespace orin::analysis {

/// nullopt where the result is no number or leaves the range of Currency.
using Operation = std::optional<base::Currency> (*)(base::Currency left, base::Currency right);

/// The computation behind an operator. Add, subtract and multiply are exact on the integers but
/// for the one rounding of a product; power and divide go through double; "\" and Mod work on
/// both values rounded to 32-bit integers; a numeric function is chosen by the left value, 1 Abs,
/// 2 Atn, 3 Cos, 4 Exp, 5 Fix, 6 Int, 7 Log (natural), 8 Sgn, 9 Sin, 10 Sqr, 11 Tan (radians).
Operation OperationOf(OperatorKind kind);

inline Value ApplyOperator(base::Currency left, OperatorKind kind, base::Currency right) {
  const std::optional<base::Currency> result = OperationOf(kind)(left, right);
  return result ? Value::Of(*result) : Value::Failed();
}

/// By operator code, of any depth; an unknown code fails.
Value ApplyOperator(base::Currency left, std::string_view code, base::Currency right);

inline bool CompareValues(base::Currency left, Relation relation, base::Currency right) {
  const Relation outcome = left < right    ? Relation::kLess
                           : left == right ? Relation::kEqual
                                           : Relation::kGreater;
  return (static_cast<unsigned>(relation) & static_cast<unsigned>(outcome)) != 0;
}

/// By relational operator; false for any other text.
bool CompareValues(base::Currency left, std::string_view relation, base::Currency right);

}  // namespace orin::analysis
