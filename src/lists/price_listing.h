#pragma once

#include <cstddef>

#include "base/table.h"
#include "store/stock_series.h"

namespace orin::lists {

using store::BarPeriod;

/// The columns of a price listing: "日付", "始値", "高値", "安値", "終値", "前日比" ("前週比",
/// "前月比"), "前日比率", "出来高".
struct PriceColumn {
  enum Place : size_t { kDate, kOpen, kHigh, kLow, kClose, kChange, kChangePercent, kVolume };
};

/// The bars of one stock and period, the newest first, with their changes from the close of the
/// last bar with data before. Days without data have no row. Prices have two decimals, or as many
/// of four as any of them needs. Adjusted for splits where `is_adjusted`.
base::Table TableOfPrices(const store::StockStore& store, const store::StockRecord& stock,
                          BarPeriod period, bool is_adjusted);

}  // namespace orin::lists
