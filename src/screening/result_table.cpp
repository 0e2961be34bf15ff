#include "screening/result_table.h"

#include <string>
#include <utility>
#include <vector>

#include "base/shown_number.h"

namespace orin::screening {

using base::Cell;
using base::ColumnKind;
using base::Currency;

namespace {

int32_t DecimalsOfPrices(std::span<const ResultRow> rows) {
  base::DecimalsNeeded prices;
  for (const ResultRow& row : rows) {
    if (row.close) prices.Add(*row.close);
    if (row.change) prices.Add(*row.change);
  }
  return prices.Count();
}

/// Numbers have all decimals that any of them needs, and no decimals where all are whole.
base::Column ColumnOf(const ResultColumn& wanted, std::span<const ResultRow> rows, size_t place) {
  base::Column column{.heading = wanted.title.empty() ? wanted.expression : wanted.title};
  base::DecimalsNeeded needed;
  bool has_fraction = false;
  for (const ResultRow& row : rows) {
    const auto& value = row.columns[place].value;
    if (!value) continue;
    column.kind = ColumnKind::kNumber;
    needed.Add(*value);
    has_fraction = has_fraction || value->Raw() % Currency::kScale != 0;
  }
  column.decimals = has_fraction ? needed.Count() : 0;
  column.is_grouped = true;
  return column;
}

std::vector<base::Column> ColumnsOf(std::span<const ResultRow> rows,
                                    std::span<const ResultColumn> wanted) {
  const auto number = [](const char* heading, int32_t decimals, bool has_plus) {
    return base::Column{.heading = heading,
                        .kind = ColumnKind::kNumber,
                        .decimals = decimals,
                        .is_grouped = true,
                        .has_plus = has_plus};
  };
  const int32_t decimals = DecimalsOfPrices(rows);
  std::vector<base::Column> columns = {base::CodeColumn(),
                                       base::TextColumn("銘柄名"),
                                       base::TextColumn("市場"),
                                       number("終値", decimals, false),
                                       number("前日比", decimals, true),
                                       number("前日比率(%)", 2, true),
                                       number("出来高", 0, false)};
  for (size_t place = 0; place < wanted.size(); ++place) {
    columns.push_back(ColumnOf(wanted[place], rows, place));
  }
  return columns;
}

Cell CellOf(const ColumnValue& value) {
  if (value.truth) return *value.truth ? "○" : "×";
  return base::CellOf(value.value);
}

}  // namespace

base::Table TableOfResults(const store::StockMaster& master, std::span<const ResultRow> rows,
                           std::span<const ResultColumn> columns) {
  base::Table table;
  table.columns = ColumnsOf(rows, columns);
  table.rows.reserve(rows.size());
  for (const ResultRow& row : rows) {
    std::vector<Cell> cells = {std::string(row.code.Text()), {}, {}};
    if (!row.stock.IsNone()) {
      const store::StockRecord& stock = master.Stock(row.stock);
      cells[1] = stock.name;
      cells[2] = std::string(store::ListingName(stock.listing));
    }
    for (const auto& value : {row.close, row.change, row.change_percent, row.volume}) {
      cells.push_back(base::CellOf(value));
    }
    for (const ColumnValue& value : row.columns) cells.push_back(CellOf(value));
    table.rows.push_back(std::move(cells));
  }
  return table;
}

}  // namespace orin::screening
