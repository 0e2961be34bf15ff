#pragma once

#include <span>

#include "base/table.h"
#include "screening/result_columns.h"

namespace orin::screening {

/// The rows of a result list under their headings, the user's columns last. A truth is "○" or
/// "×"; prices have two decimals, or as many of four as any of them needs.
base::Table TableOfResults(const store::StockMaster& master, std::span<const ResultRow> rows,
                           std::span<const ResultColumn> columns);

}  // namespace orin::screening
