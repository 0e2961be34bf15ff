#include <optional>

#include "indicators/average_columns.h"
#include "indicators/rounding.h"
#include "indicators/sums.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;

namespace {

/// The share of a bar in the mean volume of the `n` bars up to it, for rising t.
class ShareWindow {
 public:
  ShareWindow(const BarsView& bars, int32_t n)
      : bars_(bars), n_(n), sum_(n, bars.First(), {bars}) {}

  std::optional<Currency> At(int32_t t) {
    const CountedSum& total = sum_.At(t);
    if (!bars_.HasData(t) || !bars_.HasData(t - n_ + 1)) return std::nullopt;
    // Times the count before the division: the mean would be rounded.
    return Percentage(base::Int128{bars_.Volume(t).Raw()} * total.count, total.raw);
  }

 private:
  BarsView bars_;
  int32_t n_;
  FieldSum<VolumeField> sum_;
};

struct ShareTerm {
  ShareWindow window;

  base::Int128 operator()(int32_t t) {
    const std::optional<Currency> share = window.At(t);
    return share ? share->Raw() : 0;
  }
};

}  // namespace

void VolumeShare(const ColumnTask& task) {
  ShareWindow window(task.bars, task.parameters[0]);
  for (int32_t t = task.first; t <= task.last; ++t) task.sink.Put(t, window.At(t));
}

void VolumeShareSum(const ColumnTask& task) {
  const int32_t n = task.parameters[0];
  ShareWindow oldest(task.bars, n);
  RollingSum<base::Int128, ShareTerm> sum(n, task.bars.First(), {ShareWindow(task.bars, n)});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const base::Int128 total = sum.At(t);
    if (oldest.At(t - n + 1)) task.sink.Put(t, ToCurrency(total));
  }
}

}  // namespace orin::indicators
