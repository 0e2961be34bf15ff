#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::screening {

/// A list of all stocks that a store can hold is 4 MB; this leaves room for long lines.
inline constexpr int64_t kLargestList = int64_t{16} << 20;

/// A list of stocks as its file tells it: "T:" and "D:" lines, in whatever case, then a line a
/// stock that begins with the code. Result lists, continuous-display and comparison lists.
struct ListedCodes {
  std::string title;                    // empty without a "T:" line
  std::optional<base::Date> date;       // none without a "D:" line that is a date
  std::vector<store::StockCode> codes;  // each once, in their order
  std::vector<std::string> notes;       // lines passed over, a sentence each, at most ten
};
ListedCodes ParseList(std::string_view utf8);
/// Fails with a sentence where the file cannot be read or is larger than kLargestList.
base::Result<ListedCodes> ReadList(const std::filesystem::path& file);

/// What of one list is kept, in its order.
enum class ListOperation { kInBoth, kOnlyHere, kInEither };
/// kInEither: the codes of `here`, then those of `other` that it lacks.
std::vector<store::StockCode> Combine(std::span<const store::StockCode> here,
                                      std::span<const store::StockCode> other,
                                      ListOperation operation);

/// The result list of the newest earlier date beside this one, which need not exist: "k" +
/// yyyymmdd + ".txt" in the same directory, in whatever case. nullopt where there is none, or the
/// name is no result list's.
std::optional<std::filesystem::path> PreviousResultList(const std::filesystem::path& list);

}  // namespace orin::screening
