#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

/// The volume traded at closes from `low` on and below `high`; the top band also has its `high`.
struct PriceBand {
  base::Currency low;
  base::Currency high;
  base::Currency volume;
  base::Currency share;  // per cent of the volume of all bands, to four decimals

  bool operator==(const PriceBand&) const = default;
};

inline constexpr int32_t kMostPriceBands = 1000;

/// The bars first..last by `count` bands of equal height, lowest first, between the lowest and the
/// highest close among them; the whole volume of a bar goes to the band of its close. Edges are
/// rounded to four decimals, and the rounded ones count. Bars without data, without volume
/// and bars that do not exist are left out. One band where all closes are equal. Empty where
/// nothing was traded, the volume leaves the range of Currency, or count is not 1 to
/// kMostPriceBands.
std::vector<PriceBand> VolumeByPrice(const base::BarsView& bars, int32_t first, int32_t last,
                                     int32_t count);

}  // namespace orin::indicators
