#pragma once

#include <string_view>

#include "base/bars.h"
#include "base/ordinal.h"
#include "store/stock_store.h"

namespace orin::store {

enum class BarPeriod { kDay, kWeek, kMonth };
/// "日足", "週足", "月足".
std::string_view PeriodName(BarPeriod period);
/// "前日比", "前週比", "前月比".
std::string_view ChangeName(BarPeriod period);

/// All bars of the stock up to the day `last`, oldest first, those without data included; adjusted
/// for splits where `is_adjusted`. The last week or month ends at that day. None in a store without
/// days.
base::BarColumns LoadPeriod(const StockStore& store, const StockRecord& stock, BarPeriod period,
                            bool is_adjusted, base::DayIndex last);
/// The same up to the newest day.
base::BarColumns LoadPeriod(const StockStore& store, const StockRecord& stock, BarPeriod period,
                            bool is_adjusted);

/// Daily bars from the first of `days` on as bars of a period, the last week or month ending at
/// the day `last`.
base::BarColumns ToPeriod(base::BarColumns daily, const Calendar& days, BarPeriod period,
                          base::DayIndex last);

}  // namespace orin::store
