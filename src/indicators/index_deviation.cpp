#include "indicators/index_deviation.h"

#include <algorithm>

namespace orin::indicators {

using base::BarsView;
using base::Currency;

namespace {

bool HasPrice(const BarsView& bars, int32_t t) {
  return bars.HasData(t) && bars.Close(t) > Currency();
}

}  // namespace

IndexDeviation DeviationFromIndex(const BarsView& stock, const BarsView& index, int32_t base,
                                  int32_t last) {
  IndexDeviation deviation;
  deviation.values.Reset(base <= last ? static_cast<size_t>(int64_t{last} - base + 1) : 0);
  const int32_t oldest = std::max({base, stock.First(), index.First()});
  const int32_t newest = std::min({last, stock.Count(), index.Count()});
  for (int32_t t = oldest; t <= newest; ++t) {
    if (!HasPrice(stock, t) || !HasPrice(index, t)) continue;
    if (deviation.base_bar == 0) deviation.base_bar = t;
    const int32_t from = deviation.base_bar;
    const double stock_growth = stock.Close(t).ToDouble() / stock.Close(from).ToDouble();
    const double index_growth = index.Close(t).ToDouble() / index.Close(from).ToDouble();
    const auto place = static_cast<size_t>(int64_t{t} - base);
    deviation.values.Set(place, Currency::FromDouble((stock_growth / index_growth - 1) * 100));
  }
  return deviation;
}

}  // namespace orin::indicators
