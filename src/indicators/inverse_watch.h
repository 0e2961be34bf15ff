#pragma once

#include <cstdint>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

/// A bar on the plane of volume (across) and price (up).
struct InverseWatchPoint {
  int32_t bar = 0;
  base::Currency volume;  // moving averages to four decimals
  base::Currency price;

  bool operator==(const InverseWatchPoint&) const = default;
};

/// The moving averages of volume and close over n bars at the bars first..last, those left out that
/// lack one: too few bars before them, or no data at the first of the n. Empty where n is less
/// than 1.
std::vector<InverseWatchPoint> InverseWatchPoints(const base::BarsView& bars, int32_t n,
                                                  int32_t first, int32_t last);

}  // namespace orin::indicators
