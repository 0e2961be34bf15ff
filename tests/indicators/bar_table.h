#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/bars.h"
#include "base/file_system.h"
#include "base/text.h"
#include "support/test_files.h"

namespace orin::support {

/// A line "subject | bar | expected" of a case file.
struct CaseLine {
  std::string place;  // file:line
  std::string table;  // the table of bars that came last before it
  std::string subject;
  int32_t bar = 0;
  std::optional<base::Currency> expected;  // nullopt: "none"
};

/// Tables of bars and cases as text. A line "bars NAME" starts a table; its lines are
/// "open high low close volume", or "-" for a bar without data, with a date before them where
/// the table is dated. "#" starts a comment line.
struct CaseFile {
  std::map<std::string, base::BarColumns> tables;
  std::vector<CaseLine> cases;
};

inline std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words(1);
  for (const char c : line) {
    if (c != ' ') {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

inline base::Bar ParseBar(std::vector<std::string> words) {
  base::Bar bar;
  if (const auto date = base::Date::Parse(words.front())) {
    bar.date = *date;
    words.erase(words.begin());
  }
  if (words.front() == "-") return bar;
  EXPECT_EQ(words.size(), 5U);
  base::Currency* const fields[] = {&bar.open, &bar.high, &bar.low, &bar.close, &bar.volume};
  for (size_t i = 0; i < words.size() && i < 5; ++i) {
    const auto value = base::Currency::Parse(words[i]);
    EXPECT_TRUE(value) << words[i];
    *fields[i] = value.value_or(base::Currency());
  }
  return bar;
}

inline CaseLine ParseCase(std::string_view line, std::string place, std::string table) {
  const auto pieces = base::SplitByDelimiter(line, "|");
  CaseLine parsed{std::move(place), std::move(table), {}, 0, std::nullopt};
  EXPECT_TRUE(pieces && pieces->size() == 3) << parsed.place;
  if (!pieces || pieces->size() != 3) return parsed;
  parsed.subject = base::TrimBlanks((*pieces)[0]);
  parsed.bar = std::stoi(std::string(base::TrimBlanks((*pieces)[1])));
  const std::string_view expected = base::TrimBlanks((*pieces)[2]);
  if (expected == "none") return parsed;
  parsed.expected = base::Currency::Parse(expected);
  EXPECT_TRUE(parsed.expected) << parsed.place;
  return parsed;
}

inline CaseFile ReadCaseFile(const std::string& name) {
  CaseFile file;
  const auto text = base::ReadFile(TestData(name));
  EXPECT_TRUE(text) << name;
  if (!text) return file;
  std::string table;
  int number = 0;
  for (const std::string_view line : base::SplitLines(*text)) {
    ++number;
    if (base::TrimBlanks(line).empty() || line.front() == '#') continue;
    if (line.starts_with("bars ")) {
      table = line.substr(5);
      file.tables[table] = {};
    } else if (line.find('|') == std::string_view::npos) {
      file.tables[table].Append(ParseBar(Words(line)));
    } else {
      file.cases.push_back(ParseCase(line, name + ":" + std::to_string(number), table));
    }
  }
  return file;
}

/// Bars of consecutive weekdays with a few days off, bars without data, days without trade and
/// many equal prices.
inline base::BarColumns RandomBars(uint32_t seed, int count) {
  std::mt19937 random(seed);
  const auto pick = [&random](int32_t low, int32_t high) {
    return std::uniform_int_distribution<int32_t>(low, high)(random);
  };
  base::BarColumns bars;
  int32_t serial = 43831 + pick(0, 40);
  int32_t price = 200;
  for (int i = 0; i < count; ++i) {
    base::Bar bar;
    do {
      serial += pick(0, 19) == 0 ? 2 : 1;
      bar.date = base::Date::FromSerial(serial);
    } while (bar.date.Weekday() == 1 || bar.date.Weekday() == 7);
    if (pick(0, 11) != 0) {
      const int32_t open = std::max(2, price + pick(-3, 3));
      price = std::max(2, open + pick(-6, 6));
      bar.open = base::Currency::FromRaw(open * 2500);
      bar.close = base::Currency::FromRaw(price * 2500);
      bar.high = base::Currency::FromRaw((std::max(open, price) + pick(0, 3)) * 2500);
      bar.low = base::Currency::FromRaw((std::min(open, price) - pick(0, 1)) * 2500);
      bar.volume = base::Currency::FromInt(std::max(0, pick(-200, 900)));
    }
    bars.Append(bar);
  }
  return bars;
}

}  // namespace orin::support
