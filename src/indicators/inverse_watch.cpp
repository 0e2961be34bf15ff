#include "indicators/inverse_watch.h"

#include "indicators/indicator.h"

namespace orin::indicators {

std::vector<InverseWatchPoint> InverseWatchPoints(const base::BarsView& bars, int32_t n,
                                                  int32_t first, int32_t last) {
  base::ValueColumn volumes;
  base::ValueColumn prices;
  ComputeColumn(*FindIndicator("volume_moving_average"), bars, {n}, first, last, volumes);
  ComputeColumn(*FindIndicator("moving_average"), bars, {n}, first, last, prices);
  std::vector<InverseWatchPoint> points;
  for (size_t i = 0; i < volumes.Size(); ++i) {
    if (!volumes.Has(i) || !prices.Has(i)) continue;
    points.push_back({first + static_cast<int32_t>(i), volumes.At(i), prices.At(i)});
  }
  return points;
}

}  // namespace orin::indicators
