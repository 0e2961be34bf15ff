#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orin::base {

/// A fixed-point number with four decimals: a signed 64-bit integer holding the value × 10000.
/// Range ±922337203685477.5807: the one integer beyond, -2^63, stands for no value in columns.
/// Whatever would leave the range gives nullopt; every rounding is half to even.
class Currency {
 public:
  static constexpr int64_t kScale = 10000;

  constexpr Currency() = default;
  static constexpr Currency FromRaw(int64_t raw) { return Currency(raw); }
  /// A whole number small enough never to overflow.
  static constexpr Currency FromInt(int32_t value) { return Currency(value * kScale); }
  /// value × 10000, which below 2^53 is taken in double, to the nearest integer; nullopt for NaN,
  /// infinities and values out of range.
  static std::optional<Currency> FromDouble(double value);
  /// A decimal literal: optional "-", digits, optional "." and digits; rounded exactly, not
  /// through double. nullopt for any other text and for values out of range.
  static std::optional<Currency> Parse(std::string_view text);

  [[nodiscard]] constexpr int64_t Raw() const { return raw_; }
  [[nodiscard]] constexpr double ToDouble() const {
    return static_cast<double>(raw_) / static_cast<double>(kScale);
  }
  /// Exactly four decimals, as "-0.5000".
  [[nodiscard]] std::string ToText() const;

  [[nodiscard]] std::optional<Currency> Plus(Currency other) const;
  [[nodiscard]] std::optional<Currency> Minus(Currency other) const;
  [[nodiscard]] std::optional<Currency> Times(Currency other) const;
  [[nodiscard]] std::optional<Currency> Negated() const;
  [[nodiscard]] std::optional<Currency> Abs() const;
  /// The whole part, towards zero.
  [[nodiscard]] Currency Fix() const;
  /// The greatest whole number not above the value; nullopt only at the lower end of the range.
  [[nodiscard]] std::optional<Currency> Int() const;
  /// -1, 0 or 1.
  [[nodiscard]] Currency Sgn() const;
  /// The nearest 32-bit integer.
  [[nodiscard]] std::optional<int32_t> ToInt32() const;

  constexpr auto operator<=>(const Currency&) const = default;

 private:
  constexpr explicit Currency(int64_t raw) : raw_(raw) {}

  int64_t raw_ = 0;
};

/// numerator / denominator to the nearest integer, halves to even. denominator > 0.
__extension__ using Int128 = __int128;
Int128 DivideHalfToEven(Int128 numerator, Int128 denominator);

}  // namespace orin::base
