#include <optional>

#include "indicators/average_columns.h"
#include "indicators/range_window.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Int128;

namespace {

/// Highest high and lowest low over the `n` bars up to rising t, added.
class BalanceWindow {
 public:
  BalanceWindow(const BarsView& bars, int32_t n) : high_(bars, n), low_(bars, n) {}

  std::optional<Int128> At(int32_t t) {
    const std::optional<Extreme> high = high_.At(t);
    const std::optional<Extreme> low = low_.At(t);
    if (!high || !low) return std::nullopt;
    return Int128{high->value.Raw()} + low->value.Raw();
  }

 private:
  RangeWindow<HighestHigh> high_;
  RangeWindow<LowestLow> low_;
};

/// The line over n bars as it was `before` bars earlier.
void PutLine(const ColumnTask& task, int32_t n, int32_t before) {
  BalanceWindow window(task.bars, n);
  for (int32_t t = task.first; t <= task.last; ++t) {
    const std::optional<Int128> sum = window.At(t - before);
    if (sum) task.sink.Put(t, ToCurrency(base::DivideHalfToEven(*sum, 2)));
  }
}

}  // namespace

void BalanceLine(const ColumnTask& task) { PutLine(task, task.parameters[0], 0); }

// The day itself counts as the first of the days ahead.
void LeadingSpan2(const ColumnTask& task) {
  PutLine(task, task.parameters[1], task.parameters[0] - 1);
}

void LeadingSpan1(const ColumnTask& task) {
  BalanceWindow base_window(task.bars, task.parameters[0]);
  BalanceWindow conversion_window(task.bars, task.parameters[1]);
  const int32_t before = task.parameters[2] - 1;
  for (int32_t t = task.first; t <= task.last; ++t) {
    const std::optional<Int128> slow = base_window.At(t - before);
    const std::optional<Int128> fast = conversion_window.At(t - before);
    // One division: halving halves would round twice.
    if (slow && fast) task.sink.Put(t, ToCurrency(base::DivideHalfToEven(*slow + *fast, 4)));
  }
}

}  // namespace orin::indicators
