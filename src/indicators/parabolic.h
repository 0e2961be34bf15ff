#pragma once

#include <cstdint>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

// The parabolic stop and reverse: stop' = stop + AF × (EP - stop) from bar to bar with data, EP the
// extreme of the trend, AF growing by a step at every new one (an equal one is none). It begins at
// the third bar with data, at the highest high of the three, above a falling trend. It never enters
// the range of the two bars before. A bar that reaches it (touching is reaching, to the four
// decimals shown) reverses the trend; the new stop is the extreme of the old one, this bar's
// included. It is carried on in double precision from the first bar with data.

/// 0 < initial <= 1, 0 <= step <= 1, 0 < maximum <= 1. AF is never above the maximum, not even
/// where the initial one is.
struct ParabolicFactors {
  base::Currency initial = base::Currency::FromRaw(200);
  base::Currency step = base::Currency::FromRaw(100);
  base::Currency maximum = base::Currency::FromRaw(2000);

  [[nodiscard]] bool AreValid() const;
};

enum class StopSide : uint8_t {
  kBuy,   // below the bars of a rising trend; read out as SARB
  kSell,  // above the bars of a falling trend; read out as SARS
};

struct ParabolicStop {
  base::Currency stop;  // kNoValue where it leaves the range of Currency
  StopSide side = StopSide::kSell;

  bool operator==(const ParabolicStop&) const = default;
};

/// The stops of consecutive bars: stops[i] that of the bar first_bar + i.
struct ParabolicPath {
  int32_t first_bar = 0;  // the third bar with data
  std::vector<ParabolicStop> stops;
};

/// The stops up to the bar Count(). Empty where fewer than three bars have data or a factor is
/// out of its limits.
ParabolicPath BuildParabolic(const base::BarsView& bars, const ParabolicFactors& factors);

}  // namespace orin::indicators
