#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/bars.h"
#include "base/currency.h"
#include "base/date.h"

namespace orin::store {

// A price file holds a block of 100 days: one record of dates and a record for each stock, whose
// number is the stock's 銘柄レコード. Currency is a 64-bit little-endian integer, value × 10000;
// a date is a little-endian double, days since 1899-12-30.

inline constexpr int32_t kDaysPerFile = 100;

// orin001.dat and on: records of 100 entries of 40 bytes.
inline constexpr size_t kBarLength = 40;
inline constexpr size_t kDailyRecordLength = kDaysPerFile * kBarLength;

namespace bar_offset {
inline constexpr size_t kOpen = 0;     // 8
inline constexpr size_t kHigh = 8;     // 8
inline constexpr size_t kLow = 16;     // 8
inline constexpr size_t kClose = 24;   // 8
inline constexpr size_t kVolume = 32;  // 8, -1 (the integer -10000) for a day without data
}  // namespace bar_offset

// `entry` is kBarLength bytes. The date is not part of it.
base::Bar DecodeBar(const char* entry, base::Date date);
/// A bar without data is written with the prices 0.
void EncodeBar(const base::Bar& bar, char* entry);
/// `count` entries without data.
std::string NoDataEntries(size_t count);

// The record of dates: 100 entries of 32 bytes, the date and 24 zero bytes, then 800 zero bytes.
// The date of an unused slot is 0.0.
inline constexpr size_t kDateEntryLength = 32;
std::string EncodeDateEntry(base::Date date);
/// None for an unused slot; nullopt where the bytes are no date.
std::optional<base::Date> DecodeDateEntry(const char* entry);

// orins001.dat and on: records of 100 entries of 16 bytes; the entries of the record of dates are
// the date and 8 zero bytes. Both balances are 0 on a day without data.
inline constexpr size_t kCreditEntryLength = 16;
inline constexpr size_t kCreditRecordLength = kDaysPerFile * kCreditEntryLength;

struct CreditBalance {
  base::Currency sell;  // bytes 0..7
  base::Currency buy;   // bytes 8..15

  bool operator==(const CreditBalance&) const = default;
};

CreditBalance DecodeCreditBalance(const char* entry);
void EncodeCreditBalance(const CreditBalance& balance, char* entry);

// orint001.dat and on: records of 80 entries of 44 bytes, enough for the 78 five-minute bars of a
// session: the seconds since midnight as a 32-bit integer, then a bar as in the daily files. An
// unused entry has the time 0 and no data. Record 1 begins with the 8-byte date of the session, the
// rest of it is 0.
inline constexpr size_t kIntradayEntryLength = 44;
inline constexpr size_t kIntradayEntries = 80;
inline constexpr size_t kIntradayRecordLength = kIntradayEntries * kIntradayEntryLength;

inline constexpr int32_t kSecondsPerDay = 24 * 60 * 60;

struct IntradayBar {
  int32_t seconds = 0;  // since midnight
  base::Bar bar;        // its date does not count

  bool operator==(const IntradayBar&) const = default;
};

IntradayBar DecodeIntradayBar(const char* entry);
void EncodeIntradayBar(const IntradayBar& bar, char* entry);

}  // namespace orin::store
