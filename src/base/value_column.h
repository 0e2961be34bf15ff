#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <vector>

#include "base/currency.h"

namespace orin::base {

/// What a place of a column holds where there is no value. It lies outside the range of Currency.
inline constexpr Currency kNoValue = Currency::FromRaw(std::numeric_limits<int64_t>::min());

// The integers that currencies are, for loops that work on nothing else.
static_assert(sizeof(Currency) == sizeof(int64_t) && std::is_standard_layout_v<Currency>);
inline const int64_t* RawIntegers(const Currency* values) {
  return reinterpret_cast<const int64_t*>(values);
}
inline int64_t* RawIntegers(Currency* values) { return reinterpret_cast<int64_t*>(values); }

/// Values that may be missing, for consecutive bars or days.
class ValueColumn {
 public:
  [[nodiscard]] size_t Size() const { return values_.size(); }
  /// That many places, none with a value.
  void Reset(size_t count) { values_.assign(count, kNoValue); }
  [[nodiscard]] bool Has(size_t place) const { return values_[place] != kNoValue; }
  /// Only where Has.
  [[nodiscard]] Currency At(size_t place) const { return values_[place]; }
  void Set(size_t place, Currency value) { values_[place] = value; }
  /// Leaves the place without a value for nullopt.
  void Set(size_t place, std::optional<Currency> value) {
    values_[place] = value.value_or(kNoValue);
  }

  bool operator==(const ValueColumn&) const = default;

  // For loops over all places; kNoValue where there is none.
  [[nodiscard]] const Currency* Data() const { return values_.data(); }
  [[nodiscard]] Currency* Data() { return values_.data(); }

 private:
  std::vector<Currency> values_;
};

}  // namespace orin::base
