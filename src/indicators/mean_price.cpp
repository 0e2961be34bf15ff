#include "indicators/average_columns.h"
#include "indicators/rounding.h"
#include "indicators/sums.h"

namespace orin::indicators {

using base::BarsView;
using base::DivideHalfToEven;
using base::Int128;

namespace {

/// Three times (H + L + C) / 3, which is whole.
struct MiddleTerm {
  BarsView bars;

  CountedSum operator()(int32_t t) const {
    if (!bars.HasData(t)) return {};
    return {Int128{bars.High(t).Raw()} + bars.Low(t).Raw() + bars.Close(t).Raw(), 1};
  }
};

/// The mean of the middle prices of the bars up to t, itself to be summed. It is a price with four
/// decimals like every average: the means of spans with different numbers of bars with data
/// have no other denominator in common that would be small enough to sum them exactly.
struct MeanTerm {
  BarsView bars;
  RollingSum<CountedSum, MiddleTerm> sum;

  CountedSum operator()(int32_t t) {
    const CountedSum& middles = sum.At(t);
    if (!bars.HasData(t)) return {};
    return {DivideHalfToEven(middles.raw, Int128{3} * middles.count), 1};
  }
};

}  // namespace

void MeanPrice(const ColumnTask& task) {
  const int32_t a = task.parameters[0];
  const int32_t m = task.parameters[1];
  const BarsView& bars = task.bars;
  const int32_t oldest = bars.First();
  RollingSum<CountedSum, MeanTerm> sum(m, oldest, MeanTerm{bars, {a, oldest, MiddleTerm{bars}}});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const CountedSum& means = sum.At(t);
    if (means.count == 0 || !bars.HasData(t - m - a + 2)) continue;
    task.sink.Put(t, ToCurrency(DivideHalfToEven(means.raw, means.count)));
  }
}

}  // namespace orin::indicators
