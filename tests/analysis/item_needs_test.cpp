#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/item_calls.h"
#include "analysis/items/item_call.h"
#include "base/file_system.h"
#include "indicators/bar_table.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::DayIndex;
using base::ValueColumn;

constexpr size_t kNeedsDays = 130;
constexpr History kWholeHistory = {History::kAll, History::kAll, History::kAll, History::kAll};

std::vector<base::Bar> RandomBarList(uint32_t seed) {
  const base::BarColumns columns = support::RandomBars(seed, kNeedsDays);
  std::vector<base::Bar> bars;
  for (size_t i = 0; i < columns.Size(); ++i) bars.push_back(columns.At(i));
  return bars;
}

store::StockStore OpenMarket(const char* directory) {
  support::StoreBuilder builder(directory);
  builder.Days(support::Weekdays("2020/01/08", kNeedsDays));
  builder.Stock("AAA", RandomBarList(1)).Stock("BBB", RandomBarList(2));
  builder.Split("AAA", 3, "2020/05/08").Split("BBB", 0.5, "2020/06/02");
  return builder.Open();
}

const store::StockRecord& StockOf(const store::StockStore& store, std::string_view code) {
  return store.Master().Stock(store.Master().Find(support::Code(code)));
}

ValueColumn EvaluateWith(const store::StockStore& store, const History& needs, const ItemCall& call,
                         DayIndex first, DayIndex last) {
  StockContext context(store, needs, first, last, &StockOf(store, "BBB"), true);
  context.Load(StockOf(store, "AAA"));
  ValueColumn column;
  call.Evaluate(context, first, last, column);
  return column;
}

TEST(ItemNeeds, LoadingWhatAnItemNeedsGivesTheValueOfTheWholeHistory) {
  const store::StockStore store = OpenMarket("item_needs");
  std::mt19937 random(11);
  int values = 0;
  for (const int32_t first : {1, 4, 23, 65, 104}) {
    for (const int32_t length : {1, 9}) {
      const DayIndex last(first + length - 1);
      for (const std::string& text : RandomCalls(random)) {
        const ItemCall call = *ItemCall::Bind(text);
        const ValueColumn whole = EvaluateWith(store, kWholeHistory, call, DayIndex(first), last);
        const ValueColumn part = EvaluateWith(store, call.Needs(), call, DayIndex(first), last);
        ASSERT_EQ(whole, part) << text << " from day " << first;
        for (size_t i = 0; i < whole.Size(); ++i) values += whole.Has(i) ? 1 : 0;
      }
    }
  }
  EXPECT_GT(values, 3000);
}

TEST(ItemNeeds, ParametersThatNeverGiveAValueNeedNothingLoaded) {
  const store::StockStore store = OpenMarket("item_needs_nothing");
  for (const char* text :
       {"移動平均(0,0)", "週間移動平均(0,0)", "週間ＡＤＸ(3,0,-2)", "月間ＶＲ(-1,0)", "週間終値(1)",
        "月間％Ｄ(0,3,0)", "第二銘柄移動平均(0,0)", "さや最大値(0,0)"}) {
    const ItemCall call = *ItemCall::Bind(text);
    const DayIndex day(100);
    EXPECT_EQ(EvaluateWith(store, call.Needs(), call, day, day).Has(0), false) << text;
  }
}

TEST(ItemNeeds, ExtremeArgumentsLoadNoMoreThanThereIs) {
  const store::StockStore store = OpenMarket("item_needs_extreme");
  for (const char* text :
       {"終値(-2147483648)", "移動平均(2147483647,-2147483648)", "ＶＲ(2147483647,-1000001)",
        "週間先行スパン１(2147483647,2147483647,2147483647,-2147483648)",
        "月間出来高比率合計(2147483647,-2147483647)", "第二銘柄％Ｄ(1000000,2147483647,-1)",
        "さや最大値(2147483647,-2147483648)", "遅行スパン(2147483647,-2147483647)"}) {
    const ItemCall call = *ItemCall::Bind(text);
    EXPECT_EQ(EvaluateWith(store, call.Needs(), call, DayIndex(1), DayIndex(kNeedsDays)),
              EvaluateWith(store, kWholeHistory, call, DayIndex(1), DayIndex(kNeedsDays)))
        << text;
  }
}

TEST(ItemNeeds, NoBarMoreThanNeededIsCounted) {
  const store::StockStore store = OpenMarket("item_needs_least");
  const auto fails_with = [&store](const char* text, const History& less) {
    const ItemCall call = *ItemCall::Bind(text);
    const DayIndex day(100);
    EXPECT_EQ(EvaluateWith(store, call.Needs(), call, day, day).Has(0), true) << text;
    EXPECT_EQ(EvaluateWith(store, less, call, day, day).Has(0), false) << text;
  };
  fails_with("日付(-12)", {12, 0, 0, 0});
  fails_with("週間日付(-5)", {1, 5, 0, 0});
  fails_with("月間日付(-2)", {1, 0, 2, 0});
  fails_with("第二銘柄日付(-7)", {1, 0, 0, 7});
}

TEST(StockContext, UnionNeedsTheMoreOfEachSeries) {
  const History both = History{5, 0, 2, 1}.Union({3, 4, 1, History::kAll});
  EXPECT_EQ(both.daily, 5);
  EXPECT_EQ(both.weekly, 4);
  EXPECT_EQ(both.monthly, 2);
  EXPECT_EQ(both.second, History::kAll);
}

TEST(StockContext, LoadReplacesTheStockAndKeepsTheSecond) {
  const store::StockStore store = OpenMarket("item_context");
  const store::StockRecord& a = StockOf(store, "AAA");
  const store::StockRecord& b = StockOf(store, "BBB");
  StockContext context(store, kWholeHistory, DayIndex(1), DayIndex(100), &b, false);
  const auto column = [&context](const char* text) {
    ValueColumn values;
    ItemCall::Bind(text)->Evaluate(context, DayIndex(1), DayIndex(100), values);
    return values;
  };
  for (const char* text : {"さや(0)", "週間移動平均(3,0)", "月間終値(-1)"}) {
    context.Load(a);
    const auto of_a = column(text);
    context.Load(b);
    EXPECT_NE(of_a, column(text)) << text;
    context.Load(a);
    EXPECT_EQ(of_a, column(text)) << text;
  }
}

TEST(StockContext, SplitsAreAppliedToBothStocksOnlyWhenAskedFor) {
  support::StoreBuilder builder("item_splits");
  const std::vector<base::Bar> bars(6, support::FlatBar(30));
  builder.Days(support::Weekdays("2020/01/06", 6)).Stock("AAA", bars).Stock("BBB", bars);
  builder.Split("AAA", 3, "2020/01/08").Split("BBB", 2, "2020/01/08");
  const store::StockStore store = builder.Open();
  const auto value = [&store](const char* text, bool adjust) {
    StockContext context(store, kWholeHistory, DayIndex(6), DayIndex(6), &StockOf(store, "BBB"),
                         adjust);
    context.Load(StockOf(store, "AAA"));
    return ItemValue(text, context, DayIndex(6)).value.ToText();
  };
  EXPECT_EQ(value("終値(-5)", true), "10.0000");
  EXPECT_EQ(value("終値(-5)", false), "30.0000");
  EXPECT_EQ(value("第二銘柄終値(-5)", true), "15.0000");
  EXPECT_EQ(value("第二銘柄終値(-5)", false), "30.0000");
  EXPECT_EQ(value("終値(0)", true), "30.0000");
}

TEST(StockContext, DaysOutsideTheCalendarHaveNoValues) {
  support::StoreBuilder builder("item_empty");
  builder.Stock("AAA");
  const store::StockStore store = builder.Open();
  for (const int32_t day : {0, 1, 5}) {
    StockContext context(store, kWholeHistory, DayIndex(day), DayIndex(day), &StockOf(store, "AAA"),
                         true);
    context.Load(StockOf(store, "AAA"));
    for (const char* text : {"終値(0)", "週間終値(0)", "月間終値(0)", "第二銘柄終値(0)"}) {
      EXPECT_FALSE(ItemValue(text, context, DayIndex(day)).ok) << text;
    }
  }
}

}  // namespace
}  // namespace orin::analysis
