#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/currency.h"
#include "base/date.h"
#include "base/file_system.h"
#include "base/result.h"
#include "store/stock_master.h"

namespace orin::screening {

/// A selected stock as its line of the result list shows it.
struct SelectedStock {
  store::StockRecord stock;
  std::optional<base::Currency> close;
  std::optional<base::Currency> change;  // against the close of the day before
};

/// "k" + yyyymmdd + ".txt".
std::string ResultListName(base::Date date);

/// The list: "T:" title, "D:" date, then a line a stock. A line begins with the code in eight
/// characters, all that readers of lists take; then name (16 columns), market (8), close and
/// change (14 each, on the right; "-" where there is none), each after a blank.
std::string FormatResultList(const std::string& title, base::Date date,
                             const std::vector<SelectedStock>& selected);

/// Writes the list in code page 932 with CRLF, whole or not at all. A character that code page
/// 932 lacks becomes its number, so that a title never stops a run.
base::Status WriteResultList(base::FileSystem& files, const std::filesystem::path& path,
                             const std::string& text);

}  // namespace orin::screening
