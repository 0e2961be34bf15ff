#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/ordinal.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::screening {

inline constexpr std::string_view kStockDaysFile = "orinana.day";

/// Stocks that a run looks at on another day than its own, from the lines "code,yyyy/mm/dd" of
/// orinana.day.
struct StockDays {
  std::map<store::StockCode, base::DayIndex> days;
  std::vector<std::string>
      notes;  // lines passed over, a sentence each with its number, at most ten

  /// The stock's own day, else `day`.
  [[nodiscard]] base::DayIndex Of(const store::StockCode& code, base::DayIndex day) const;
};

/// Codes are as in lists, in eight characters or fewer; more fields than two are not looked at.
/// Empty lines and those that begin with "'" are none. Passed over with a note: a line without a
/// date, a code that no stock of the store has, a date that is no day of its calendar. Of several
/// lines of a code the last counts.
StockDays ParseStockDays(std::string_view utf8, const store::StockStore& store);
/// Without the file there are none; fails where it is there and cannot be read.
base::Result<StockDays> ReadStockDays(const std::filesystem::path& directory,
                                      const store::StockStore& store);

}  // namespace orin::screening
