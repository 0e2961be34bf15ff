#include "indicators/volume_by_price.h"

#include <algorithm>

#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

struct Trade {
  Currency close;
  Currency volume;
};

std::vector<Trade> TradesOf(const BarsView& bars, int32_t first, int32_t last) {
  std::vector<Trade> trades;
  for (int32_t t = std::max(first, bars.First()); t <= std::min(last, bars.Count()); ++t) {
    if (bars.Volume(t) > Currency()) trades.push_back({bars.Close(t), bars.Volume(t)});
  }
  return trades;
}

std::vector<PriceBand> EmptyBands(Currency lowest, Currency highest, int32_t count) {
  if (lowest == highest) count = 1;
  const Int128 height = Int128{highest.Raw()} - lowest.Raw();
  const auto edge = [lowest, height, count](int32_t i) {
    const Int128 raw = lowest.Raw() + base::DivideHalfToEven(height * i, count);
    return Currency::FromRaw(static_cast<int64_t>(raw));
  };
  std::vector<PriceBand> bands;
  bands.reserve(static_cast<size_t>(count));
  for (int32_t i = 0; i < count; ++i) {
    bands.push_back({edge(i), edge(i + 1), Currency(), Currency()});
  }
  return bands;
}

PriceBand& BandOf(std::vector<PriceBand>& bands, Currency close) {
  // Bands narrower than the last decimal may be empty: the close belongs above them.
  const auto above =
      std::upper_bound(bands.begin(), bands.end(), close,
                       [](Currency price, const PriceBand& band) { return price < band.low; });
  return *(above - 1);
}

}  // namespace

std::vector<PriceBand> VolumeByPrice(const BarsView& bars, int32_t first, int32_t last,
                                     int32_t count) {
  const std::vector<Trade> trades = TradesOf(bars, first, last);
  if (trades.empty() || count < 1 || count > kMostPriceBands) return {};
  Int128 sum = 0;
  for (const Trade& trade : trades) sum += trade.volume.Raw();
  if (!ToCurrency(sum)) return {};
  const auto [lowest, highest] =
      std::minmax_element(trades.begin(), trades.end(),
                          [](const Trade& a, const Trade& b) { return a.close < b.close; });
  std::vector<PriceBand> bands = EmptyBands(lowest->close, highest->close, count);
  for (const Trade& trade : trades) {
    Currency& volume = BandOf(bands, trade.close).volume;
    volume = Currency::FromRaw(volume.Raw() + trade.volume.Raw());
  }
  for (PriceBand& band : bands) {
    band.share = Percentage(band.volume.Raw(), sum).value_or(Currency());
  }
  return bands;
}

}  // namespace orin::indicators
