#include "lists/price_listing.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/percent.h"
#include "base/shown_number.h"

namespace orin::lists {

using base::Currency;
using base::Grouped;

namespace {

/// With the changes from bar to bar.
std::vector<PriceRow> RowsOf(const base::BarsView& bars) {
  std::vector<PriceRow> rows;
  std::optional<Currency> before;
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    if (!bars.HasData(t)) continue;
    PriceRow row{
        {bars.DateOf(t), bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t), bars.Volume(t)},
        {},
        {}};
    if (before) {
      row.change = bars.Close(t).Minus(*before);
      if (row.change) row.change_percent = base::PercentOf(*row.change, *before);
    }
    before = bars.Close(t);
    rows.push_back(row);
  }
  return rows;
}

int32_t DecimalsOf(const std::vector<PriceRow>& rows) {
  base::DecimalsNeeded decimals;
  for (const PriceRow& row : rows) {
    for (const Currency price : {row.bar.open, row.bar.high, row.bar.low, row.bar.close}) {
      decimals.Add(price);
    }
  }
  return decimals.Count();
}

std::optional<int64_t> KeyOf(const PriceRow& row, PriceColumn column) {
  const auto raw = [](const std::optional<Currency>& value) -> std::optional<int64_t> {
    if (!value) return std::nullopt;
    return value->Raw();
  };
  switch (column) {
    case PriceColumn::kOpen:
      return row.bar.open.Raw();
    case PriceColumn::kHigh:
      return row.bar.high.Raw();
    case PriceColumn::kLow:
      return row.bar.low.Raw();
    case PriceColumn::kClose:
      return row.bar.close.Raw();
    case PriceColumn::kChange:
      return raw(row.change);
    case PriceColumn::kChangePercent:
      return raw(row.change_percent);
    case PriceColumn::kVolume:
      return row.bar.volume.Raw();
    case PriceColumn::kDate:
      break;
  }
  return 0;
}

void AppendRow(std::string& text, const PriceListing& listing, size_t row,
               std::string_view delimiter, std::string_view line_end) {
  for (size_t column = 0; column < kPriceColumns; ++column) {
    if (column > 0) text += delimiter;
    text += base::PlainNumber(listing.Text(row, static_cast<PriceColumn>(column)));
  }
  text += line_end;
}

}  // namespace

std::string PriceColumnTitle(PriceColumn column, BarPeriod period) {
  constexpr std::array<std::string_view, kPriceColumns> kTitles = {
      "日付", "始値", "高値", "安値", "終値", "", "", "出来高"};
  if (column == PriceColumn::kChange) return std::string(store::ChangeName(period));
  if (column == PriceColumn::kChangePercent) return std::string(store::ChangeName(period)) + "率";
  return std::string(kTitles.at(static_cast<size_t>(column)));
}

PriceListing PriceListing::Load(const store::StockStore& store, const store::StockRecord& stock,
                                BarPeriod period, bool is_adjusted) {
  PriceListing listing;
  listing.period_ = period;
  const base::BarColumns columns = LoadPeriod(store, stock, period, is_adjusted);
  listing.rows_ = RowsOf(base::BarsView(columns));
  std::ranges::reverse(listing.rows_);
  listing.decimals_ = DecimalsOf(listing.rows_);
  return listing;
}

std::string PriceListing::Text(size_t row, PriceColumn column) const {
  const PriceRow& line = rows_[row];
  switch (column) {
    case PriceColumn::kDate:
      return line.bar.date.ToText();
    case PriceColumn::kOpen:
      return Grouped(line.bar.open, decimals_, false);
    case PriceColumn::kHigh:
      return Grouped(line.bar.high, decimals_, false);
    case PriceColumn::kLow:
      return Grouped(line.bar.low, decimals_, false);
    case PriceColumn::kClose:
      return Grouped(line.bar.close, decimals_, false);
    case PriceColumn::kChange:
      return line.change ? Grouped(*line.change, decimals_, true) : "";
    case PriceColumn::kChangePercent:
      return line.change_percent ? Grouped(*line.change_percent, 2, true) + "％" : "";
    case PriceColumn::kVolume:
      return Grouped(line.bar.volume, 0, false);
  }
  return {};
}

void PriceListing::Sort(PriceColumn column, bool is_descending) {
  const auto newest_first = [](const PriceRow& a, const PriceRow& b) {
    return b.bar.date < a.bar.date;
  };
  std::ranges::sort(rows_, newest_first);
  if (column == PriceColumn::kDate) {
    if (!is_descending) std::ranges::reverse(rows_);
    return;
  }
  std::ranges::stable_sort(rows_, [&](const PriceRow& a, const PriceRow& b) {
    const auto left = KeyOf(a, column);
    const auto right = KeyOf(b, column);
    if (!left || !right) return left.has_value() && !right.has_value();
    return is_descending ? *right < *left : *left < *right;
  });
}

std::string PriceListing::ToCsv() const {
  std::string csv;
  for (size_t column = 0; column < kPriceColumns; ++column) {
    if (column > 0) csv += ',';
    csv += column == 0 ? "年月日" : PriceColumnTitle(static_cast<PriceColumn>(column), period_);
  }
  csv += "\r\n";
  for (size_t row = 0; row < rows_.size(); ++row) AppendRow(csv, *this, row, ",", "\r\n");
  return csv;
}

std::string PriceListing::ToTabs(const std::vector<size_t>& rows) const {
  std::string text;
  for (const size_t row : rows) AppendRow(text, *this, row, "\t", "\n");
  return text;
}

}  // namespace orin::lists
