#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"
#include "base/value_column.h"

namespace orin::support {

/// A close that is not there.
inline constexpr double kHole = -1;

inline base::Currency Value(double value) {
  return base::Currency::FromDouble(value).value_or(base::kNoValue);
}

/// Bars of the closes, high and low included; the volumes are 100 where none are given.
inline base::BarColumns BarsOf(const std::vector<double>& closes,
                               const std::vector<int32_t>& volumes = {}) {
  base::BarColumns columns;
  for (size_t i = 0; i < closes.size(); ++i) {
    base::Bar bar;
    if (closes[i] != kHole) {
      bar.open = bar.high = bar.low = bar.close = Value(closes[i]);
      bar.volume = base::Currency::FromInt(volumes.empty() ? 100 : volumes[i]);
    }
    columns.Append(bar);
  }
  return columns;
}

}  // namespace orin::support
