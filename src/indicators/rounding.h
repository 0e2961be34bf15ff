#pragma once

#include <cstdint>
#include <optional>

#include "base/currency.h"

namespace orin::indicators {

/// The shared rounding rule: sign(v) × Fix((|v| × 10^d + 5) / 10) / 10^(d-1) with d = `digits`.
/// It keeps d-1 decimals and rounds halves away from zero (d = 2: 63.25 gives 63.3). The
/// off-by-one between d and the decimals kept is intended. digits >= 1; from 5 on the value
/// comes back as it is. nullopt where the result leaves the range of Currency.
std::optional<base::Currency> RoundToDigits(base::Currency value, int32_t digits);

/// An exact sum of raw currency integers as a currency value; nullopt where it does not fit.
std::optional<base::Currency> ToCurrency(base::Int128 raw);

/// numerator / denominator in double precision; nullopt where the denominator is 0 or either
/// sum (raw currency integers) does not fit in Currency.
std::optional<double> Ratio(base::Int128 numerator, base::Int128 denominator);

/// The ratio × 100 to four decimals.
std::optional<base::Currency> Percentage(base::Int128 numerator, base::Int128 denominator);

/// The percentage to four decimals and then, exactly, to one decimal by the shared rule.
std::optional<base::Currency> RoundedPercentage(base::Int128 numerator, base::Int128 denominator);

}  // namespace orin::indicators
