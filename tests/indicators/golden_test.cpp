#include <gtest/gtest.h>
#include <string>

#include "indicators/bar_table.h"
#include "indicators/indicator.h"
#include "indicators/rounding.h"

namespace orin::indicators {
namespace {

using base::Currency;

std::string Text(Currency value) { return value.ToText(); }

constexpr Currency kNone = Currency::FromInt(-777);

TEST(Indicators, WorkedValuesHoldAtOneBarAndInARange) {
  const support::CaseFile file = support::ReadCaseFile("indicators/golden.txt");
  ASSERT_GT(file.cases.size(), 100U);
  for (const support::CaseLine& line : file.cases) {
    SCOPED_TRACE(line.place);
    const std::vector<std::string> words = support::Words(line.subject);
    const Indicator* indicator = FindIndicator(words[0]);
    ASSERT_NE(indicator, nullptr) << words[0];
    ASSERT_EQ(indicator->ParameterCount(), words.size() - 1);
    Parameters parameters = {};
    for (size_t i = 1; i < words.size(); ++i) parameters[i - 1] = std::stoi(words[i]);

    const base::BarsView bars(file.tables.at(line.table));
    const Currency expected = line.expected.value_or(kNone);
    const Currency single =
        ComputeValue(*indicator, bars, parameters, line.bar - bars.Count(), kNone);
    EXPECT_EQ(Text(single), Text(expected));
    base::ValueColumn column;
    ComputeColumn(*indicator, bars, parameters, 1, bars.Count(), column);
    const auto place = static_cast<size_t>(line.bar - 1);
    EXPECT_EQ(Text(column.Has(place) ? column.At(place) : kNone), Text(expected));
  }
}

TEST(Indicators, EveryRoutineOfTheTableHasWorkedValues) {
  const support::CaseFile file = support::ReadCaseFile("indicators/golden.txt");
  for (const Indicator& indicator : Indicators()) {
    const bool worked = std::any_of(
        file.cases.begin(), file.cases.end(), [&indicator](const support::CaseLine& line) {
          return support::Words(line.subject)[0] == indicator.name && line.expected.has_value();
        });
    const bool reads_one_field = indicator.history({}) == 0;
    EXPECT_TRUE(worked || reads_one_field) << indicator.name;
  }
}

TEST(RoundingRule, KeepsOneDecimalLessThanItsArgumentAndRoundsHalvesAwayFromZero) {
  struct Case {
    const char* value;
    int32_t digits;
    const char* expected;
  };
  constexpr Case kCases[] = {
      {"63.25", 2, "63.3000"},   {"-63.25", 2, "-63.3000"}, {"63.24", 2, "63.2000"},
      {"63.2499", 2, "63.2000"}, {"0.05", 2, "0.1000"},     {"-0.0499", 2, "0.0000"},
      {"0.5", 1, "1.0000"},      {"-1.4999", 1, "-1.0000"}, {"1.2345", 3, "1.2300"},
      {"1.2350", 3, "1.2400"},   {"1.2345", 4, "1.2350"},   {"1.2345", 5, "1.2345"},
      {"1.2345", 9, "1.2345"},
  };
  for (const Case& c : kCases) {
    const auto rounded = RoundToDigits(*Currency::Parse(c.value), c.digits);
    ASSERT_TRUE(rounded);
    EXPECT_EQ(rounded->ToText(), c.expected) << c.value << " " << c.digits;
  }
}

TEST(RoundingRule, RoundingOutOfTheRangeHasNoValue) {
  EXPECT_FALSE(RoundToDigits(*Currency::Parse("922337203685477.5807"), 1));
  EXPECT_FALSE(RoundToDigits(*Currency::Parse("-922337203685477.5807"), 1));
  EXPECT_TRUE(RoundToDigits(*Currency::Parse("922337203685477.4999"), 1));
}

}  // namespace
}  // namespace orin::indicators
