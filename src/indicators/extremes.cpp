#include <optional>

#include "indicators/columns.h"
#include "indicators/kernel_call.h"
#include "indicators/range_window.h"
#include "indicators/rounding.h"
#include "indicators/sums.h"

namespace orin::indicators {

using base::Currency;

namespace {

template <typename Rule, typename Result>
void PutExtremes(const ColumnTask& task, Result result) {
  RangeWindow<Rule> range(task.bars, task.parameters[0]);
  for (int32_t t = task.first; t <= task.last; ++t) {
    if (const std::optional<Extreme> found = range.At(t)) task.sink.Put(t, result(t, *found));
  }
}

template <typename Rule>
void PutValues(const ColumnTask& task) {
  PutExtremes<Rule>(task, [](int32_t, const Extreme& found) { return found.value; });
}

using Search = decltype(kernels::Kernels::highest);
using FieldOf = const Currency* (base::BarsView::*)(int32_t) const;

template <typename Rule>
void PutValuesFast(const ColumnTask& task, Search kernels::Kernels::*search, FieldOf field) {
  // A span that would begin before the first bar is shortened, which only the plain way does.
  const auto fast = [search, field](const ColumnTask& chunk, int64_t* out) {
    const int32_t n = chunk.parameters[0];
    if (chunk.first - n + 1 < chunk.bars.First()) return false;
    return (chunk.kernels->*search)(RawIntegers((chunk.bars.*field)(chunk.first)),
                                    RawIntegers(chunk.bars.VolumeAt(chunk.first)), n,
                                    BarCount(chunk), out);
  };
  ComputeChunksFastOr(task, fast, PutValues<Rule>);
}

template <typename Rule>
void PutVolumes(const ColumnTask& task) {
  PutExtremes<Rule>(task, [&task](int32_t, const Extreme& found) -> std::optional<Currency> {
    // The range helpers can settle on a bar without data, whose volume is -1.
    if (found.bar == 0 || !task.bars.HasData(found.bar)) return std::nullopt;
    return task.bars.Volume(found.bar);
  });
}

template <typename Rule>
void PutAges(const ColumnTask& task) {
  PutExtremes<Rule>(task, [](int32_t t, const Extreme& found) -> std::optional<Currency> {
    if (found.bar == 0) return std::nullopt;
    return Currency::FromInt(t - found.bar);
  });
}

struct VolumeSource {
  base::BarsView bars;

  std::optional<Currency> operator()(int32_t t) const {
    if (!bars.HasData(t)) return std::nullopt;
    return bars.Volume(t);
  }
};

// Sums that begin at a bar without data do not exist, and the extreme is taken among the others.
struct VolumeSumSource {
  base::BarsView bars;
  int32_t length;
  FieldSum<VolumeField> sum;

  std::optional<Currency> operator()(int32_t t) {
    const CountedSum& total = sum.At(t);
    if (!bars.HasData(t - length + 1)) return std::nullopt;
    return ToCurrency(total.raw);
  }
};

/// Over windows of n values of the source, which start at bars with data `before` bars earlier.
template <typename Order, typename Source>
void PutVolumeExtremes(const ColumnTask& task, Source source, int32_t n, int32_t before) {
  WindowExtreme<Order, Source> window(std::move(source));
  for (int32_t t = task.first; t <= task.last; ++t) {
    const int32_t oldest = t - n + 1;
    const Extreme found = window.At(oldest, t);
    if (found.bar != 0 && task.bars.HasData(oldest - before)) task.sink.Put(t, found.value);
  }
}

template <typename Order>
void PutVolumeSumExtremes(const ColumnTask& task) {
  const int32_t length = task.parameters[0];
  const VolumeSumSource source{task.bars, length, {length, task.bars.First(), {task.bars}}};
  PutVolumeExtremes<Order>(task, source, task.parameters[1], length - 1);
}

}  // namespace

void HighestHighValue(const ColumnTask& task) {
  PutValuesFast<HighestHigh>(task, &kernels::Kernels::highest, &base::BarsView::HighAt);
}
void HighestHighVolume(const ColumnTask& task) { PutVolumes<HighestHigh>(task); }
void HighestHighAge(const ColumnTask& task) { PutAges<HighestHigh>(task); }
void LowestLowValue(const ColumnTask& task) {
  PutValuesFast<LowestLow>(task, &kernels::Kernels::lowest, &base::BarsView::LowAt);
}
void LowestLowVolume(const ColumnTask& task) { PutVolumes<LowestLow>(task); }
void LowestLowAge(const ColumnTask& task) { PutAges<LowestLow>(task); }
void HighestCloseValue(const ColumnTask& task) {
  PutValuesFast<HighestClose>(task, &kernels::Kernels::highest, &base::BarsView::CloseAt);
}
void LowestCloseValue(const ColumnTask& task) {
  PutValuesFast<LowestClose>(task, &kernels::Kernels::lowest, &base::BarsView::CloseAt);
}

void HighestVolume(const ColumnTask& task) {
  PutVolumeExtremes<Highest>(task, VolumeSource{task.bars}, task.parameters[0], 0);
}
void LowestVolume(const ColumnTask& task) {
  PutVolumeExtremes<Lowest>(task, VolumeSource{task.bars}, task.parameters[0], 0);
}
void HighestVolumeSum(const ColumnTask& task) { PutVolumeSumExtremes<Highest>(task); }
void LowestVolumeSum(const ColumnTask& task) { PutVolumeSumExtremes<Lowest>(task); }

}  // namespace orin::indicators
