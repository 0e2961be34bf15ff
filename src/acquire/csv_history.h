#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "acquire/line_problems.h"
#include "base/bars.h"

namespace orin::acquire {

/// One stock's price history as read from a CSV file.
struct CsvHistory {
  std::vector<base::Bar> bars;  // ascending, one a date
  std::vector<int32_t> lines;   // the line each bar stands in
  /// The days of trade: those of the bars and of lines whose prices are wrong; ascending.
  std::vector<base::Date> trading_days;
  bool has_heading = false;
  LineProblems problems;
};

/// The days of a hundred years are 2 MB.
inline constexpr int64_t kLargestCsvHistory = int64_t{16} << 20;

/// Whether the text begins with the header of a CSV history.
bool HasCsvHistoryHeading(std::string_view utf8);

/// Reads the text of a CSV history: the header "年月日,始値,高値,安値,終値,出来高", then one day
/// (or week) a line in any order. Prices and volumes have any number of decimals and are rounded
/// to four, halves to even. A line with a price "-" or 0 carries no trade and is left out in
/// silence; a line that is wrong (a date that does not exist, no number, a high below the low, an
/// open or close outside them, a negative number) is left out with a problem. Of several lines of
/// one date the last one counts. A wrong header is a problem of line 1 and nothing is read.
CsvHistory ParseCsvHistory(std::string_view utf8);

}  // namespace orin::acquire
