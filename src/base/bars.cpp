#include "base/bars.h"

namespace orin::base {

void BarColumns::Resize(size_t count, PriceFields fields) {
  dates.resize(count);
  open.resize(fields.Has(PriceFields::kOpen) ? count : 0);
  high.resize(fields.Has(PriceFields::kHigh) ? count : 0);
  low.resize(fields.Has(PriceFields::kLow) ? count : 0);
  close.resize(fields.Has(PriceFields::kClose) ? count : 0);
  volume.resize(count, kNoDataVolume);
}

void BarColumns::Append(const Bar& bar) {
  Resize(Size() + 1);
  Put(Size() - 1, bar);
}

Bar BarColumns::At(size_t position) const {
  return Bar{dates[position], open[position],  high[position],
             low[position],   close[position], volume[position]};
}

void BarColumns::Put(size_t position, const Bar& bar) {
  dates[position] = bar.date;
  open[position] = bar.open;
  high[position] = bar.high;
  low[position] = bar.low;
  close[position] = bar.close;
  volume[position] = bar.volume;
}

}  // namespace orin::base
