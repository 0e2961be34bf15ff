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
using support::BarOf;
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

using Bars = std::vector<base::Bar>;

Bars Closes(const std::vector<double>& closes) {
  Bars bars;
  for (const double close : closes) bars.push_back(FlatBar(close));
  return bars;
}

Bars Volumes(const std::vector<double>& volumes) {
  Bars bars;
  for (const double volume : volumes) bars.push_back(FlatBar(10, volume));
  return bars;
}

base::BarColumns OnWeekdays(const Bars& bars) {
  base::BarColumns columns;
  const auto dates = support::Weekdays("2020/01/06", bars.size());
  for (size_t i = 0; i < bars.size(); ++i) {
    base::Bar bar = bars[i];
    bar.date = dates[i];
    columns.Append(bar);
  }
  return columns;
}

/// The days on which the condition is true of a stock with these bars; the first is a Monday.
std::vector<int32_t> DaysOf(const std::string& text, const Bars& bars, const Bars& second = {}) {
  const base::BarColumns columns = OnWeekdays(bars);
  const base::BarColumns second_columns = OnWeekdays(second);
  StockContext context(columns, second.empty() ? nullptr : &second_columns);
  std::vector<int32_t> days;
  for (int32_t day = 1; day <= static_cast<int32_t>(bars.size()); ++day) {
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

TEST(ConditionRewriting, CommentsWithinACallDoNotKeepItsDay) {
  EXPECT_EQ(ShiftedBack("終値\"注釈\"(0) > 1", 1), "終値\"注釈\"(-1) > 1");
  EXPECT_EQ(ShiftedBack("終値(　0)", 1), "終値(-1)");
  EXPECT_THAT(ShiftedBack("終\"注釈\"値(0) > 1", 1).error().message, StartsWith("「終」が"));
}

TEST(ConditionRewriting, BracesThatAnOrPartsKeepTheirDepthInEveryTerm) {
  EXPECT_EQ(*JoinedWithAnd("{1=1 Or 2=3}", "{1+1}*2=4"),
            "{1=1} And {1+1}*2=4 Or {2=3} And {1+1}*2=4");
  // One behind the other, the open braces would leave the sum in the fourth term without a code.
  const base::BarColumns bars = OnWeekdays(Closes({1}));
  StockContext context(bars, nullptr);
  const std::string five = "{2=1 Or {2=1 Or {2=1 Or {1=1 Or {2=1}}}}}";
  EXPECT_TRUE(Truth(*JoinedWithAnd(five, "{1+1}*2=4"), context, 1));
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

struct Meaning {
  std::string_view name;
  std::vector<std::string> values;
  Bars bars;
  std::vector<int32_t> days;  // worked out by hand
  Bars second = {};
};

std::vector<Meaning> Meanings() {
  const Bars waves = Closes({10, 10, 10, 9, 12, 13, 14, 8, 7, 6});
  const Bars jumps = Closes({5, 4, 6, 6, 7, 3, 7, 8});
  const Bars breakout = Closes({10, 10, 10, 13, 12, 7});
  const Bars turn = Closes({10, 9, 8, 9, 12, 11});
  // Highs and lows that no close reaches.
  const Bars high_wick = {FlatBar(5), BarOf(6, 20, 6, 6, 1), FlatBar(4), FlatBar(7), FlatBar(7),
                          FlatBar(8)};
  const Bars low_wick = {FlatBar(5), BarOf(4, 4, 1, 4, 1), FlatBar(6),
                         FlatBar(3), FlatBar(3),           FlatBar(2)};
  const Bars weeks = Closes({10, 10, 10, 10, 10, 9, 9, 9, 9, 9, 9.5, 10, 10.5, 11, 9});
  const std::string rise = "終値(0) > 終値(-1)";
  const Bars rises = Closes({1, 2, 1, 1, 1, 2, 3, 4, 4});
  return {
      {"上抜け（ゴールデンクロス）", {"終値(0)", "移動平均(3,0)"}, waves, {5}},
      {"下抜け（デッドクロス）", {"終値(0)", "移動平均(3,0)"}, waves, {4, 8}},
      {"最近n日以内に一度でも", {rise, "3"}, rises, {2, 3, 4, 6, 7, 8, 9}},
      {"n日続けて", {rise, "3"}, rises, {8}},
      {"n日来の新高値", {"2"}, jumps, {3, 5, 8}},
      {"n日来の新安値", {"2"}, jumps, {6}},
      {"終値の新高値", {"2"}, high_wick, {4, 6}},
      {"終値の新安値", {"2"}, low_wick, {4, 6}},
      {"高値に近い", {"3", "15"}, jumps, {3, 4, 5, 7, 8}},
      {"安値に近い", {"3", "10"}, Closes({10, 12, 11, 10, 13, 10.9}), {3, 4, 6}},
      {"パーフェクトオーダー", {"1", "2", "3"}, Closes({1, 2, 3, 3, 2, 1, 4}), {3, 7}},
      {"n日続けて上昇", {"2"}, rises, {7, 8}},
      {"n日続けて下降", {"2"}, Closes({5, 4, 3, 3, 2, 1}), {3, 6}},
      {"移動平均が上向きに変わった", {"2"}, Closes({4, 4, 2, 2, 4, 5, 5}), {5}},
      {"週足が上向き", {"2"}, weeks, {13, 14}},
      {"窓を開けて上昇", {"20"}, jumps, {3, 7}},
      {"窓を開けて下降", {"20"}, Closes({10, 8, 7.9, 6, 4.8, 3}), {4, 6}},
      {"出来高急増", {"2", "3"}, Volumes({100, 100, 300, 299, 600, 1349}), {3, 6}},
      {"ＲＳＩが低い（売られすぎ）", {"2", "30"}, turn, {3}},
      {"ＲＳＩが高い（買われすぎ）", {"2", "70"}, turn, {5, 6}},
      {"ボリンジャーバンドを上抜け", {"3", "1"}, breakout, {4}},
      {"ボリンジャーバンドを下抜け", {"3", "1"}, breakout, {6}},
      {"移動平均から上に離れた", {"2", "30"}, Closes({10, 10, 20, 20, 22}), {3}},
      {"移動平均から下に離れた", {"2", "30"}, jumps, {6}},
      {"第二銘柄より強い",
       {"2"},
       Closes({10, 10, 11, 12, 12, 13}),
       {3, 6},
       Closes({10, 10, 10.5, 13, 12, 13})},
  };
}

TEST(ConditionSnippets, EachIsTrueOnTheDaysItsExplanationTells) {
  const std::vector<Meaning> meanings = Meanings();
  for (const Meaning& meaning : meanings) {
    EXPECT_EQ(DaysOf(Made(meaning.name, meaning.values), meaning.bars, meaning.second),
              meaning.days)
        << meaning.name;
  }
  EXPECT_EQ(meanings.size(), Snippets().size()) << "a snippet without a proof";
}

TEST(ConditionSnippets, LeastAndGreatestNumbersCompileWithoutANote) {
  for (const Snippet& snippet : Snippets()) {
    for (const bool is_greatest : {false, true}) {
      std::vector<std::string> values;
      for (const SnippetField& field : snippet.fields) {
        const bool is_number = field.kind == SnippetField::Kind::kNumber;
        const int32_t number = is_greatest ? field.maximum : field.minimum;
        values.push_back(is_number ? std::to_string(number) : std::string(field.usual));
      }
      const auto program = BuildProgram(Made(snippet.name, values));
      ASSERT_TRUE(program) << snippet.name;
      EXPECT_TRUE(program->Notes().empty()) << snippet.name << program->Notes()[0].message;
    }
  }
}

TEST(ConditionSnippets, EveryOrTermOfAConditionIsShifted) {
  const std::string either = "終値(0) > 終値(-1) Or 終値(0) = 100";
  EXPECT_THAT(
      DaysOf(Made("最近n日以内に一度でも", {either, "2"}), Closes({1, 2, 1, 1, 1, 2, 1, 1, 100})),
      ElementsAre(2, 3, 6, 7, 9));
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
