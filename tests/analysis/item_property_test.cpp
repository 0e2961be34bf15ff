#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "analysis/item_calls.h"
#include "analysis/items/item_call.h"
#include "indicators/bar_table.h"

namespace orin::analysis {
namespace {

using base::BarColumns;
using base::DayIndex;
using base::ValueColumn;

constexpr int32_t kDays = 90;

BarColumns FirstDays(const BarColumns& columns, int32_t count) {
  BarColumns part = columns;
  part.Resize(static_cast<size_t>(count));
  return part;
}

/// The same days as `columns`, other bars.
BarColumns OnTheDaysOf(const BarColumns& columns, uint32_t seed) {
  BarColumns bars = support::RandomBars(seed, static_cast<int>(columns.Size()));
  bars.dates = columns.dates;
  return bars;
}

TEST(ItemProperty, ValueOfADayDependsOnNoLaterDay) {
  std::mt19937 random(1);
  int values = 0;
  for (uint32_t market = 0; market < 4; ++market) {
    const BarColumns daily = support::RandomBars(market, kDays);
    const BarColumns second = OnTheDaysOf(daily, market + 100);
    StockContext whole(daily, &second);
    for (const std::string& text : RandomCalls(random)) {
      const ItemCall call = *ItemCall::Bind(text);
      ValueColumn range;
      call.Evaluate(whole, DayIndex(1), DayIndex(kDays), range);
      for (const int32_t day : {7, 40, 58, 71, 90}) {
        const BarColumns daily_until = FirstDays(daily, day);
        const BarColumns second_until = FirstDays(second, day);
        StockContext until(daily_until, &second_until);
        const Value alone = ItemValue(text, until, DayIndex(day));
        const auto place = static_cast<size_t>(day - 1);
        ASSERT_EQ(range.Has(place), alone.ok) << text << " day " << day;
        if (alone.ok) {
          EXPECT_EQ(range.At(place), alone.value) << text << " day " << day;
        }
        values += alone.ok ? 1 : 0;
      }
    }
  }
  EXPECT_GT(values, 1500);
}

TEST(ItemProperty, DaysOutsideTheSeriesHaveNoValue) {
  std::mt19937 random(2);
  const BarColumns daily = support::RandomBars(9, 12);
  const BarColumns second = OnTheDaysOf(daily, 10);
  StockContext context(daily, &second);
  for (const std::string& text : RandomCalls(random)) {
    const ItemCall call = *ItemCall::Bind(text);
    ValueColumn column;
    call.Evaluate(context, DayIndex(-3), DayIndex(16), column);
    ASSERT_EQ(column.Size(), 20U);
    if (text.ends_with("()")) continue;
    for (const size_t outside : {0U, 3U, 16U, 19U}) EXPECT_EQ(column.Has(outside), 0) << text;
  }
}

TEST(ItemProperty, NeedsCountTheExaminedBarItsHistoryAndTheOffset) {
  const auto needs = [](std::string_view text) { return ItemCall::Bind(text)->Needs(); };
  const auto expect = [](const History& got, int32_t daily, int32_t weekly, int32_t monthly,
                         int32_t second) {
    EXPECT_EQ(got.daily, daily);
    EXPECT_EQ(got.weekly, weekly);
    EXPECT_EQ(got.monthly, monthly);
    EXPECT_EQ(got.second, second);
  };
  expect(needs("終値(0)"), 1, 0, 0, 0);
  expect(needs("移動平均(66,-1)"), 67, 0, 0, 0);
  expect(needs("ＡＤＸ(14,14,0)"), 28, 0, 0, 0);
  expect(needs("ＶＲ(14,0)"), History::kAll, 0, 0, 0);
  expect(needs("週間移動平均(13,-2)"), 1, 15, 0, 0);
  expect(needs("月間ＲＳＩ(9,0)"), 1, 0, 10, 0);
  expect(needs("第二銘柄終値(-3)"), 1, 0, 0, 4);
  expect(needs("さや最大値(5,-1)"), 6, 0, 0, 6);
  expect(needs("Ｓｉｎ()"), 1, 0, 0, 0);
  // What can never have a value loads nothing.
  expect(needs("移動平均(66,1)"), 1, 0, 0, 0);
  expect(needs("移動平均(0,-70)"), 1, 0, 0, 0);
  expect(needs("移動平均(2147483647,-2147483648)"), History::kAll, 0, 0, 0);
}

}  // namespace
}  // namespace orin::analysis
