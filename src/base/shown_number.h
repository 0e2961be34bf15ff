#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "base/currency.h"

namespace orin::base {

// Numbers as tables show them.

/// The decimals that each of the values needs, 2 to 4, so that a column has the same everywhere.
class DecimalsNeeded {
 public:
  void Add(Currency value) {
    const int32_t needed = value.Raw() % 10 != 0 ? 4 : value.Raw() % 100 != 0 ? 3 : 2;
    count_ = std::max(count_, needed);
  }
  [[nodiscard]] int32_t Count() const { return count_; }

 private:
  int32_t count_ = 2;
};

struct NumberFormat {
  int32_t decimals = 0;     // how many of the four are shown, halves rounded away from zero
  bool is_grouped = false;  // digits in groups of three
  bool has_plus = false;    // "+" before what is above 0
};

std::string FormatNumber(Currency value, const NumberFormat& format);
/// A whole number; `format.decimals` does not count.
std::string FormatWhole(int64_t value, const NumberFormat& format);

/// In groups of three.
inline std::string Grouped(Currency value, int32_t decimals, bool has_plus) {
  return FormatNumber(value, {decimals, true, has_plus});
}

}  // namespace orin::base
