#pragma once

#include <cstdint>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

// The kagi line, over the closes of bars with data. A rising line turns where the close is the
// rate or more below the highest close of the line, a falling one where it is as far above the
// lowest: by (a / b - 1) × 100 in double precision, taken to four decimals. At the start it has no
// direction; it begins with the first move by the rate, at the extreme it came from, which is no
// turn. Among equal closes the newest holds the extreme; one of 0 or less turns nothing.

struct KagiPoint {
  int32_t bar = 0;
  base::Currency price;

  bool operator==(const KagiPoint&) const = default;
};

struct KagiLine {
  /// Where the line begins, its turning points, and the extreme at which it ends for now. Empty
  /// without a move by the rate, else at least two.
  std::vector<KagiPoint> points;
  bool rising = false;  // the last part
  int32_t turns = 0;
};

/// The line over all bars of the view up to Count(). `rate` in whole per cent; empty where it is
/// less than 1.
KagiLine BuildKagi(const base::BarsView& bars, int32_t rate);

}  // namespace orin::indicators
