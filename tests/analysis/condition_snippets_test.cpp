#include "analysis/condition_snippets.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/condition_rewriting.h"
#include "analysis/evaluator.h"
#include "analysis/program.h"
#include "random_market.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::DayIndex;
using support::FlatBar;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

bool Truth(const std::string& text, StockContext& context, int32_t day) {
  const auto program = BuildProgram(text);
  EXPECT_TRUE(program) << text;
  if (!program) return false;
  Evaluator evaluator(*program);
  return evaluator.EvaluateCondition(context, DayIndex(day));
}

/// The days on which the condition is true of a stock with these closes.
std::vector<int32_t> DaysOf(const std::string& text, const std::vector<double>& closes) {
  base::BarColumns columns;
  const auto dates = support::Weekdays("2020/01/06", closes.size());
  for (size_t i = 0; i < closes.size(); ++i) {
    base::Bar bar = FlatBar(closes[i]);
    bar.date = dates[i];
    columns.Append(bar);
  }
  StockContext context(columns, nullptr);
  std::vector<int32_t> days;
  for (int32_t day = 1; day <= static_cast<int32_t>(closes.size()); ++day) {
    if (Truth(text, context, day)) days.push_back(day);
  }
  return days;
}

std::string Made(std::string_view name, const std::vector<std::string>& values) {
  const auto found = std::ranges::find(Snippets(), name, &Snippet::name);
  EXPECT_NE(found, Snippets().end()) << name;
  const auto text = MakeSnippet(*found, values);
  EXPECT_TRUE(text) << (text ? "" : text.error().message);
  return text.value_or("");
}

TEST(ConditionRewriting, ShiftedTextHasTheValueOfTheDayBefore) {
  RandomMarket random(5);
  RandomExpression expression(random);
  int compared = 0;
  for (int round = 0; round < 500; ++round) {
    const base::BarColumns bars = random.Bars(40);
    const base::BarColumns second = random.Bars(40);
    StockContext context(bars, &second);
    const std::string text = expression.Operand(0);
    const int32_t days = 1 + random.Below(5);
    const int32_t day = 20 + random.Below(20);
    // Weeks and months move by weeks and months.
    if (text.find("週") != std::string::npos || text.find("月") != std::string::npos) continue;
    const auto shifted = ShiftedBack(text, days);
    if (!shifted) continue;
    const auto now = BuildProgram(*shifted);
    const auto then = BuildProgram(text);
    ASSERT_EQ(now.has_value(), then.has_value()) << text;
    if (!now) continue;
    const Value left = Evaluator(*now).EvaluateOperand(context, DayIndex(day));
    const Value right = Evaluator(*then).EvaluateOperand(context, DayIndex(day - days));
    EXPECT_EQ(left.ok, right.ok) << text << " / " << *shifted;
    if (left.ok && right.ok) {
      EXPECT_EQ(left.value, right.value) << text << " / " << *shifted;
    }
    ++compared;
  }
  EXPECT_GT(compared, 100);
  EXPECT_EQ(*ShiftedBack("移動平均( 25 , -1 ) + 銘柄ランク(0) \"終値(0)\"", 2),
            "移動平均( 25 ,-3) + 銘柄ランク(0) \"終値(0)\"");
  EXPECT_THAT(ShiftedBack("終値(analysisdate1)", 1).error().message,
              HasSubstr("「終値(analysisdate1)」"));
  EXPECT_FALSE(ShiftedBack("終値(0", 1));
}

TEST(ConditionRewriting, JoinedTextIsTrueWhereBothOrEitherAre) {
  RandomMarket random(6);
  RandomExpression expression(random);
  int truths = 0;
  for (int round = 0; round < 400; ++round) {
    const base::BarColumns bars = random.Bars(30);
    const base::BarColumns second = random.Bars(30);
    StockContext context(bars, &second);
    const int32_t day = 10 + random.Below(20);
    const std::string a = expression.Condition();
    const std::string b = expression.Condition();
    const auto both = JoinedWithAnd(a, b);
    const auto either = JoinedWithOr(a, b);
    if (!both || !either) continue;
    const bool left = Truth(a, context, day);
    const bool right = Truth(b, context, day);
    EXPECT_EQ(Truth(*both, context, day), left && right) << *both;
    EXPECT_EQ(Truth(*either, context, day), left || right) << *either;
    truths += left && right ? 1 : 0;
  }
  EXPECT_GT(truths, 5);
  EXPECT_EQ(*JoinedWithAnd("1=1 Or 2=2", "3=3 \"注釈\""), "1=1 And 3=3 Or 2=2 And 3=3");
  EXPECT_EQ(*JoinedWithAnd("　 ", "1=1"), "1=1");
  std::string many = "1=1";
  for (int i = 0; i < 11; ++i) many += " Or 1=1";
  EXPECT_THAT(JoinedWithAnd(many, many).error().message, HasSubstr("144"));
}

TEST(ConditionSnippets, UsualFieldsGiveConditionsWithoutANote) {
  for (const Snippet& snippet : Snippets()) {
    std::vector<std::string> values;
    for (const SnippetField& field : snippet.fields) values.emplace_back(field.usual);
    const auto text = MakeSnippet(snippet, values);
    ASSERT_TRUE(text) << snippet.name << text.error().message;
    const auto program = BuildProgram(*text);
    ASSERT_TRUE(program) << *text;
    EXPECT_FALSE(program->IsValue()) << *text;
    EXPECT_TRUE(program->Notes().empty()) << *text;
  }
}

TEST(ConditionSnippets, CrossingIsTrueOnItsDayAlone) {
  const std::vector<double> closes = {10, 10, 10, 9, 12, 13, 14, 8, 7, 6};
  EXPECT_THAT(DaysOf(Made("上抜け（ゴールデンクロス）", {"終値(0)", "移動平均(3,0)"}), closes),
              ElementsAre(5));
  EXPECT_THAT(DaysOf(Made("下抜け（デッドクロス）", {"終値(0)", "移動平均(3,0)"}), closes),
              ElementsAre(4, 8));
}

TEST(ConditionSnippets, SpansOfDaysAreThoseBeforeAndTheDayItself) {
  const std::vector<double> closes = {1, 2, 1, 1, 1, 2, 3, 4, 4};
  const std::string rise = "終値(0) > 終値(-1)";
  EXPECT_THAT(DaysOf(rise, closes), ElementsAre(2, 6, 7, 8));
  EXPECT_THAT(DaysOf(Made("最近n日以内に一度でも", {rise, "3"}), closes),
              ElementsAre(2, 3, 4, 6, 7, 8, 9));
  EXPECT_THAT(DaysOf(Made("n日続けて", {rise, "3"}), closes), ElementsAre(8));
  EXPECT_THAT(DaysOf(Made("n日続けて上昇", {"2"}), closes), ElementsAre(7, 8));
  EXPECT_THAT(DaysOf(Made("最近n日以内に一度でも", {rise + " Or 終値(0) = 100", "2"}), closes),
              ElementsAre(2, 3, 6, 7, 8, 9));
}

TEST(ConditionSnippets, HighsAndDistancesAreMeasuredAgainstTheDaysBefore) {
  const std::vector<double> closes = {5, 4, 6, 6, 7, 3, 7, 8};
  EXPECT_THAT(DaysOf(Made("n日来の新高値", {"2"}), closes), ElementsAre(3, 5, 8));
  EXPECT_THAT(DaysOf(Made("n日来の新安値", {"2"}), closes), ElementsAre(6));
  EXPECT_THAT(DaysOf(Made("高値に近い", {"3", "15"}), closes), ElementsAre(3, 4, 5, 7, 8));
  EXPECT_THAT(DaysOf(Made("窓を開けて上昇", {"20"}), closes), ElementsAre(3, 7));
  EXPECT_THAT(DaysOf(Made("移動平均から下に離れた", {"2", "30"}), closes), ElementsAre(6));
}

TEST(ConditionSnippets, FieldsThatCannotBeUsedAreNamed) {
  const auto fault = [](std::string_view name, std::vector<std::string> values) {
    const auto text = MakeSnippet(*std::ranges::find(Snippets(), name, &Snippet::name), values);
    return text ? "" : text.error().message;
  };
  EXPECT_EQ(fault("n日来の新高値", {"0"}), "日数は1から1000までの数字で指定して下さい。");
  EXPECT_THAT(fault("n日来の新高値", {"1e9"}), StartsWith("日数は"));
  EXPECT_EQ(fault("上抜け（ゴールデンクロス）", {"", "1"}), "短い方が空です。");
  EXPECT_THAT(fault("上抜け（ゴールデンクロス）", {"1 > 2", "1"}), StartsWith("短い方は値の式"));
  EXPECT_THAT(fault("n日続けて", {"終値(0)", "2"}), StartsWith("条件には比較が必要"));
  EXPECT_THAT(fault("n日続けて", {"終わり値(0) > 1", "2"}), StartsWith("条件の1文字目"));
}

}  // namespace
}  // namespace orin::analysis
