#pragma once

#include <cmath>
#include <optional>

#include "base/currency.h"

namespace orin::indicators {

/// A double that counts raw currency units, to the nearest one, halves to even; nullopt for NaN
/// and outside the range of Currency. Closes are whole numbers in such units and exact in double up
/// to 2^53, which a price in yen or dollars with decimals is not.
inline std::optional<base::Currency> RoundRaw(double raw) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (!(raw > -kLimit && raw < kLimit)) return std::nullopt;
  return base::Currency::FromRaw(static_cast<int64_t>(std::nearbyint(raw)));
}

}  // namespace orin::indicators
