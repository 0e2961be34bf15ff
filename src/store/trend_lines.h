#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
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

/// A date as a line's record has it, which may be within a day or no date at all. It is written as
/// it was read.
class StoredDate {
 public:
  StoredDate() = default;
  StoredDate(base::Date day)  // NOLINT(google-explicit-constructor): every date can be stored
      : StoredDate(static_cast<double>(day.Serial())) {}
  /// Days since 1899-12-30, any number.
  explicit StoredDate(double days) : bits_(std::bit_cast<uint64_t>(days)) {}

  [[nodiscard]] double Days() const { return std::bit_cast<double>(bits_); }
  /// Without the fraction; none for a number out of the range of dates.
  [[nodiscard]] base::Date Day() const;

  bool operator==(const StoredDate&) const = default;

 private:
  uint64_t bits_ = 0;  // keeps the bytes of a NaN
};

struct TrendLine {
  StoredDate first_date;  // without a day: no line
  base::Currency first_price;
  StoredDate second_date;  // without a day: a line that cannot be drawn
  base::Currency second_price;

  bool operator==(const TrendLine&) const = default;
};

using TrendLines = std::array<TrendLine, kTrendLinesPerStock>;

/// `record` is kTrendRecordLength bytes. A line whose first date is no date is cleared; others
/// are encoded as they were.
TrendLines DecodeTrendLines(std::string_view record);
/// Exactly kTrendRecordLength bytes.
std::string EncodeTrendLines(const TrendLines& lines);

/// No lines where the file or the record does not exist; fails where the file cannot be read.
base::Result<TrendLines> LoadTrendLines(const StoreLocation& location, base::SlotRecord slot);
/// Replaces the file; it grows as needed. Fails for a slot outside 1..32767.
base::Status SaveTrendLines(const StoreLocation& location, base::SlotRecord slot,
                            const TrendLines& lines, base::FileSystem& files);

}  // namespace orin::store
