// The weekly and monthly credit balances.

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "analysis/items/item_call.h"
#include "support/credit_files.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;
using store::CreditBalance;
using support::Balance;

constexpr base::SlotRecord kSlot(2);

/// A store of one stock with a credit file for the days from `first` (0-based) on.
store::StockStore OpenWith(const std::vector<base::Date>& days, size_t first,
                           const std::vector<CreditBalance>& balances) {
  support::StoreBuilder builder("credit_items");
  builder.Days(days).Stock("AAA").Build();
  const auto begin = days.begin() + static_cast<ptrdiff_t>(first);
  support::WriteCreditFile(builder.Location(), 1,
                           {begin, begin + static_cast<ptrdiff_t>(balances.size())},
                           {{kSlot, balances}});
  support::NameCreditFiles(builder.Location(), 1, 1);
  return builder.Open();
}

base::ValueColumn Column(const store::StockStore& store, const History& needs, const ItemCall& call,
                         int32_t first, int32_t last) {
  StockContext context(store, needs, DayIndex(first), DayIndex(last), nullptr, true);
  context.Load(store.Master().Stocks().front());
  base::ValueColumn column;
  call.Evaluate(context, DayIndex(first), DayIndex(last), column);
  return column;
}

std::string ValueOn(const store::StockStore& store, std::string_view text, int32_t day) {
  const ItemCall call = *ItemCall::Bind(text);
  const auto column = Column(store, call.Needs(), call, day, day);
  return column.Has(0) ? column.At(0).ToText() : "none";
}

TEST(CreditItems, BalanceIsThatOfTheLastDayOfTheWeekThatHasOne) {
  // Weeks: days 1-3 (Wed to Fri, 2020/01/29), 4-8, 9-13. Months: 1-3, 4-.
  const auto store = OpenWith(support::Weekdays("2020/01/29", 13), 1,
                              {Balance(10, 20), Balance(0, 0), Balance(0, 0), Balance(30, 0),
                               Balance(0, 40), Balance(0, 0), Balance(0, 0)});
  struct Case {
    const char* text;
    int32_t day;
    const char* expected;
  };
  for (const Case& c : {
           Case{"週間売り残(0)", 1, "none"}, {"週間売り残(0)", 2, "10.0000"},
           {"週間買い残(0)", 3, "20.0000"},  {"週間売り残(0)", 4, "none"},
           {"週間売り残(0)", 5, "30.0000"},  {"週間買い残(0)", 5, "0.0000"},
           {"週間売り残(0)", 8, "0.0000"},   {"週間買い残(0)", 8, "40.0000"},
           {"週間買い残(-1)", 4, "20.0000"}, {"週間買い残(-1)", 9, "40.0000"},
           {"週間買い残(0)", 9, "none"},     {"週間買い残(-2)", 13, "20.0000"},
           {"週間買い残(-3)", 13, "none"},   {"月間売り残(0)", 3, "10.0000"},
           {"月間売り残(-1)", 4, "10.0000"}, {"月間売り残(0)", 4, "none"},
           {"月間買い残(0)", 13, "40.0000"}, {"月間買い残(-1)", 13, "20.0000"},
           {"月間買い残(-2)", 13, "none"},   {"月間買い残(-2147483648)", 13, "none"},
       }) {
    EXPECT_EQ(ValueOn(store, c.text, c.day), c.expected) << c.text << " day " << c.day;
  }
}

TEST(CreditItems, ThereAreWeeklyAndMonthlyFormsAlone) {
  for (const char* name : {"週間売り残", "週間買い残", "月間売り残", "月間買い残"}) {
    EXPECT_TRUE(ItemCall::Bind(std::string(name) + "(0)")) << name;
  }
  for (const char* name : {"売り残", "買い残", "第二銘柄売り残", "第二銘柄週間売り残"}) {
    EXPECT_FALSE(ItemCall::Bind(std::string(name) + "(0)")) << name;
  }
  EXPECT_FALSE(ItemCall::Bind("週間売り残"));
}

TEST(CreditItems, WithoutCreditFilesThereIsNoValue) {
  support::StoreBuilder builder("credit_items_none");
  builder.Days(support::Weekdays("2020/01/29", 5)).Stock("AAA", {support::FlatBar(1)});
  EXPECT_EQ(ValueOn(builder.Open(), "週間売り残(0)", 5), "none");
  const base::BarColumns nothing;
  StockContext at_hand(nothing, nullptr);
  EXPECT_FALSE(ItemValue("月間買い残(0)", at_hand, DayIndex(1)).ok);
}

TEST(CreditItems, RangeDayAndWholeHistoryAgreeOnRandomBalances) {
  constexpr int32_t kDays = 90;
  std::mt19937 random(3);
  std::vector<CreditBalance> balances;
  for (int i = 0; i < 80; ++i) {
    const int32_t sell = static_cast<int32_t>(random() % 3);
    balances.push_back(Balance(sell * 10, static_cast<int32_t>(random() % 3)));
  }
  const auto store = OpenWith(support::Weekdays("2020/01/08", kDays), 7, balances);
  History whole = {.daily = History::kAll, .weekly = 1, .monthly = 1};
  whole.credit = true;
  int values = 0;
  for (const char* text : {"週間売り残(0)", "週間買い残(-3)", "月間買い残(0)", "月間売り残(-1)"}) {
    const ItemCall call = *ItemCall::Bind(text);
    const auto range = Column(store, whole, call, 1, kDays);
    for (int32_t day = 1; day <= kDays; ++day) {
      const auto alone = Column(store, call.Needs(), call, day, day);
      const auto place = static_cast<size_t>(day - 1);
      ASSERT_EQ(range.Has(place), alone.Has(0)) << text << " day " << day;
      if (!alone.Has(0)) continue;
      EXPECT_EQ(range.At(place), alone.At(0)) << text << " day " << day;
      ++values;
    }
  }
  EXPECT_GT(values, 200);
}

}  // namespace
}  // namespace orin::analysis
