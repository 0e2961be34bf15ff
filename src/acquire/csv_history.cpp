#include "acquire/csv_history.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <optional>
#include <tl/expected.hpp>

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

std::string_view Unquoted(std::string_view field) {
  field = base::TrimBlanks(field);
  if (field.size() >= 2 && field.front() == '"' && field.back() == '"') {
    field = field.substr(1, field.size() - 2);
  }
  return field;
}

/// How many fields the line has; the first six of them into `fields`. Empty ones at the end
/// beyond the sixth do not count.
size_t SplitFields(std::string_view line, Fields& fields) {
  while (line.ends_with(',')) line.remove_suffix(1);
  size_t count = 0;
  for (;;) {
    const size_t comma = line.find(',');
    if (count < kFieldCount) fields[count] = Unquoted(line.substr(0, comma));
    ++count;
    if (comma == std::string_view::npos) return count;
    line.remove_prefix(comma + 1);
  }
}

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

/// The bar of a line; nullopt for a day without trade; the message for a wrong line.
tl::expected<std::optional<Bar>, std::string> ReadLine(std::string_view line) {
  Fields fields;
  const size_t count = SplitFields(line, fields);
  if (count != kFieldCount) {
    return tl::unexpected("項目の数が" + std::to_string(count) + "です（6必要です）" +
                          Quoted(line));
  }
  const auto date = base::Date::Parse(fields[0]);
  if (!date) return tl::unexpected("年月日" + Quoted(fields[0]) + "が日付ではありません");
  if (std::any_of(fields.begin() + 1, fields.begin() + 5, CarriesNoTrade)) return std::nullopt;

  Bar bar;
  bar.date = *date;
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

/// Ascending dates, the last line of each.
void SortAndMerge(CsvHistory& history) {
  std::vector<size_t> order(history.bars.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(), [&history](size_t a, size_t b) {
    return history.bars[a].date < history.bars[b].date;
  });
  CsvHistory sorted;
  sorted.problems = std::move(history.problems);
  for (const size_t i : order) {
    const Bar& bar = history.bars[i];
    if (!sorted.bars.empty() && sorted.bars.back().date == bar.date) {
      sorted.problems.push_back(
          {sorted.lines.back(), "年月日" + Quoted(bar.date.ToText()) + "の行が" +
                                    std::to_string(history.lines[i]) + "行目にもあります"});
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

std::string Quoted(std::string_view value) {
  constexpr size_t kLongest = 60;
  std::string text = "「";
  size_t length = std::min(value.size(), kLongest);
  // Not inside a character of several bytes.
  while (length < value.size() && length > 0 && (value[length] & 0xc0) == 0x80) --length;
  for (const char c : value.substr(0, length)) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    text += control ? '?' : c;
  }
  if (length < value.size()) text += "…";
  return text + "」";
}

CsvHistory ParseCsvHistory(std::string_view utf8) {
  CsvHistory history;
  const std::vector<std::string_view> lines = base::SplitLines(utf8);
  if (lines.empty() || base::TrimBlanks(lines.front()) != kHeader) {
    const std::string_view found = lines.empty() ? std::string_view() : lines.front();
    history.problems.push_back(
        {1, "見出しが「" + std::string(kHeader) + "」ではありません" + Quoted(found)});
    return history;
  }
  for (size_t i = 1; i < lines.size(); ++i) {
    if (base::TrimBlanks(lines[i]).empty()) continue;
    const auto number = static_cast<int32_t>(i + 1);
    auto bar = ReadLine(lines[i]);
    if (!bar) {
      history.problems.push_back({number, std::move(bar.error())});
    } else if (*bar) {
      history.bars.push_back(**bar);
      history.lines.push_back(number);
    }
  }
  if (!IsStrictlyAscending(history.bars)) SortAndMerge(history);
  return history;
}

}  // namespace orin::acquire
