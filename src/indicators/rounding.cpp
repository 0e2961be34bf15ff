#include "indicators/rounding.h"

#include <limits>

namespace orin::indicators {

using base::Currency;
using base::Int128;

namespace {

constexpr int32_t kDigitsOfCurrency = 5;  // keeps all four decimals
constexpr int32_t kDigitsOfPercentages = 2;

}  // namespace

std::optional<Currency> ToCurrency(Int128 raw) {
  if (raw > std::numeric_limits<int64_t>::max() || raw < -std::numeric_limits<int64_t>::max()) {
    return std::nullopt;
  }
  return Currency::FromRaw(static_cast<int64_t>(raw));
}

std::optional<Currency> RoundToDigits(Currency value, int32_t digits) {
  Int128 unit = 1;  // the last place kept, in raw units
  for (int32_t d = digits < 1 ? 1 : digits; d < kDigitsOfCurrency; ++d) unit *= 10;
  const Int128 raw = value.Raw();
  const Int128 magnitude = ((raw < 0 ? -raw : raw) + unit / 2) / unit * unit;
  return ToCurrency(raw < 0 ? -magnitude : magnitude);
}

std::optional<double> Ratio(Int128 numerator, Int128 denominator) {
  const std::optional<Currency> upper = ToCurrency(numerator);
  const std::optional<Currency> lower = ToCurrency(denominator);
  if (!upper || !lower || lower->Raw() == 0) return std::nullopt;
  return upper->ToDouble() / lower->ToDouble();
}

std::optional<Currency> Percentage(Int128 numerator, Int128 denominator) {
  const std::optional<double> ratio = Ratio(numerator, denominator);
  return ratio ? Currency::FromDouble(*ratio * 100) : std::nullopt;
}

std::optional<Currency> RoundedPercentage(Int128 numerator, Int128 denominator) {
  const std::optional<Currency> exact = Percentage(numerator, denominator);
  return exact ? RoundToDigits(*exact, kDigitsOfPercentages) : std::nullopt;
}

}  // namespace orin::indicators
