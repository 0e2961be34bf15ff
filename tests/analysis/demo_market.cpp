#include "demo_market.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <vector>

#include "support/test_files.h"

namespace orin::analysis {

namespace {

using BarsByDate = std::map<base::Date, base::Bar>;

base::Bar ParseLine(const std::string& line) {
  std::istringstream fields(line);
  std::string field;
  std::getline(fields, field, ',');
  base::Bar bar;
  bar.date = base::Date::Parse(field).value_or(base::Date());
  for (base::Currency* value : {&bar.open, &bar.high, &bar.low, &bar.close, &bar.volume}) {
    std::getline(fields, field, ',');
    while (!field.empty() && field.back() <= ' ') field.pop_back();
    *value = base::Currency::Parse(field).value_or(base::kNoDataVolume);
  }
  return bar;
}

BarsByDate ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  BarsByDate bars;
  while (std::getline(file, line)) {
    const base::Bar bar = ParseLine(line);
    EXPECT_FALSE(bar.date.IsNone()) << path << ": " << line;
    bars[bar.date] = bar;
  }
  return bars;
}

}  // namespace

DemoMarket ReadDemoMarket() {
  const std::filesystem::path directory = support::DemoFile("brand");
  const BarsByDate calendar = ReadFile(directory / "^DJI.csv");
  DemoMarket market;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    const BarsByDate bars = ReadFile(entry.path());
    base::BarColumns& columns = market.stocks[entry.path().stem().string()];
    for (const auto& [date, unused] : calendar) {
      const auto found = bars.find(date);
      base::Bar missing;
      missing.date = date;
      columns.Append(found == bars.end() ? missing : found->second);
    }
  }
  return market;
}

}  // namespace orin::analysis
