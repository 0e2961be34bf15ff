#include "lists/price_listing.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/bars.h"
#include "base/percent.h"
#include "base/shown_number.h"

namespace orin::lists {

using base::ColumnKind;
using base::Currency;

namespace {

std::vector<base::Column> ColumnsOf(BarPeriod period, int32_t decimals) {
  const auto price = [decimals](std::string heading) {
    return base::Column{.heading = std::move(heading),
                        .kind = ColumnKind::kNumber,
                        .decimals = decimals,
                        .is_grouped = true};
  };
  std::vector<base::Column> columns = {
      {.heading = "日付", .kind = ColumnKind::kDate, .is_key = true, .file_heading = "年月日"}};
  for (const char* heading : {"始値", "高値", "安値", "終値"}) columns.push_back(price(heading));
  base::Column change = price(std::string(store::ChangeName(period)));
  change.has_plus = change.is_tinted = true;
  columns.push_back(change);
  change.kind = ColumnKind::kPercent;
  change.heading += "率";
  change.decimals = 2;
  columns.push_back(std::move(change));
  columns.push_back(price("出来高"));
  columns.back().decimals = 0;
  return columns;
}

}  // namespace

base::Table TableOfPrices(const store::StockStore& store, const store::StockRecord& stock,
                          BarPeriod period, bool is_adjusted) {
  const base::BarColumns loaded = LoadPeriod(store, stock, period, is_adjusted);
  const base::BarsView bars(loaded);
  base::Table table;
  base::DecimalsNeeded decimals;
  std::optional<Currency> before;
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    if (!bars.HasData(t)) continue;
    std::vector<base::Cell> row = {bars.DateOf(t)};
    for (const Currency price : {bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t)}) {
      decimals.Add(price);
      row.emplace_back(price);
    }
    const auto change = before ? bars.Close(t).Minus(*before) : std::nullopt;
    row.push_back(base::CellOf(change));
    row.push_back(base::CellOf(change ? base::PercentOf(*change, *before) : std::nullopt));
    row.emplace_back(bars.Volume(t));
    before = bars.Close(t);
    table.rows.push_back(std::move(row));
  }
  std::ranges::reverse(table.rows);
  table.columns = ColumnsOf(period, decimals.Count());
  table.order_of_equals = std::pair(size_t{PriceColumn::kDate}, true);
  table.copied_form = base::TextForm::kPlain;
  return table;
}

}  // namespace orin::lists
