#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/evaluator.h"
#include "analysis/items/day_keywords.h"
#include "analysis/items/item_call.h"
#include "indicators/bar_table.h"

namespace orin::analysis {
namespace {

using base::BarColumns;
using base::Currency;
using base::DayIndex;

constexpr int32_t kKeywordDays = 60;

std::vector<std::string> AllKeywords() {
  std::vector<std::string> keywords = {"buyselltime", "tcurrentday", "wimulationbuy3"};
  const auto add = [&keywords](const std::string& stem, int last) {
    for (int number = 1; number <= last; ++number) {
      keywords.push_back(stem + std::to_string(number));
    }
  };
  for (const char* prefix : {"", "w", "m"}) {
    add(prefix + std::string("analysisdate"), 7);
    add(prefix + std::string("simulationsale"), 3);
    add(prefix + std::string("simulationbuy"), *prefix == 'w' ? 2 : 3);
  }
  add("dailyanalysistime", 9);
  add("dailyanalysisinterval", 9);
  return keywords;
}

/// Sixty days of two stocks. analysisdate1 is day 20, analysisdate2 day 33, simulationbuy3 day 41.
class DayKeywordTest : public ::testing::Test {
 protected:
  DayKeywordTest()
      : daily_(support::RandomBars(5, kKeywordDays)),
        second_(support::RandomBars(6, kKeywordDays)),
        context_(daily_, &second_) {
    Set(DayKeyword::kAnalysisDate, 1, 20);
    Set(DayKeyword::kAnalysisDate, 2, 33);
    Set(DayKeyword::kSimulationBuy, 3, 41);
  }

  void Set(DayKeyword keyword, int32_t number, int32_t day) {
    context_.KeywordDays().Set({keyword, number}, DayIndex(day));
  }
  std::string At(const std::string& text, int32_t day) {
    const Value value = ItemValue(text, context_, DayIndex(day));
    return value.ok ? value.value.ToText() : "none";
  }
  bool Holds(std::string_view text, int32_t day) {
    const auto program = BuildProgram(text);
    EXPECT_TRUE(program->Notes().empty()) << text;
    return Evaluator(*program).EvaluateCondition(context_, DayIndex(day));
  }
  [[nodiscard]] int32_t WeekOf(int32_t day) const {
    return context_.Days().Weeks().PeriodOf(DayIndex(day));
  }

  StockContext& Context() { return context_; }

 private:
  BarColumns daily_;
  BarColumns second_;
  StockContext context_;
};

TEST(DayKeywordNames, AreExactlyThese) {
  const auto keywords = AllKeywords();
  EXPECT_EQ(keywords.size(), 59U);
  for (const std::string& text : keywords) {
    const auto found = FindDayKeyword(text);
    ASSERT_TRUE(found) << text;
    EXPECT_EQ(DayKeywordText(*found), text);
  }
  for (const char* text : {"",
                           "1",
                           "wsimulationbuy3",
                           "simulationbuy4",
                           "wimulationbuy1",
                           "wimulationbuy2",
                           "imulationbuy3",
                           "mimulationbuy3",
                           "analysisdate",
                           "analysisdate0",
                           "analysisdate8",
                           "analysisdate12",
                           "Analysisdate1",
                           "analysisdate1 ",
                           "wbuyselltime",
                           "mtcurrentday",
                           "tcurrentday1",
                           "buyselltime1",
                           "dailyanalysistime",
                           "dailyanalysistime0",
                           "dailyanalysisinterval10",
                           "wdailyanalysistime1"}) {
    EXPECT_FALSE(FindDayKeyword(text)) << text;
  }
}

TEST_F(DayKeywordTest, NamesOneBarWhateverDayIsExamined) {
  for (const int32_t day : {33, 34, 47, 60}) {
    EXPECT_EQ(At("終値(analysisdate2)", day), At("終値(0)", 33));
    EXPECT_EQ(At("終値(analysisdate2-3)", day), At("終値(0)", 30));
    EXPECT_EQ(At("日付( analysisdate2 - 3 )", day), At("日付(0)", 30));
    EXPECT_EQ(At("移動平均(5,analysisdate1)", day), At("移動平均(5,0)", 20));
    EXPECT_EQ(At("移動平均(5,analysisdate1+2)", day), At("移動平均(5,0)", 22));
    EXPECT_EQ(At("第二銘柄日付(analysisdate1)", day), At("第二銘柄日付(0)", 20));
    EXPECT_EQ(At("さや最大値(2,analysisdate1)", day), At("さや最大値(2,0)", 20));
  }
}

TEST_F(DayKeywordTest, BarsOfLaterDaysBeforeTheFirstAndUnsetOnesHaveNoValue) {
  EXPECT_EQ(At("日付(analysisdate2)", 32), "none");
  EXPECT_EQ(At("日付(analysisdate2-1)", 32), At("日付(0)", 32));
  EXPECT_EQ(At("日付(analysisdate2+27)", 60), At("日付(0)", 60));
  EXPECT_EQ(At("日付(analysisdate2+28)", 60), "none");
  EXPECT_EQ(At("日付(analysisdate1-19)", 60), At("日付(0)", 1));
  EXPECT_EQ(At("日付(analysisdate1-20)", 60), "none");
  EXPECT_EQ(At("日付(analysisdate1-2147483648)", 60), "none");
  EXPECT_EQ(At("日付(analysisdate1+2147483647)", 60), "none");
  EXPECT_EQ(At("日付(analysisdate3)", 60), "none");
  EXPECT_EQ(At("移動平均(0,analysisdate1)", 60), "none");
  // No day of the calendar.
  for (const int32_t day : {0, -4, kKeywordDays + 1}) {
    Set(DayKeyword::kAnalysisDate, 3, day);
    for (const char* text : {"日付(analysisdate3-5)", "週間日付(wanalysisdate3-5)", "analysisdate3",
                             "wanalysisdate3"}) {
      EXPECT_EQ(At(text, 60), "none") << text;
    }
  }
}

TEST_F(DayKeywordTest, WeeksAndMonthsAreThoseOfTheDayAsTheExaminedDaySeesThem) {
  for (const int32_t day : {33, 36, 45, 60}) {
    const std::string weeks_back = std::to_string(WeekOf(33) - WeekOf(day));
    EXPECT_EQ(At("週間終値(wanalysisdate2)", day), At("週間終値(" + weeks_back + ")", day));
    const std::string before = std::to_string(WeekOf(33) - WeekOf(day) - 2);
    EXPECT_EQ(At("週間ＲＳＩ(2,wanalysisdate2-2)", day), At("週間ＲＳＩ(2," + before + ")", day));
  }
  EXPECT_EQ(At("週間日付(wanalysisdate2)", 20), "none");
  EXPECT_EQ(At("週間日付(wanalysisdate1)", 20), At("週間日付(0)", 20));
  EXPECT_EQ(At("週間日付(wimulationbuy3)", 41), At("週間日付(0)", 41));
  EXPECT_NE(At("月間日付(manalysisdate1)", 60), "none");
  EXPECT_EQ(At("月間日付(manalysisdate1-9)", 60), "none");
}

TEST_F(DayKeywordTest, LaggingSpansWaitForTheirBar) {
  EXPECT_EQ(At("遅行スパン(4,analysisdate1)", 22), "none");
  EXPECT_EQ(At("遅行スパン(4,analysisdate1)", 23), At("終値(0)", 23));
  EXPECT_EQ(At("遅行スパン(4,analysisdate1)", 60), At("終値(0)", 23));
  EXPECT_EQ(At("遅行スパン(4,analysisdate1-20)", 60), "none");
  EXPECT_EQ(At("週間遅行スパン(2,wanalysisdate1)", 60), At("週間終値(wanalysisdate1+1)", 60));
}

TEST_F(DayKeywordTest, AloneItIsTheNumberOfItsBar) {
  EXPECT_EQ(At("analysisdate1", 60), "20.0000");
  EXPECT_EQ(At("analysisdate1", 3), "20.0000");
  EXPECT_EQ(At("analysisdate1-3", 60), "17.0000");
  EXPECT_EQ(At("wanalysisdate1", 60), Currency::FromInt(WeekOf(20)).ToText());
  EXPECT_EQ(At("tcurrentday", 12), "12.0000");
  EXPECT_EQ(At("buyselltime", 60), "none");
  EXPECT_TRUE(Holds("tcurrentday - analysisdate1 = 40", 60));
  EXPECT_TRUE(Holds("{tcurrentday - analysisdate1} * 2 = 80", 60));
  EXPECT_TRUE(Holds("{analysisdate1-3} * 2 = 34", 60));
  EXPECT_TRUE(Holds("simulationbuy3-1 = 40", 60));
}

TEST_F(DayKeywordTest, ExaminedDayMakesItAPlainOffsetOnEveryDay) {
  Context().KeywordDays().SetExaminedDay({DayKeyword::kAnalysisDate, 5});
  constexpr std::pair<const char*, const char*> kPairs[] = {
      {"終値(analysisdate5)", "終値(0)"},
      {"移動平均(4,analysisdate5-3)", "移動平均(4,-3)"},
      {"終値(analysisdate5+1)", "終値(1)"},
      {"遅行スパン(4,analysisdate5-3)", "遅行スパン(4,-3)"},
      {"遅行スパン(4,analysisdate5-2)", "遅行スパン(4,-2)"},
      {"週間終値(wanalysisdate5-1)", "週間終値(-1)"},
      {"月間終値(manalysisdate5)", "月間終値(0)"},
      {"第二銘柄終値(analysisdate5-1)", "第二銘柄終値(-1)"},
      {"analysisdate5-2", "tcurrentday-2"}};
  for (const auto& [text, plain] : kPairs) {
    base::ValueColumn range;
    ItemCall::Bind(text)->Evaluate(Context(), DayIndex(1), DayIndex(kKeywordDays), range);
    for (int32_t day = 1; day <= kKeywordDays; ++day) {
      const auto place = static_cast<size_t>(day - 1);
      EXPECT_EQ(range.Has(place) ? range.At(place).ToText() : "none", At(plain, day))
          << text << " day " << day;
      EXPECT_EQ(At(text, day), At(plain, day)) << text << " day " << day;
    }
  }
  EXPECT_EQ(At("wanalysisdate5", 33), Currency::FromInt(WeekOf(33)).ToText());
  EXPECT_EQ(At("wanalysisdate5", 47), Currency::FromInt(WeekOf(47)).ToText());
}

TEST_F(DayKeywordTest, MayStandInBraces) {
  EXPECT_TRUE(Holds("{日付(analysisdate2-3)} * 1 = 日付(analysisdate2-3)", 60));
  EXPECT_TRUE(Holds("{日付(simulationbuy3-3)} * 1 = 日付(simulationbuy3-3)", 60));
  EXPECT_TRUE(Holds("{{日付(analysisdate2 + 3)}} * 1 = 日付(analysisdate2+3)", 60));
}

TEST_F(DayKeywordTest, EveryDayOfARangeIsAsAlone) {
  for (const char* text :
       {"日付(analysisdate2-3)", "移動平均(4,analysisdate1)", "週間終値(wanalysisdate1)",
        "月間終値(manalysisdate2-1)", "遅行スパン(6,analysisdate1)", "analysisdate2-1",
        "週間遅行スパン(3,wanalysisdate1)", "tcurrentday", "終値(analysisdate1-7)"}) {
    const ItemCall call = *ItemCall::Bind(text);
    base::ValueColumn range;
    call.Evaluate(Context(), DayIndex(-2), DayIndex(kKeywordDays + 2), range);
    for (int32_t day = -2; day <= kKeywordDays + 2; ++day) {
      const auto place = static_cast<size_t>(day + 2);
      EXPECT_EQ(range.Has(place) ? range.At(place).ToText() : "none", At(text, day))
          << text << " day " << day;
    }
  }
}

TEST(DayKeywordNeeds, AreAllBarsOfTheSeriesAndCallsAreNoShiftsOfEachOther) {
  const auto needs = [](const char* text) { return ItemCall::Bind(text)->Needs(); };
  EXPECT_EQ(needs("終値(analysisdate1)").daily, History::kAll);
  EXPECT_EQ(needs("週間終値(wanalysisdate1)").weekly, History::kAll);
  EXPECT_EQ(needs("週間終値(wanalysisdate1)").daily, 1);
  EXPECT_EQ(needs("第二銘柄終値(analysisdate1)").second, History::kAll);
  EXPECT_EQ(needs("analysisdate1").daily, 1);
  EXPECT_EQ(needs("終値(tcurrentday-4)").daily, 5);
  EXPECT_EQ(*ItemCall::Bind("終値(tcurrentday-4)"), *ItemCall::Bind("終値(-4)"));
  EXPECT_FALSE(
      ItemCall::Bind("終値(analysisdate1)")->IsShiftOf(*ItemCall::Bind("終値(analysisdate1-1)")));
  EXPECT_FALSE(ItemCall::Bind("終値(analysisdate1)")->IsShiftOf(*ItemCall::Bind("終値(-1)")));
}

TEST_F(DayKeywordTest, ConditionsMixBarsOfKeywordsWithBarsOfTheDay) {
  const auto program = BuildProgram(
      "日付(analysisdate1) - 日付(analysisdate1-1) + 日付(0) - "
      "日付(-1) + 日付(analysisdate2-1) * 0");
  ASSERT_TRUE(program && program->IsValue());
  const auto serial = [this](int32_t day) { return *Currency::Parse(At("日付(0)", day)); };
  const Value value = Evaluator(*program).EvaluateOperand(Context(), DayIndex(50));
  const auto first = *serial(20).Minus(serial(19));
  EXPECT_EQ(value, Value::Of(*first.Plus(*serial(50).Minus(serial(49)))));
}

}  // namespace
}  // namespace orin::analysis
