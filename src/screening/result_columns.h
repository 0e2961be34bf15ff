#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/condition.h"
#include "analysis/run_days.h"
#include "base/currency.h"
#include "base/ordinal.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/stock_code.h"
#include "store/stock_store.h"

namespace orin::screening {

/// A column that the user has chosen: an expression of the condition language.
struct ResultColumn {
  std::string title;  // the expression itself where empty
  std::string expression;
};

/// What a user's column shows of a stock: a number, a truth, or nothing where it fails.
struct ColumnValue {
  std::optional<base::Currency> value;
  std::optional<bool> truth;
};

/// A stock of a result list on the list's day.
struct ResultRow {
  store::StockCode code;
  base::MasterRecord stock;  // none: not in the master (any more); the rest is then empty
  std::optional<base::Currency> close;
  /// Against the close of the day before, and in percent of it.
  std::optional<base::Currency> change;
  std::optional<base::Currency> change_percent;
  std::optional<base::Currency> volume;
  std::vector<ColumnValue> columns;  // as many as were asked for
};

struct ResultQuestion {
  base::DayIndex day;
  std::span<const ResultColumn> columns;
  std::optional<store::StockCode> second_stock;  // for items of the columns
  bool adjust_splits = true;
  analysis::RunDays days = analysis::RunDays::OfOneFile();  // of the columns' keywords
};

/// The rows of the codes, in their order. A column that cannot be compiled, like one whose second
/// stock is missing, is empty in every row and a sentence in `notes`. Reads only the bars needed.
/// Fails where a companion file is damaged, or `progress` stops it.
base::Result<std::vector<ResultRow>> LoadResultRows(const store::StockStore& store,
                                                    std::span<const store::StockCode> codes,
                                                    const ResultQuestion& question,
                                                    base::Progress& progress,
                                                    std::vector<std::string>& notes);

}  // namespace orin::screening
