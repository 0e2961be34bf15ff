#include "acquire/csv_history.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <optional>
#include <tl/expected.hpp>

#include "acquire/csv_fields.h"
#include "base/text.h"

namespace orin::acquire {

namespace {

using base::Bar;
using base::Currency;

constexpr std::string_view kHeader = "年月日,始値,高値,安値,終値,出来高";
constexpr size_t kFieldCount = 6;
constexpr std::array<std::string_view, kFieldCount> kFieldNames = {"年月日", "始値", "高値",
                                                                   "安値",   "終値", "出来高"};

using Fields = std::array<std::string_view, kFieldCount>;

bool CarriesNoTrade(std::string_view price) {
  if (price == "-") return true;
  const auto value = Currency::Parse(price);
  return value && *value == Currency();
}

/// One number field; the message where it is none or negative.
tl::expected<Currency, std::string> ReadNumber(std::string_view name, std::string_view text) {
  const auto value = Currency::Parse(text);
  if (!value) {
    return tl::unexpected(std::string(name) + Quoted(text) + "が数値ではありません");
  }
  if (*value < Currency()) {
    return tl::unexpected(std::string(name) + Quoted(text) + "が負の値です");
  }
  return *value;
}

/// The message where the four prices cannot belong to one day.
std::optional<std::string> Contradiction(const Bar& bar, const Fields& fields) {
  if (bar.high < bar.low) {
    return "高値" + Quoted(fields[2]) + "が安値" + Quoted(fields[3]) + "より低くなっています";
  }
  const auto outside = [&bar](Currency price) { return price < bar.low || price > bar.high; };
  if (outside(bar.open)) return "始値" + Quoted(fields[1]) + "が高値と安値の間にありません";
  if (outside(bar.close)) return "終値" + Quoted(fields[4]) + "が高値と安値の間にありません";
  return std::nullopt;
}

/// The bar of a day with trade, or the message.
tl::expected<Bar, std::string> ReadBar(base::Date date, Fields fields) {
  Bar bar;
  bar.date = date;
  if (fields[5] == "-") fields[5] = "0";
  const std::array<Currency*, 5> targets = {&bar.open, &bar.high, &bar.low, &bar.close,
                                            &bar.volume};
  for (size_t i = 0; i < targets.size(); ++i) {
    const auto number = ReadNumber(kFieldNames[i + 1], fields[i + 1]);
    if (!number) return tl::unexpected(number.error());
    *targets[i] = *number;
  }
  if (auto message = Contradiction(bar, fields)) return tl::unexpected(std::move(*message));
  return bar;
}

/// Takes a line into the history, as a bar, in silence or as a problem.
void ReadLine(std::string_view line, int32_t number, CsvHistory& history) {
  Fields fields;
  const size_t count = SplitFields(line, fields);
  if (count != kFieldCount) {
    history.problems.Add(number,
                         "項目の数が" + std::to_string(count) + "です（6必要です）" + Quoted(line));
    return;
  }
  const auto date = base::Date::Parse(fields[0]);
  if (!date || date->IsNone()) {
    history.problems.Add(number, "年月日" + Quoted(fields[0]) + "が日付ではありません");
    return;
  }
  if (std::any_of(fields.begin() + 1, fields.begin() + 5, CarriesNoTrade)) return;
  history.trading_days.push_back(*date);
  auto bar = ReadBar(*date, fields);
  if (!bar) {
    history.problems.Add(number, std::move(bar.error()));
    return;
  }
  history.bars.push_back(*bar);
  history.lines.push_back(number);
}

/// Ascending dates, the last line of each.
void SortAndMerge(CsvHistory& history) {
  std::vector<size_t> order(history.bars.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(), [&history](size_t a, size_t b) {
    return history.bars[a].date < history.bars[b].date;
  });
  CsvHistory sorted;
  sorted.trading_days = std::move(history.trading_days);
  sorted.has_heading = history.has_heading;
  sorted.problems = std::move(history.problems);
  for (const size_t i : order) {
    const Bar& bar = history.bars[i];
    if (!sorted.bars.empty() && sorted.bars.back().date == bar.date) {
      sorted.problems.Add(sorted.lines.back(), "年月日" + Quoted(bar.date.ToText()) + "の行が" +
                                                   std::to_string(history.lines[i]) +
                                                   "行目にもあります");
      sorted.bars.back() = bar;
      sorted.lines.back() = history.lines[i];
      continue;
    }
    sorted.bars.push_back(bar);
    sorted.lines.push_back(history.lines[i]);
  }
  history = std::move(sorted);
}

bool IsStrictlyAscending(const std::vector<Bar>& bars) {
  return std::adjacent_find(bars.begin(), bars.end(), [](const Bar& a, const Bar& b) {
           return a.date >= b.date;
         }) == bars.end();
}

}  // namespace

bool HasCsvHistoryHeading(std::string_view utf8) {
  std::string_view line = utf8.substr(0, utf8.find('\n'));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return IsHeading(line, kFieldNames);
}

CsvHistory ParseCsvHistory(std::string_view utf8) {
  CsvHistory history;
  const std::vector<std::string_view> lines = base::SplitLines(utf8);
  history.has_heading = HasCsvHistoryHeading(utf8);
  if (!history.has_heading) {
    const std::string_view found = lines.empty() ? std::string_view() : lines.front();
    history.problems.Add(1,
                         "見出しが「" + std::string(kHeader) + "」ではありません" + Quoted(found));
    return history;
  }
  for (size_t i = 1; i < lines.size(); ++i) {
    if (base::TrimBlanks(lines[i]).empty()) continue;
    ReadLine(lines[i], static_cast<int32_t>(i + 1), history);
  }
  if (!IsStrictlyAscending(history.bars)) SortAndMerge(history);
  std::ranges::sort(history.trading_days);
  const auto repeated = std::unique(history.trading_days.begin(), history.trading_days.end());
  history.trading_days.erase(repeated, history.trading_days.end());
  return history;
}

}  // namespace orin::acquire
