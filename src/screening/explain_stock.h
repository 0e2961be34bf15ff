#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/explanation.h"
#include "analysis/run_days.h"
#include "base/ordinal.h"
#include "screening/screening_run.h"
#include "store/stock_store.h"

namespace orin::screening {

/// A stock and a day to explain a condition for.
struct ExplainQuestion {
  base::MasterRecord stock;
  base::DayIndex day;
  std::optional<store::StockCode> second_stock;
  bool adjust_splits = true;
  analysis::RunDays days = analysis::RunDays::OfOneFile();  // of the condition's keywords
};

/// Loads what the condition, or value, needs and explains it. Fails where the text cannot be
/// compiled (the message is then that of the compiler's note) or a companion file is damaged. A
/// second stock that is unknown is the first of the explanation's notes.
Outcome<analysis::Explanation> ExplainStock(const store::StockStore& store,
                                            std::string_view condition,
                                            const ExplainQuestion& question);

}  // namespace orin::screening
