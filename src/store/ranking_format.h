#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/currency.h"
#include "base/date.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

// A ranking file: record 1 the header, records 2..8 the titles of the seven rankings, then a
// record a stock in ascending order of the codes' bytes.

inline constexpr size_t kRankingRecordLength = 192;
inline constexpr std::string_view kRankingMark = "ORINRNK1";  // the last byte is the version
inline constexpr int32_t kRankings = 7;
inline constexpr int32_t kFirstRankedRecord = 2 + kRankings;

/// The series that a ranking was made from.
enum class RankingPeriod : uint8_t { kDay, kWeek, kMonth };
inline constexpr size_t kRankingPeriods = 3;

namespace ranking_header_offset {
inline constexpr size_t kMark = 0;    // 8
inline constexpr size_t kDate = 8;    // 8
inline constexpr size_t kCount = 16;  // 4, of the stocks
}  // namespace ranking_header_offset

namespace ranking_title_offset {
inline constexpr size_t kTitle = 0;  // code page 932, padded with blanks
inline constexpr size_t kTitleWidth = 100;
}  // namespace ranking_title_offset

namespace ranked_stock_offset {
inline constexpr size_t kCode = 0;     // 8
inline constexpr size_t kListing = 8;  // 2
inline constexpr size_t kValues = 16;  // 8 each: of the day, the week, the month, seven each
}  // namespace ranked_stock_offset

/// Where the value of a ranking (1..7) stands in a stock's record.
inline size_t RankedValueOffset(RankingPeriod period, int32_t ranking) {
  const auto place = static_cast<size_t>(period) * size_t{kRankings} + static_cast<size_t>(ranking);
  return ranked_stock_offset::kValues + (place - 1) * 8;
}

/// Of one period; base::kNoValue, in the file as well, for a stock that the ranking leaves out.
using RankedValues = std::array<base::Currency, size_t{kRankings}>;

struct RankedStock {
  StockCode code;
  int16_t listing = 0;
  std::array<RankedValues, kRankingPeriods> values;  // by RankingPeriod
};

/// What a ranking file holds. The order of the stocks does not matter.
struct RankingContent {
  base::Date date;
  std::array<std::string, size_t{kRankings}> titles;  // cut to the width of the file
  std::vector<RankedStock> stocks;
};

/// The bytes of the file; fails where code page 932 lacks a character of a title.
base::Result<std::string> EncodeRanking(const RankingContent& content);

/// Fails, with a sentence that begins with `name`, unless the bytes are a ranking file of this
/// version whose length agrees with its header. A file of an earlier version has a sentence of its
/// own; everything else is damaged.
base::Status CheckRankingBytes(const std::string& name, std::string_view bytes);

}  // namespace orin::store
