#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "indicators/average_columns.h"
#include "indicators/kernel_call.h"
#include "indicators/raw_rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Int128;

namespace {

/// The average in raw units after all bars taken. Never restarted from a nearer bar: its value
/// depends in its last digits on where it began.
class RunningAverage {
 public:
  explicit RunningAverage(int32_t n) : n_(n), factor_(2 / (static_cast<double>(n) + 1)) {}

  void Take(const BarsView& bars, int32_t t) {
    if (!bars.HasData(t)) return;
    const int64_t close = bars.Close(t).Raw();
    if (HasValue()) {
      value_ += (static_cast<double>(close) - value_) * factor_;
      return;
    }
    sum_ += close;
    if (++count_ == n_) value_ = static_cast<double>(sum_) / n_;
  }

  [[nodiscard]] bool HasValue() const { return count_ == n_; }
  /// Only where HasValue.
  [[nodiscard]] double Value() const { return value_; }

 private:
  int32_t n_;
  double factor_;
  Int128 sum_ = 0;
  int32_t count_ = 0;
  double value_ = 0;
};

constexpr double kNoAverage = std::numeric_limits<double>::quiet_NaN();

/// Takes every bar from the first on and puts what next(t) gives at the bars asked for, a chunk
/// at a time, because rounding one by one takes as long as the averages themselves.
template <typename Next>
void PutAverages(const ColumnTask& task, Next next) {
  for (int32_t t = task.bars.First(); t < task.first; ++t) next(t);
  std::array<double, kernels::kLongestChunk> averages;
  for (int32_t first = task.first; first <= task.last;) {
    const int32_t left = task.last - first + 1;
    const int32_t count = std::min(left, static_cast<int32_t>(averages.size()));
    for (int32_t i = 0; i < count; ++i) averages[static_cast<size_t>(i)] = next(first + i);
    const std::span chunk = std::span(averages).first(static_cast<size_t>(count));
    int64_t* out = RawIntegers(task.sink.PlaceOf(first));
    const bool done =
        task.kernels != nullptr && task.kernels->rounded(chunk.data(), chunk.size(), out);
    for (size_t i = 0; i < chunk.size() && !done; ++i) {
      out[i] = RoundRaw(chunk[i]).value_or(base::kNoValue).Raw();
    }
    first += count;
  }
}

}  // namespace

void ExponentialAverage(const ColumnTask& task) {
  RunningAverage average(task.parameters[0]);
  PutAverages(task, [&task, &average](int32_t t) {
    average.Take(task.bars, t);
    return average.HasValue() ? average.Value() : kNoAverage;
  });
}

void AverageConvergence(const ColumnTask& task) {
  RunningAverage shorter(task.parameters[0]);
  RunningAverage longer(task.parameters[1]);
  PutAverages(task, [&task, &shorter, &longer](int32_t t) {
    shorter.Take(task.bars, t);
    longer.Take(task.bars, t);
    const bool both = shorter.HasValue() && longer.HasValue();
    return both ? shorter.Value() - longer.Value() : kNoAverage;
  });
}

}  // namespace orin::indicators
