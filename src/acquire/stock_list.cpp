#include "acquire/stock_list.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <tl/expected.hpp>
#include <unordered_set>

#include "base/text.h"

namespace orin::acquire {

namespace {

constexpr std::string_view kHeader = "銘柄コード,銘柄名,上場コード,種別コード,業種コード";
constexpr size_t kFieldCount = 5;

tl::expected<int16_t, std::string> ReadCode(std::string_view name, std::string_view text) {
  int16_t value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, value);
  if (failure != std::errc{} || rest != end || value < 0) {
    return tl::unexpected(std::string(name) + Quoted(text) + "が数値ではありません");
  }
  return value;
}

tl::expected<store::NewStock, std::string> ReadLine(std::string_view line) {
  const auto fields = base::SplitByDelimiter(line, ",");
  if (!fields || fields->size() != kFieldCount) {
    return tl::unexpected("項目の数が5ではありません" + Quoted(line));
  }
  const auto code = store::StockCode::Parse(base::TrimBlanks((*fields)[0]));
  if (!code) return tl::unexpected("銘柄コード" + Quoted((*fields)[0]) + "は使えません");

  store::NewStock stock;
  stock.code = *code;
  stock.name = std::string(base::TrimBlanks((*fields)[1]));
  struct Target {
    std::string_view name;
    int16_t* value;
  };
  const std::array<Target, 3> targets = {
      {{"上場コード", &stock.listing}, {"種別コード", &stock.kind}, {"業種コード", &stock.sector}}};
  for (size_t i = 0; i < targets.size(); ++i) {
    const auto value = ReadCode(targets[i].name, base::TrimBlanks((*fields)[i + 2]));
    if (!value) return tl::unexpected(value.error());
    *targets[i].value = *value;
  }
  if (stock.listing < 1 || stock.listing > 3) {
    return tl::unexpected("上場コード" + Quoted((*fields)[2]) + "は1、2、3のどれでもありません");
  }
  return stock;
}

}  // namespace

StockList ParseStockList(std::string_view utf8) {
  StockList list;
  const auto lines = base::SplitLines(utf8);
  if (lines.empty() || base::TrimBlanks(lines.front()) != kHeader) {
    list.problems.push_back({1, "見出しが「" + std::string(kHeader) + "」ではありません"});
    return list;
  }
  std::unordered_set<store::StockCode, store::StockCodeHash> seen;
  for (size_t i = 1; i < lines.size(); ++i) {
    if (base::TrimBlanks(lines[i]).empty()) continue;
    const auto number = static_cast<int32_t>(i + 1);
    auto stock = ReadLine(lines[i]);
    if (!stock) {
      list.problems.push_back({number, std::move(stock.error())});
    } else if (!seen.insert(stock->code).second) {
      list.problems.push_back(
          {number, "銘柄コード" + Quoted(stock->code.Text()) + "の行が前にもあります"});
    } else {
      list.stocks.push_back(std::move(*stock));
    }
  }
  return list;
}

}  // namespace orin::acquire
