#include "indicators/sums.h"

#include <optional>

#include "indicators/columns.h"
#include "indicators/kernel_call.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::Currency;

namespace {

/// Puts result(t, sum over n bars) where the first bar of the span has data.
template <typename Field, typename Result>
void PutSums(const ColumnTask& task, Result result) {
  const int32_t n = task.parameters[0];
  FieldSum<Field> sum(n, task.bars.First(), {task.bars});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const CountedSum& total = sum.At(t);
    if (task.bars.HasData(t - n + 1)) task.sink.Put(t, result(t, total));
  }
}

template <typename Field>
void PutTotals(const ColumnTask& task) {
  PutSums<Field>(task, [](int32_t, const CountedSum& total) { return ToCurrency(total.raw); });
}

// The integers are divided, not doubles: a sum over many bars of large volumes has more digits than
// a double, and the tie that decides the fourth decimal must be seen.
std::optional<Currency> Mean(const CountedSum& total) {
  return ToCurrency(base::DivideHalfToEven(total.raw, total.count));
}

template <typename Field>
void PutMeans(const ColumnTask& task) {
  PutSums<Field>(task, [](int32_t, const CountedSum& total) { return Mean(total); });
}

void PutMeansFast(const ColumnTask& task, const Currency* values,
                  void (*plain)(const ColumnTask&)) {
  const auto mean = [&task, values](int64_t* out) {
    return task.kernels->mean(RawIntegers(values), RawIntegers(task.bars.VolumeAt(task.first)),
                              task.parameters[0], BarCount(task), out);
  };
  ComputeFastOr(task, mean, plain);
}

}  // namespace

void OpenSum(const ColumnTask& task) { PutTotals<OpenField>(task); }
void HighSum(const ColumnTask& task) { PutTotals<HighField>(task); }
void LowSum(const ColumnTask& task) { PutTotals<LowField>(task); }
void CloseSum(const ColumnTask& task) { PutTotals<CloseField>(task); }
void VolumeSum(const ColumnTask& task) { PutTotals<VolumeField>(task); }

void MovingAverage(const ColumnTask& task) {
  PutMeansFast(task, task.bars.CloseAt(task.first), PutMeans<CloseField>);
}

void VolumeMovingAverage(const ColumnTask& task) {
  PutMeansFast(task, task.bars.VolumeAt(task.first), PutMeans<VolumeField>);
}

void DeviationRate(const ColumnTask& task) {
  PutSums<CloseField>(task, [&task](int32_t t, const CountedSum& total) -> std::optional<Currency> {
    const std::optional<Currency> mean = Mean(total);
    if (!mean || !task.bars.HasData(t)) return std::nullopt;
    // The mean as it is shown, so that whoever checks the rate by hand gets the same.
    const base::Int128 close = task.bars.Close(t).Raw();
    return Percentage(close - mean->Raw(), mean->Raw());
  });
}

}  // namespace orin::indicators
