#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "indicators/indicator.h"

namespace orin::indicators {

// The marks that the fast loops know.
static_assert(base::kNoValue.Raw() == kernels::kNone);
static_assert(base::kNoDataVolume.Raw() == kernels::kNoData);

using base::RawIntegers;

/// How many bars a task asks for.
inline size_t BarCount(const ColumnTask& task) {
  return static_cast<size_t>(task.last - task.first + 1);
}

inline kernels::PriceBars PriceBarsAt(const base::BarsView& bars, int32_t t) {
  return {RawIntegers(bars.HighAt(t)), RawIntegers(bars.LowAt(t)), RawIntegers(bars.CloseAt(t)),
          RawIntegers(bars.VolumeAt(t))};
}

/// Calls kernel(out), which is to fill the task's places or to give up and return false; then
/// plain(task) does it.
template <typename Kernel, typename Plain>
void ComputeFastOr(const ColumnTask& task, Kernel kernel, Plain plain) {
  base::Currency* out = task.sink.PlaceOf(task.first);
  if (task.kernels != nullptr && kernel(RawIntegers(out))) return;
  std::fill_n(out, task.kernels == nullptr ? 0 : BarCount(task), base::kNoValue);
  plain(task);
}

/// The same in chunks of the length that kernels about ranges take: kernel(task, out) for each,
/// so that one bar without data costs only its neighbours the plain way.
template <typename Kernel, typename Plain>
void ComputeChunksFastOr(const ColumnTask& task, Kernel kernel, Plain plain) {
  ColumnTask chunk = task;
  for (int32_t first = task.first; first <= task.last; first = chunk.last + 1) {
    chunk.first = first;
    chunk.last = std::min(task.last, first + static_cast<int32_t>(kernels::kLongestChunk) - 1);
    ComputeFastOr(
        chunk, [&](int64_t* out) { return kernel(chunk, out); }, plain);
  }
}

}  // namespace orin::indicators
