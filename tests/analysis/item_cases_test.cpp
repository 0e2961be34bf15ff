#include <gtest/gtest.h>
#include <string>

#include "analysis/items/item_call.h"
#include "indicators/bar_table.h"
#include "support/test_files.h"

namespace orin::analysis {
namespace {

using base::DayIndex;

std::string Text(const Value& value) { return value.ok ? value.value.ToText() : "none"; }

TEST(ItemCases, WorkedValuesHoldOnOneDayAndInARange) {
  const support::CaseFile file = support::ReadCaseFile("items/cases.txt");
  ASSERT_GT(file.cases.size(), 100U);
  const base::BarColumns& daily = file.tables.at("daily");
  StockContext context(daily, &file.tables.at("second"));
  for (const support::CaseLine& line : file.cases) {
    const std::string expected = line.expected ? line.expected->ToText() : "none";
    EXPECT_EQ(Text(ItemValue(line.subject, context, DayIndex(line.bar))), expected)
        << line.place << " " << line.subject;
    const auto call = ItemCall::Bind(line.subject);
    ASSERT_TRUE(call) << line.place << " " << call.error().message;
    base::ValueColumn column;
    call->Evaluate(context, DayIndex(1), DayIndex(static_cast<int32_t>(daily.Size())), column);
    const auto place = static_cast<size_t>(line.bar - 1);
    EXPECT_EQ(column.Has(place) ? column.At(place).ToText() : "none", expected)
        << line.place << " " << line.subject;
  }
}

TEST(ItemCases, WithoutASecondStockItsItemsFail) {
  const support::CaseFile file = support::ReadCaseFile("items/cases.txt");
  StockContext context(file.tables.at("daily"), nullptr);
  for (const support::CaseLine& line : file.cases) {
    const bool needs_second = line.subject.find("第二銘柄") == 0 || line.subject.find("さや") == 0;
    const Value value = ItemValue(line.subject, context, DayIndex(line.bar));
    if (needs_second) {
      EXPECT_EQ(value, Value::Failed()) << line.place;
    } else {
      EXPECT_EQ(value.ok, line.expected.has_value()) << line.place;
    }
  }
}

TEST(ItemCases, TextThatIsNoItemCallIsExplainedAndFails) {
  const auto text = base::ReadFile(support::TestData("items/faults.txt"));
  ASSERT_TRUE(text);
  const base::BarColumns daily = support::RandomBars(1, 20);
  StockContext context(daily, nullptr);
  int number = 0;
  for (const std::string_view line : base::SplitLines(*text)) {
    ++number;
    if (line.empty() || line.front() == '#') continue;
    const size_t bar = line.find(" | ");
    ASSERT_NE(bar, std::string_view::npos) << number;
    const std::string_view subject = line.substr(0, bar);
    const auto call = ItemCall::Bind(subject);
    ASSERT_FALSE(call) << "faults.txt:" << number;
    EXPECT_EQ(call.error().message, line.substr(bar + 3)) << "faults.txt:" << number;
    EXPECT_EQ(ItemValue(subject, context, DayIndex(20)), Value::Failed());
  }
  EXPECT_GT(number, 25);
}

TEST(ItemCases, BytesThatAreNoTextAreNoItem) {
  for (const std::string_view bytes : {"\xef", "\xef\xbc", "\xff\xfe(0)", "\xe7\xb5(0)", ")("}) {
    EXPECT_FALSE(ItemCall::Bind(bytes));
  }
}

TEST(ItemCases, CallsAreEqualWhenTheyMeanTheSame) {
  const auto call = [](std::string_view text) { return *ItemCall::Bind(text); };
  EXPECT_EQ(call("移動平均(25,-1)"), call("移動平均( 25, -1 )"));
  EXPECT_NE(call("移動平均(25,-1)"), call("移動平均(25,0)"));
  EXPECT_NE(call("移動平均(25,-1)"), call("移動平均(24,-1)"));
  EXPECT_NE(call("移動平均(25,-1)"), call("週間移動平均(25,-1)"));
  EXPECT_NE(call("Ｓｉｎ()"), call("Ｃｏｓ()"));
}

}  // namespace
}  // namespace orin::analysis
