#include "base/currency.h"

#include <cmath>
#include <limits>

namespace orin::base {

namespace {

constexpr int64_t kMaximum = std::numeric_limits<int64_t>::max();

std::optional<Currency> Narrow(Int128 raw) {
  if (raw > kMaximum || raw < -kMaximum) return std::nullopt;
  return Currency::FromRaw(static_cast<int64_t>(raw));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

Int128 DivideHalfToEven(Int128 numerator, Int128 denominator) {
  Int128 quotient = numerator / denominator;
  const Int128 remainder = numerator % denominator;
  const Int128 twice = (remainder < 0 ? -remainder : remainder) * 2;
  if (twice > denominator || (twice == denominator && quotient % 2 != 0)) {
    quotient += numerator < 0 ? -1 : 1;
  }
  return quotient;
}

std::optional<Currency> Currency::FromDouble(double value) {
  const double product = value * static_cast<double>(kScale);
  // 2^63 is exact in double; the comparison is false for NaN.
  constexpr double kLimit = 9223372036854775808.0;
  if (!(product >= -kLimit && product < kLimit)) return std::nullopt;
  auto raw = Int128{static_cast<int64_t>(std::nearbyint(product))};
  // From 2^53 on the product itself has lost whole units.
  constexpr double kExact = 9007199254740992.0;
  if (std::abs(product) >= kExact) {
    const double lost = std::fma(value, static_cast<double>(kScale), -product);
    raw += static_cast<int64_t>(std::nearbyint(lost));
  }
  return Narrow(raw);
}

std::optional<Currency> Currency::Parse(std::string_view text) {
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  Int128 scaled = 0;
  int decimals = -1;  // -1 before the point
  bool any_digit = false;
  int first_dropped = -1;
  bool rest_dropped = false;
  for (const char c : text) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (!IsDigit(c)) return std::nullopt;
    any_digit = true;
    if (decimals >= 4) {
      if (first_dropped < 0) {
        first_dropped = c - '0';
      } else {
        rest_dropped = rest_dropped || c != '0';
      }
      continue;
    }
    scaled = scaled * 10 + (c - '0');
    if (decimals >= 0) ++decimals;
    if (scaled > Int128{kMaximum} + 1) return std::nullopt;
  }
  if (!any_digit) return std::nullopt;
  for (int i = decimals < 0 ? 0 : decimals; i < 4; ++i) scaled *= 10;
  const bool half_or_more = first_dropped >= 5;
  const bool exact_half = first_dropped == 5 && !rest_dropped;
  if (half_or_more && !(exact_half && scaled % 2 == 0)) ++scaled;
  return Narrow(negative ? -scaled : scaled);
}

std::string Currency::ToText() const {
  const uint64_t magnitude =
      raw_ < 0 ? uint64_t{0} - static_cast<uint64_t>(raw_) : static_cast<uint64_t>(raw_);
  const std::string fraction = std::to_string(magnitude % 10000);
  std::string text = raw_ < 0 ? "-" : "";
  text += std::to_string(magnitude / 10000);
  text += '.';
  text.append(4 - fraction.size(), '0');
  return text + fraction;
}

std::optional<Currency> Currency::Plus(Currency other) const {
  int64_t sum = 0;
  if (__builtin_add_overflow(raw_, other.raw_, &sum)) return std::nullopt;
  return Narrow(sum);
}

std::optional<Currency> Currency::Minus(Currency other) const {
  int64_t difference = 0;
  if (__builtin_sub_overflow(raw_, other.raw_, &difference)) return std::nullopt;
  return Narrow(difference);
}

std::optional<Currency> Currency::Times(Currency other) const {
  return Narrow(DivideHalfToEven(Int128{raw_} * other.raw_, kScale));
}

std::optional<Currency> Currency::Negated() const { return Currency().Minus(*this); }

std::optional<Currency> Currency::Abs() const { return raw_ < 0 ? Negated() : *this; }

Currency Currency::Fix() const { return Currency(raw_ - raw_ % kScale); }

std::optional<Currency> Currency::Int() const {
  const Currency fixed = Fix();
  return fixed.raw_ > raw_ ? fixed.Minus(FromInt(1)) : fixed;
}

Currency Currency::Sgn() const { return FromInt((raw_ > 0 ? 1 : 0) - (raw_ < 0 ? 1 : 0)); }

std::optional<int32_t> Currency::ToInt32() const {
  const Int128 rounded = DivideHalfToEven(raw_, kScale);
  if (rounded > std::numeric_limits<int32_t>::max() ||
      rounded < std::numeric_limits<int32_t>::min()) {
    return std::nullopt;
  }
  return static_cast<int32_t>(rounded);
}

}  // namespace orin::base
