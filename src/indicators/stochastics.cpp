#include <optional>

#include "indicators/columns.h"
#include "indicators/kernel_call.h"
#include "indicators/range_window.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Int128;

namespace {

/// Summed apart, because %D divides the sums and is no mean of quotients.
/// Numerator and denominator of %K, summed; `missing` counts the bars that have none.
struct Place {
  Int128 above_low = 0;
  Int128 range = 0;
  int32_t missing = 0;

  Place& operator+=(const Place& other) {
    above_low += other.above_low;
    range += other.range;
    missing += other.missing;
    return *this;
  }
  Place& operator-=(const Place& other) {
    above_low -= other.above_low;
    range -= other.range;
    missing -= other.missing;
    return *this;
  }
};

/// The place of the close within the range of the `k` bars up to t.
class PlaceTerm {
 public:
  PlaceTerm(const BarsView& bars, int32_t k) : bars_(bars), high_(bars, k), low_(bars, k) {}

  Place operator()(int32_t t) {
    const std::optional<Extreme> high = high_.At(t);
    const std::optional<Extreme> low = low_.At(t);
    if (!high || !low) return Place{0, 0, 1};
    const Int128 lowest = low->value.Raw();
    return Place{bars_.Close(t).Raw() - lowest, high->value.Raw() - lowest, 0};
  }

 private:
  BarsView bars_;
  RangeWindow<HighestHigh> high_;
  RangeWindow<LowestLow> low_;
};

void PutPlace(const ColumnTask& task, int32_t t, const Place& place) {
  if (place.missing == 0) task.sink.Put(t, RoundedPercentage(place.above_low, place.range));
}

void PutStochasticK(const ColumnTask& task) {
  const int32_t k = task.parameters[0];
  PlaceTerm place(task.bars, k);
  for (int32_t t = task.first; t <= task.last; ++t) {
    const Place at = place(t);
    if (task.bars.HasData(t - k + 1)) PutPlace(task, t, at);
  }
}

}  // namespace

void StochasticK(const ColumnTask& task) {
  const auto fast = [](const ColumnTask& chunk, int64_t* out) {
    return chunk.kernels->stochastic(PriceBarsAt(chunk.bars, chunk.first), chunk.parameters[0],
                                     BarCount(chunk), out);
  };
  ComputeChunksFastOr(task, fast, PutStochasticK);
}

void StochasticD(const ColumnTask& task) {
  const int32_t k = task.parameters[0];
  const int32_t d = task.parameters[1];
  RollingSum<Place, PlaceTerm> sum(d, task.bars.First(), PlaceTerm(task.bars, k));
  for (int32_t t = task.first; t <= task.last; ++t) {
    const Place& total = sum.At(t);
    // The tested bar lies one before all that is summed.
    if (task.bars.HasData(t - k - d + 1)) PutPlace(task, t, total);
  }
}

}  // namespace orin::indicators
