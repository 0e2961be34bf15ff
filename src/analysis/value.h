#pragma once

#include "base/currency.h"

namespace orin::analysis {

/// What a failed evaluation leaves as its value, always with the flag false.
inline constexpr base::Currency kFailedValue = base::Currency::FromInt(-999);

/// A value of the expression language with its success flag.
struct Value {
  base::Currency value = kFailedValue;
  bool ok = false;

  static Value Of(base::Currency value) { return {value, true}; }
  static Value Failed() { return {}; }
  bool operator==(const Value&) const = default;
};

}  // namespace orin::analysis
