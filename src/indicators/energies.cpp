#include <algorithm>

#include "indicators/average_columns.h"
#include "indicators/rolling_sum.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

/// How far a bar reaches from a price of its own.
template <typename Energy>
struct BarTerm {
  static constexpr int32_t kBarsBefore = 0;
  BarsView bars;

  Int128 operator()(int32_t t) const { return bars.HasData(t) ? Energy::Of(bars, t) : 0; }
};

/// How far a bar reaches from a price of the bar before.
template <typename Energy>
struct NextBarTerm {
  static constexpr int32_t kBarsBefore = 1;
  BarsView bars;

  Int128 operator()(int32_t t) const {
    return bars.HasData(t) && bars.HasData(t - 1) ? Energy::Of(bars, t) : 0;
  }
};

Int128 Less(Currency price, Currency other) { return Int128{price.Raw()} - other.Raw(); }

/// What one raw unit is counted in.
struct InUnits {
  static constexpr int32_t kParts = 1;
};
/// So that the middle price of a bar is whole and its sums are exact.
struct InThirds {
  static constexpr int32_t kParts = 3;
};

struct HighOverOpen : InUnits {
  static Int128 Of(const BarsView& bars, int32_t t) { return Less(bars.High(t), bars.Open(t)); }
};
struct OpenOverLow : InUnits {
  static Int128 Of(const BarsView& bars, int32_t t) { return Less(bars.Open(t), bars.Low(t)); }
};
struct HighOverClose : InUnits {
  static Int128 Of(const BarsView& bars, int32_t t) {
    return Less(bars.High(t), bars.Close(t - 1));
  }
};
struct CloseOverLow : InUnits {
  static Int128 Of(const BarsView& bars, int32_t t) { return Less(bars.Close(t - 1), bars.Low(t)); }
};

/// (H + L + C) / 3 in thirds.
Int128 Middle(const BarsView& bars, int32_t t) {
  return Int128{bars.High(t).Raw()} + bars.Low(t).Raw() + bars.Close(t).Raw();
}
struct HighOverMiddle : InThirds {
  static Int128 Of(const BarsView& bars, int32_t t) {
    return std::max<Int128>(Int128{3} * bars.High(t).Raw() - Middle(bars, t - 1), 0);
  }
};
struct MiddleOverLow : InThirds {
  static Int128 Of(const BarsView& bars, int32_t t) {
    return std::max<Int128>(Middle(bars, t - 1) - Int128{3} * bars.Low(t).Raw(), 0);
  }
};

template <template <typename> typename Term, typename Energy>
void PutEnergies(const ColumnTask& task) {
  const int32_t n = task.parameters[0];
  RollingSum<Int128, Term<Energy>> sum(n, task.bars.First(), {task.bars});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const Int128 total = sum.At(t);
    if (!task.bars.HasData(t - n + 1 - Term<Energy>::kBarsBefore)) continue;
    task.sink.Put(t, ToCurrency(base::DivideHalfToEven(total, Energy::kParts)));
  }
}

}  // namespace

void StrongEnergy(const ColumnTask& task) { PutEnergies<BarTerm, HighOverOpen>(task); }
void WeakEnergy(const ColumnTask& task) { PutEnergies<BarTerm, OpenOverLow>(task); }
void StrongPopularity(const ColumnTask& task) { PutEnergies<NextBarTerm, HighOverClose>(task); }
void WeakPopularity(const ColumnTask& task) { PutEnergies<NextBarTerm, CloseOverLow>(task); }
void PlusEnergy(const ColumnTask& task) { PutEnergies<NextBarTerm, HighOverMiddle>(task); }
void MinusEnergy(const ColumnTask& task) { PutEnergies<NextBarTerm, MiddleOverLow>(task); }

}  // namespace orin::indicators
