#include "acquire/stock_list.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <tl/expected.hpp>
#include <unordered_set>

#include "acquire/csv_fields.h"
#include "base/cp932.h"
#include "base/text.h"

namespace orin::acquire {

namespace {

constexpr size_t kStockFields = 5;
constexpr std::array<std::string_view, kStockFields> kStockFieldNames = {
    "銘柄コード", "銘柄名", "上場コード", "種別コード", "業種コード"};

using StockFields = std::array<std::string_view, kStockFields>;

tl::expected<int16_t, std::string> ReadCode(std::string_view name, std::string_view text) {
  int16_t value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, value);
  if (failure != std::errc{} || rest != end || value < 0) {
    return tl::unexpected(std::string(name) + Quoted(text) + "が数値ではありません");
  }
  return value;
}

tl::expected<store::NewStock, std::string> ReadStock(const store::StockCode& code,
                                                     const StockFields& fields) {
  store::NewStock stock;
  stock.code = code;
  stock.name = std::string(fields[1]);
  const auto encodable = base::EncodeCp932(stock.name);
  if (!encodable) return tl::unexpected("銘柄名" + Quoted(stock.name) + "に使えない文字があります");
  const std::array<int16_t*, 3> targets = {&stock.listing, &stock.kind, &stock.sector};
  for (size_t i = 0; i < targets.size(); ++i) {
    const auto value = ReadCode(kStockFieldNames[i + 2], fields[i + 2]);
    if (!value) return tl::unexpected(value.error());
    *targets[i] = *value;
  }
  if (stock.listing < 1 || stock.listing > 3) {
    return tl::unexpected("上場コード" + Quoted(fields[2]) + "は1、2、3のどれでもありません");
  }
  return stock;
}

using Codes = std::unordered_set<store::StockCode, store::StockCodeHash>;

void ReadLine(std::string_view line, int32_t number, Codes& seen, StockList& list) {
  StockFields fields;
  const size_t count = SplitFields(line, fields);
  const auto code = store::StockCode::Parse(fields[0]);
  if (!code) {
    list.problems.Add(number, "銘柄コード" + Quoted(fields[0]) + "は使えません");
    return;
  }
  auto stock = count == kStockFields
                   ? ReadStock(*code, fields)
                   : tl::unexpected("項目の数が" + std::to_string(count) + "です（5必要です）");
  if (!stock) {
    list.problems.Add(number, std::move(stock.error()));
    list.wrong_lines.push_back(*code);
    return;
  }
  if (!seen.insert(*code).second) {
    list.problems.Add(number, "銘柄コード" + Quoted(code->Text()) + "の行が前にもあります");
    return;
  }
  list.stocks.push_back(std::move(*stock));
}

}  // namespace

StockList ParseStockList(std::string_view utf8) {
  StockList list;
  const auto lines = base::SplitLines(utf8);
  list.has_heading = !lines.empty() && IsHeading(lines.front(), kStockFieldNames);
  if (!list.has_heading) {
    list.problems.Add(
        1, "見出しが「銘柄コード,銘柄名,上場コード,種別コード,業種コード」ではありません");
    return list;
  }
  Codes seen;
  for (size_t i = 1; i < lines.size(); ++i) {
    if (!base::TrimBlanks(lines[i]).empty())
      ReadLine(lines[i], static_cast<int32_t>(i + 1), seen, list);
  }
  return list;
}

}  // namespace orin::acquire
