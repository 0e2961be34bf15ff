#pragma once

#include <compare>
#include <cstdint>

namespace orin::base {

/// A 1-based number that cannot be mixed up with another kind of number. 0 means "none".
template <typename Tag>
class Ordinal {
 public:
  constexpr Ordinal() = default;
  constexpr explicit Ordinal(int32_t value) : value_(value) {}

  [[nodiscard]] constexpr int32_t Value() const { return value_; }
  [[nodiscard]] constexpr bool IsNone() const { return value_ == 0; }
  constexpr auto operator<=>(const Ordinal&) const = default;

 private:
  int32_t value_ = 0;
};

/// A stock's record in the stock master; record 1 is the header, so stocks begin at 2.
using MasterRecord = Ordinal<struct MasterRecordTag>;
/// A stock's record in every price file (its 銘柄レコード); record 1 holds the dates.
using SlotRecord = Ordinal<struct SlotRecordTag>;
/// A day of the trading calendar; 1 is the first slot of the first file in use.
using DayIndex = Ordinal<struct DayIndexTag>;

/// The days first..last; none where last is before first.
struct DayRange {
  DayIndex first;
  DayIndex last;

  bool operator==(const DayRange&) const = default;
};

}  // namespace orin::base
