#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"
#include "store/stock_series.h"

namespace orin::lists {

using store::BarPeriod;

enum class PriceColumn { kDate, kOpen, kHigh, kLow, kClose, kChange, kChangePercent, kVolume };
inline constexpr size_t kPriceColumns = 8;
/// "日付", "始値", "高値", "安値", "終値", "前日比" ("前週比", "前月比"), "前日比率", "出来高".
std::string PriceColumnTitle(PriceColumn column, BarPeriod period);

/// A bar of a listing, with its change from the close of the last bar with data before it.
struct PriceRow {
  base::Bar bar;
  std::optional<base::Currency> change;
  std::optional<base::Currency> change_percent;
};

/// The bars of one stock and period as a table. Days without data have no row.
class PriceListing {
 public:
  /// The newest bar first. Adjusted for splits where `is_adjusted`.
  static PriceListing Load(const store::StockStore& store, const store::StockRecord& stock,
                           BarPeriod period, bool is_adjusted);

  [[nodiscard]] BarPeriod Period() const { return period_; }
  [[nodiscard]] const std::vector<PriceRow>& Rows() const { return rows_; }
  /// As shown: "2020/01/10", "310.33", "+1.25", "+0.41％", "35,217,272"; empty where there is
  /// no value. Prices have two decimals, or as many of four as any price of the listing needs.
  [[nodiscard]] std::string Text(size_t row, PriceColumn column) const;
  /// Rows without a value stay last in both orders; equal ones keep the newest first.
  void Sort(PriceColumn column, bool is_descending);
  /// All rows as they are sorted, with a heading, numbers without grouping; UTF-8, "\r\n".
  [[nodiscard]] std::string ToCsv() const;
  /// The same fields parted by tabs, for the rows given, without a heading.
  [[nodiscard]] std::string ToTabs(const std::vector<size_t>& rows) const;

 private:
  BarPeriod period_ = BarPeriod::kDay;
  std::vector<PriceRow> rows_;
  int32_t decimals_ = 2;
};

}  // namespace orin::lists
