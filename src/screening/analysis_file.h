#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/result.h"
#include "screening/market_choice.h"
#include "store/stock_code.h"

namespace orin::screening {

/// A condition has at most some ten thousand terms, and its file is a few hundred kilobytes then.
inline constexpr int64_t kLargestAnalysisFile = int64_t{1} << 20;

/// A saved analysis, as its file tells it.
struct AnalysisFile {
  std::string title;
  std::string result_directory;    // as written, "\" between its parts; may be empty
  std::optional<base::Date> date;  // none: the newest stored day
  MarketChoice market = MarketChoice::kAll;
  std::string condition;
  std::optional<store::StockCode> second_stock;
  /// Its text is written and is not a stock code, which a note says.
  bool is_second_stock_wrong = false;
  /// Lines passed over that their writer may have meant otherwise, a sentence each.
  std::vector<std::string> notes;
};

/// Reads the text of an analysis file: lines of the form key, "：", value. Unknown keys and
/// lines with more than one "：" are passed over; of several lines of one key the last counts.
/// Lines without "：" that follow the line of the condition continue it, with nothing put
/// between; elsewhere they are passed over. An empty value is an absent one. Fails for a wrong date
/// and an unknown market, with a sentence that begins with `file_name`.
base::Result<AnalysisFile> ParseAnalysisFile(std::string_view utf8, const std::string& file_name);

}  // namespace orin::screening
