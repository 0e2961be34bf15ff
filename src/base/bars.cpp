#include "base/bars.h"

namespace orin::base {

void BarColumns::Resize(size_t count) {
  dates.resize(count);
  open.resize(count);
  high.resize(count);
  low.resize(count);
  close.resize(count);
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
