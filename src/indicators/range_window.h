#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "base/bars.h"
#include "base/currency.h"
#include "indicators/rolling_sum.h"
#include "indicators/window_extreme.h"

namespace orin::indicators {

// What a range helper searches: the price of a bar, the order, the value the search starts from.
// The lowest price starts from the mirror image of the highest price's start.
struct HighestHigh {
  using Order = Highest;
  static constexpr base::Currency kStart = base::Currency::FromInt(-999'999'999);
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.High(t); }
};
struct HighestClose : HighestHigh {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Close(t); }
};
struct LowestLow {
  using Order = Lowest;
  static constexpr base::Currency kStart = base::Currency::FromInt(999'999'999);
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Low(t); }
};
struct LowestClose : LowestLow {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Close(t); }
};

/// 1 for a bar without data, else 0.
struct MissingBar {
  base::BarsView bars;
  int32_t operator()(int32_t t) const { return bars.HasData(t) ? 0 : 1; }
};

/// The range helpers: the extreme price of the `n` bars up to t, or of those that exist. With k
/// bars without data among them, the k oldest are left out, whichever they are; a bar without data
/// that remains is compared like any other. Ask for rising t.
template <typename Rule>
class RangeWindow {
 public:
  RangeWindow(const base::BarsView& bars, int32_t n)
      : first_(bars.First()), n_(n), missing_(n, bars.First(), {bars}), extreme_(Price{bars}) {}

  /// nullopt where all the bars are without data. The bar is 0 where no price reaches the start
  /// value, which then is the value.
  std::optional<Extreme> At(int32_t t) {
    const int32_t oldest = std::max(first_, t - n_ + 1);
    const int32_t missing = missing_.At(t);
    const Extreme found = extreme_.At(oldest + missing, t);
    if (missing == t - oldest + 1) return std::nullopt;
    if (!Rule::Order::Beats(found.value, Rule::kStart)) return Extreme{0, Rule::kStart};
    return found;
  }

 private:
  struct Price {
    base::BarsView bars;
    std::optional<base::Currency> operator()(int32_t t) const { return Rule::Of(bars, t); }
  };

  int32_t first_;
  int32_t n_;
  RollingSum<int32_t, MissingBar> missing_;
  WindowExtreme<typename Rule::Order, Price> extreme_;
};

}  // namespace orin::indicators
