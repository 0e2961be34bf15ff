#pragma once

#include <string>
#include <vector>

#include "base/date.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/price_format.h"
#include "store/store_location.h"

namespace orin::store {

/// The bars of a stock on one day, by time. Without a date where there are none.
struct IntradayDay {
  base::Date date;
  std::vector<IntradayBar> bars;

  bool operator==(const IntradayDay&) const = default;
};

/// The newest day up to `last` of which the intraday files have bars of the stock. A file that is
/// missing or shorter than its record is one without bars; fails where one cannot be read.
base::Result<IntradayDay> LoadIntraday(const StoreLocation& location, base::SlotRecord slot,
                                       base::Date last);

/// The image of an intraday file of `date` with the bars of each slot from 2 on, each at most
/// kIntradayEntries.
std::string EncodeIntradayFile(base::Date date, const std::vector<std::vector<IntradayBar>>& slots);

}  // namespace orin::store
