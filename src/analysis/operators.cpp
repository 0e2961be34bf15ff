#include "analysis/operators.h"

#include <array>
#include <cmath>

namespace orin::analysis {

namespace {

using base::Currency;
using Result = std::optional<Currency>;
using Function = Result (*)(Currency);

template <double (*function)(double)>
Result ThroughDouble(Currency value) {
  return Currency::FromDouble(function(value.ToDouble()));
}

// Abs to Tan. Values outside the domain of Log and Sqr give infinities and NaN, which
// FromDouble refuses.
constexpr std::array<Function, 11> kFunctions = {
    [](Currency value) { return value.Abs(); },
    ThroughDouble<std::atan>,
    ThroughDouble<std::cos>,
    ThroughDouble<std::exp>,
    [](Currency value) { return Result(value.Fix()); },
    [](Currency value) { return value.Int(); },
    ThroughDouble<std::log>,
    [](Currency value) { return Result(value.Sgn()); },
    ThroughDouble<std::sin>,
    ThroughDouble<std::sqrt>,
    ThroughDouble<std::tan>,
};

Result ApplyFunction(Currency number, Currency argument) {
  const int64_t index = number.Raw() / Currency::kScale - 1;
  if (number.Raw() % Currency::kScale != 0 || index < 0 ||
      index >= static_cast<int64_t>(kFunctions.size())) {
    return std::nullopt;
  }
  return kFunctions[static_cast<size_t>(index)](argument);
}

Result Power(Currency left, Currency right) {
  return Currency::FromDouble(std::pow(left.ToDouble(), right.ToDouble()));
}

// A zero is refused before dividing, so that x / 0 and 0 / 0 fail alike whatever doubles make of
// them.
Result Divide(Currency left, Currency right) {
  if (right == Currency()) return std::nullopt;
  return Currency::FromDouble(left.ToDouble() / right.ToDouble());
}

struct Integers {
  int64_t left;  // wide, so that the quotient of the least integer by -1 can be seen
  int64_t right;
};

std::optional<Integers> RoundedForDivision(Currency left, Currency right) {
  const auto dividend = left.ToInt32();
  const auto divisor = right.ToInt32();
  if (!dividend || !divisor || *divisor == 0) return std::nullopt;
  return Integers{*dividend, *divisor};
}

Result FromInteger(int64_t value) {
  if (value != static_cast<int32_t>(value)) return std::nullopt;
  return Currency::FromInt(static_cast<int32_t>(value));
}

Result IntegerDivide(Currency left, Currency right) {
  const auto integers = RoundedForDivision(left, right);
  return integers ? FromInteger(integers->left / integers->right) : std::nullopt;
}

Result Mod(Currency left, Currency right) {
  const auto integers = RoundedForDivision(left, right);
  return integers ? FromInteger(integers->left % integers->right) : std::nullopt;
}

// In the order of OperatorKind.
constexpr std::array<Operation, 8> kOperations = {
    ApplyFunction,
    Power,
    [](Currency left, Currency right) { return left.Times(right); },
    Divide,
    IntegerDivide,
    Mod,
    [](Currency left, Currency right) { return left.Plus(right); },
    [](Currency left, Currency right) { return left.Minus(right); },
};

}  // namespace

Operation OperationOf(OperatorKind kind) { return kOperations[static_cast<size_t>(kind)]; }

Value ApplyOperator(Currency left, std::string_view code, Currency right) {
  const auto found = OperatorAt(code);
  if (!found || found->length != code.size()) return Value::Failed();
  return ApplyOperator(left, found->kind, right);
}

bool CompareValues(Currency left, std::string_view relation, Currency right) {
  const auto found = RelationAt(relation);
  return found && found->length == relation.size() && CompareValues(left, found->relation, right);
}

}  // namespace orin::analysis
