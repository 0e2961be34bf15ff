#include "screening/ui/result_table.h"

#include <utility>

#include "base/shown_number.h"

namespace orin::screening {

using base::Currency;
using base::DecimalsNeeded;
using base::Grouped;

namespace {

std::string NumberText(const std::optional<Currency>& value, int32_t decimals, bool with_sign) {
  return value ? Grouped(*value, decimals, with_sign) : "";
}

/// Of the user's numbers all decimals they need, none where all are whole.
int32_t DecimalsOfColumn(std::span<const ResultRow> rows, size_t column) {
  DecimalsNeeded needed;
  bool has_fraction = false;
  for (const ResultRow& row : rows) {
    const auto& value = row.columns[column].value;
    if (!value) continue;
    needed.Add(*value);
    has_fraction = has_fraction || value->Raw() % Currency::kScale != 0;
  }
  return has_fraction ? needed.Count() : 0;
}

std::string ColumnText(const ColumnValue& value, int32_t decimals) {
  if (value.truth) return *value.truth ? "○" : "×";
  return NumberText(value.value, decimals, false);
}

}  // namespace

lists::Table TableOfResults(const store::StockMaster& master, std::span<const ResultRow> rows,
                            std::span<const ResultColumn> columns) {
  lists::Table table{{"銘柄コード", "銘柄名", "市場", "終値", "前日比", "前日比率(%)", "出来高"},
                     {}};
  std::vector<int32_t> decimals;
  for (size_t column = 0; column < columns.size(); ++column) {
    const ResultColumn& wanted = columns[column];
    table.headings.push_back(wanted.title.empty() ? wanted.expression : wanted.title);
    decimals.push_back(DecimalsOfColumn(rows, column));
  }
  DecimalsNeeded prices;
  for (const ResultRow& row : rows) {
    if (row.close) prices.Add(*row.close);
    if (row.change) prices.Add(*row.change);
  }
  for (const ResultRow& row : rows) {
    std::vector<std::string> texts = {std::string(row.code.Text()), "", ""};
    if (!row.stock.IsNone()) {
      const store::StockRecord& stock = master.Stock(row.stock);
      texts[1] = stock.name;
      texts[2] = store::ListingName(stock.listing);
    }
    texts.push_back(NumberText(row.close, prices.Count(), false));
    texts.push_back(NumberText(row.change, prices.Count(), true));
    texts.push_back(NumberText(row.change_percent, 2, true));
    texts.push_back(NumberText(row.volume, 0, false));
    for (size_t column = 0; column < columns.size(); ++column) {
      texts.push_back(ColumnText(row.columns[column], decimals[column]));
    }
    table.rows.push_back(std::move(texts));
  }
  return table;
}

}  // namespace orin::screening
