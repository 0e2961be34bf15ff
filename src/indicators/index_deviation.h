#pragma once

#include <cstdint>
#include <optional>

#include "base/bars.h"
#include "base/currency.h"
#include "base/value_column.h"

namespace orin::indicators {

/// How far a stock has gone from where it would be had it moved like the index since a base bar:
///   ((C / C0) / (D / D0) - 1) × 100 per cent, in double precision, to four decimals,
/// C and D the closes of stock and index, C0 and D0 those of the base bar.
struct IndexDeviation {
  /// The first bar from `base` on at which both have a close above 0; 0: none.
  int32_t base_bar = 0;
  /// Place i is the bar base + i. No value before base_bar, and where one of the two has no data
  /// or no close above 0.
  base::ValueColumn values;
};

/// At the bars base..last; bar t is the same day, week or month in both. Bars that do not exist
/// have no value.
IndexDeviation DeviationFromIndex(const base::BarsView& stock, const base::BarsView& index,
                                  int32_t base, int32_t last);

}  // namespace orin::indicators
