#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/currency.h"
#include "base/date.h"
#include "base/file_system.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/store_location.h"

namespace orin::store {

// orin.lin: records of 320 bytes whose number is the stock's 銘柄レコード; 10 lines of 32 bytes.
inline constexpr size_t kTrendLineLength = 32;
inline constexpr size_t kTrendLinesPerStock = 10;
inline constexpr size_t kTrendRecordLength = kTrendLinesPerStock * kTrendLineLength;

namespace trend_offset {
inline constexpr size_t kFirstDate = 0;     // 8
inline constexpr size_t kFirstPrice = 8;    // 8
inline constexpr size_t kSecondDate = 16;   // 8
inline constexpr size_t kSecondPrice = 24;  // 8
}  // namespace trend_offset

struct TrendLine {
  base::Date first_date;  // none: no line
  base::Currency first_price;
  base::Date second_date;
  base::Currency second_price;

  bool operator==(const TrendLine&) const = default;
};

using TrendLines = std::array<TrendLine, kTrendLinesPerStock>;

/// `record` is kTrendRecordLength bytes. A line one of whose dates is no date is cleared.
TrendLines DecodeTrendLines(std::string_view record);
/// Exactly kTrendRecordLength bytes.
std::string EncodeTrendLines(const TrendLines& lines);

/// No lines where the file or the record does not exist; fails where the file cannot be read.
base::Result<TrendLines> LoadTrendLines(const StoreLocation& location, base::SlotRecord slot);
/// Replaces the file; it grows as needed. Fails for a slot outside 1..32767.
base::Status SaveTrendLines(const StoreLocation& location, base::SlotRecord slot,
                            const TrendLines& lines, base::FileSystem& files);

}  // namespace orin::store
