#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "analysis/run_days.h"
#include "base/date.h"
#include "screening/analysis_file.h"
#include "screening/stock_days.h"
#include "store/stock_code.h"

namespace orin::screening {

/// What a result window shows: the stocks of a result list and what is known of where they come
/// from.
struct ResultContent {
  std::string title;
  base::Date date;
  std::vector<store::StockCode> codes;
  std::filesystem::path list;            // the result list; empty for a combination of lists
  std::optional<AnalysisFile> analysis;  // none: the condition is not known
  analysis::RunDays days = analysis::RunDays::OfOneFile();  // as in the run
  StockDays own_days = {};
  std::optional<int16_t> first_file = {};  // the first price file that the run read
};

}  // namespace orin::screening
