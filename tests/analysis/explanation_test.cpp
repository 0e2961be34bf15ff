#include "analysis/explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/evaluator.h"
#include "demo_market.h"
#include "random_market.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;
using support::FlatBar;
using support::NoBar;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// Weekdays from Monday 2020/01/06 on.
base::BarColumns Series(const std::vector<base::Bar>& bars) {
  base::BarColumns columns;
  const auto dates = support::Weekdays("2020/01/06", bars.size());
  for (size_t i = 0; i < bars.size(); ++i) {
    base::Bar bar = bars[i];
    bar.date = dates[i];
    columns.Append(bar);
  }
  return columns;
}

Explanation Explained(std::string_view text, StockContext& context, int32_t day) {
  auto explanation = Explain(text, context, DayIndex(day));
  EXPECT_TRUE(explanation) << text;
  return explanation ? *explanation : Explanation{};
}

/// Of a condition with one relation.
const ExplainedRelation& OnlyRelation(const Explanation& explanation) {
  return explanation.or_terms.at(0).and_terms.at(0).relations.at(0);
}

TEST(Explanation, OutcomeAndValuesAreThoseOfTheEvaluator) {
  RandomMarket random(31);
  RandomExpression expression(random);
  int truths = 0;
  int values = 0;
  for (int round = 0; round < 1000; ++round) {
    const base::BarColumns bars = random.Bars(40);
    const base::BarColumns second = random.Bars(40);
    StockContext context(bars, round % 4 == 0 ? nullptr : &second);
    const DayIndex day(1 + random.Below(40));
    const std::string text = round % 2 == 0 ? expression.Operand(0) : expression.Condition();
    const auto program = BuildProgram(text);
    const auto explanation = Explain(text, context, day);
    ASSERT_EQ(program.has_value(), explanation.has_value()) << text;
    if (!program) continue;
    Evaluator evaluator(*program);
    const bool truth = evaluator.EvaluateCondition(context, day);
    EXPECT_EQ(explanation->truth, truth) << text;
    truths += truth ? 1 : 0;
    ASSERT_EQ(explanation->value.has_value(), program->IsValue()) << text;
    if (!program->IsValue()) continue;
    EXPECT_EQ(explanation->value->value, evaluator.EvaluateOperand(context, day)) << text;
    EXPECT_EQ(explanation->value->failure.empty(), explanation->value->value.ok) << text;
    values += explanation->value->value.ok ? 1 : 0;
  }
  EXPECT_GT(truths, 40);
  EXPECT_GT(values, 40);
}

TEST(Explanation, FragmentsInAnyOrderAreExplained) {
  RandomMarket random(12);
  const base::BarColumns bars = random.Bars(10);
  StockContext context(bars, nullptr);
  int explained = 0;
  for (int round = 0; round < 1500; ++round) {
    std::string text;
    for (int32_t left = random.Below(14); left > 0; --left) {
      text += random.OneOf({"{",         "}",       "{",
                            "}",         "-",       "H",
                            "+",         "*",       "Mod",
                            "mOd",       "?",       "5",
                            "7.5.",      "始値(0)", "RSI(2,0)",
                            "移動平均(", "(",       ")",
                            " ",         "　",      "<",
                            ">=",        "And",     "Or",
                            "\"",        "\xE7",    "analysisdate1-1",
                            "買い値"});
    }
    const auto explanation = Explain(text, context, DayIndex(10));
    if (!explanation) continue;  // a chain of too many relations
    const auto program = BuildProgram(text);
    EXPECT_EQ(explanation->truth, Evaluator(*program).EvaluateCondition(context, DayIndex(10)))
        << text;
    EXPECT_EQ(explanation->notes, program->Notes()) << text;
    ++explained;
  }
  EXPECT_GT(explained, 1000);
}

TEST(Explanation, OutcomeIsThatOfTheEvaluatorOnTheDemoMarket) {
  const DemoMarket market = ReadDemoMarket();
  ASSERT_EQ(market.stocks.size(), 43U);
  int selected = 0;
  for (const std::string_view text :
       {"移動平均(66,-1) >= 移動平均(22,-1) And  移動平均(66,0) <= 移動平均(22,0) ",
        "％Ｋ(5,-1) <= ％Ｄ(5,3,-1) And ％Ｋ(5,0) > ％Ｄ(5,3,0) And ％Ｄ(5,3,0) < 60",
        "出来高(0) > { 出来高合計(25,-1) / 25 } * 1.2 And 前日比(0) > 0",
        "終値(0) / 終値(-60) > 第二銘柄終値(0) / 第二銘柄終値(-60) * 1.1",
        "週間移動平均(13,0) > 週間移動平均(26,0) And 週間終値(0) > 週間移動平均(13,0)",
        "ＲＳＩ(14,0) <= 35 Or ＲＳＩ(14,0) >= 75 And ＲＳＩ(14,-1) < 75"}) {
    const auto program = BuildProgram(text);
    Evaluator evaluator(*program);
    for (const auto& [code, bars] : market.stocks) {
      StockContext context(bars, &market.stocks.at("^GSPC"));
      for (const int32_t day : {1013, 800, 61}) {
        const bool truth = evaluator.EvaluateCondition(context, DayIndex(day));
        ASSERT_EQ(Explained(text, context, day).truth, truth) << code << " " << day << " " << text;
        selected += truth ? 1 : 0;
      }
    }
  }
  EXPECT_GT(selected, 50);
}

TEST(Explanation, PricesOfTheTradeDecideAsInAnEvaluationAndStayAsTheyAre) {
  const base::BarColumns bars = Series({FlatBar(100), FlatBar(110)});
  for (const std::string_view text :
       {"買い値 * 1.1 < 終値(0) And 買い値 > 100", "買い値 * 1.1 > 終値(0) And 買い値 < 105",
        "終値(0) > 1 Or 買い値 * 2 > 1 And 買い値 > 150", "買い値 * 2 > 1 And 買い値 > 150",
        "買い値 < 1 Or 買い値 * 2 > 1 And 買い値 > 150", "1 > 2 And 買い値 > 1 And 買い値 > 150"}) {
    StockContext context(bars, nullptr);
    context.Trade().buy = 100.0F;
    const Explanation explanation = Explained(text, context, 2);
    EXPECT_EQ(context.Trade().buy, 100.0F) << text;
    const auto program = BuildProgram(text);
    EXPECT_EQ(explanation.truth, Evaluator(*program).EvaluateCondition(context, DayIndex(2)))
        << text;
  }
}

TEST(Explanation, PartsAreTheTextAsItWasTyped) {
  const base::BarColumns bars = Series({FlatBar(1), FlatBar(2), FlatBar(3)});
  StockContext context(bars, nullptr);
  const Explanation explanation = Explained(
      "\"注釈\" {終値(0) + { 1 - \"x\"始値( -1 )}} Mod 2  <= -終値(0)*2<9 and"
      "　出来高(0)>Ｓｑｒ()? 2 Or 1>2",
      context, 3);
  ASSERT_EQ(explanation.or_terms.size(), 2U);
  EXPECT_EQ(explanation.or_terms[1].text, "1>2");
  const auto& terms = explanation.or_terms[0].and_terms;
  ASSERT_EQ(terms.size(), 2U);
  EXPECT_EQ(terms[0].text, "{終値(0) + { 1 - 始値( -1 )}} Mod 2 <= -終値(0)*2<9");
  ASSERT_EQ(terms[0].relations.size(), 2U);
  EXPECT_EQ(terms[0].relations[0].left.text, "{終値(0) + { 1 - 始値( -1 )}} Mod 2");
  EXPECT_EQ(terms[0].relations[0].relation, "<=");
  EXPECT_EQ(terms[0].relations[1].text, "-終値(0)*2<9");
  ASSERT_EQ(terms[0].relations[0].left.items.size(), 2U);
  EXPECT_EQ(terms[0].relations[0].left.items[0].text, "終値(0)");
  EXPECT_EQ(terms[0].relations[0].left.items[1].text, "始値( -1 )");
  EXPECT_EQ(terms[1].text, "出来高(0)>Ｓｑｒ()? 2");
  EXPECT_TRUE(terms[1].relations[0].right.items.empty());
}

/// For each relation "t" or "f", a capital where the outcome hangs on it; " " between And-terms,
/// "|" between Or-terms.
std::string Outline(const Explanation& explanation) {
  std::string text;
  for (const ExplainedOrTerm& or_term : explanation.or_terms) {
    if (!text.empty()) text += "|";
    for (size_t i = 0; i < or_term.and_terms.size(); ++i) {
      if (i > 0) text += " ";
      for (const ExplainedRelation& relation : or_term.and_terms[i].relations) {
        text += relation.needed ? (relation.truth ? "T" : "F") : (relation.truth ? "t" : "f");
      }
    }
  }
  return text;
}

TEST(Explanation, RelationsTheOutcomeDoesNotHangOnAreMarkedAndHaveTheirTruth) {
  const base::BarColumns bars = Series({FlatBar(1)});
  StockContext context(bars, nullptr);
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"1 > 0", "T"},
      {"1 > 0 And 1 > 2 And 3 > 2", "T F t"},
      {"1 < 2 < 1 < 5", "TFt"},
      {"1 > 2 And 1 > 0 Or 3 > 2 Or 1 > 5", "F t|T|f"},
      {"1 > 0 And 終値(0) And 2 > 1", "T F t"},
      {"1 > 0 And 終値(-1) > 0", "T F"},
      // Those that can store a price of the trade are looked at all the same.
      {"1 > 2 And 買い値 > 2 And 3 > 2", "F T t"},
      {"1 > 0 Or 2 > 買い値 Or 2 > 1 < 買い値 * 2 < 9", "T|f|ttT"},
      {"1 > 2 And 売り値 > 1", "F F"},
  };
  context.Trade().buy = 4.0F;
  for (const auto& [text, outline] : cases) {
    EXPECT_EQ(Outline(Explained(text, context, 1)), outline) << text;
  }
}

TEST(Explanation, FirstFalseRelationIsFoundWithItsDifference) {
  const base::BarColumns bars = Series({FlatBar(10), FlatBar(12)});
  StockContext context(bars, nullptr);
  const Explanation explanation =
      Explained("終値(0) > 1 And 終値(-1) > 終値(0) And 終値(0) < 0", context, 2);
  const auto found = FindFirstFalse(explanation.or_terms[0]);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->and_term, 2U);
  EXPECT_EQ(found->relation->difference, Currency::FromInt(-2));
  EXPECT_EQ(found->relation->difference_rate, Currency::FromRaw(-166667));
  // Of nothing there is no percentage.
  const auto& last = explanation.or_terms[0].and_terms[2].relations[0];
  EXPECT_EQ(last.difference, Currency::FromInt(12));
  EXPECT_FALSE(last.difference_rate);
  EXPECT_FALSE(FindFirstFalse(Explained("1 > 0", context, 2).or_terms[0]));
}

TEST(Explanation, FailuresAreTold) {
  const base::BarColumns bars =
      Series({FlatBar(10), NoBar(), FlatBar(12), FlatBar(13), NoBar(), FlatBar(0, 0)});
  const base::BarColumns second =
      Series({FlatBar(1), FlatBar(1), NoBar(), FlatBar(1), FlatBar(1), FlatBar(1)});
  struct Case {
    int32_t day;
    bool has_second;
    const char* text;
    const char* failure;
  };
  const std::vector<Case> cases = {
      {5, true, "終値(0)", "2020/01/10 のデータがありません。"},
      {6, true, "終値(-1)", "2020/01/10 のデータがありません。"},
      {4, true, "移動平均(5,0)", "日足が足りません（5本必要ですが、4本しかありません）。"},
      {4, true, "移動平均(2,-3)", "日足が足りません（5本必要ですが、4本しかありません）。"},
      {4, true, "移動平均(3,0)", "期間の最初の足（2020/01/07）のデータがありません。"},
      {4, true, "前日比(-1)", "期間の最初の足（2020/01/07）のデータがありません。"},
      {5, true, "移動平均乖離率(4,0)",
       "期間にデータのない足があります（2本、最も新しいのは 2020/01/10）。"},
      {4, true, "週間終値(-1)", "週足が足りません（2本必要ですが、1本しかありません）。"},
      {4, true, "月間終値(-2)", "月足が足りません（3本必要ですが、1本しかありません）。"},
      {4, false, "第二銘柄終値(0)", "第二銘柄がありません。"},
      {3, true, "第二銘柄終値(0)", "2020/01/08 のデータがありません。"},
      {3, true, "さや(0)", "2020/01/08 の第二銘柄のデータがありません。"},
      {5, true, "さや最大値(2,0)", "2020/01/10 のデータがありません。"},
      {4, true, "ＶＲ(5,0)", "その日までのデータのある足が足りないので、計算できません。"},
      {4, true, "買い値", "シミュレーション中の売買がまだありません。"},
      {4, true, "終値(1)", "分析する日より後になる"},
      {4, true, "終値()", "引数は1個"},
      {4, true, "終わり値(0)", "分析項目「終わり値」はありません"},
      {4, true, "", "ここに数値か分析項目がありません。"},
      {6, true, "1 + 2 / 終値(0)", "「2.0000 / 0.0000」は 0 での割り算"},
      {6, true, "5 Mod 終値(0)", "「5.0000 Mod 0.0000」は 0 での割り算"},
      {4, true, "Ｌｏｇ()? {終値(0) - 20}", "「Ｌｏｇ()? -7.0000」の結果がない"},
      {4, true, "終値(0) * 終値(-1) / {終値(-2) + 1}", "「終値(-2)」：2020/01/07 のデータ"},
  };
  for (const Case& each : cases) {
    StockContext context(bars, each.has_second ? &second : nullptr);
    const Explanation explanation = Explained(each.text, context, each.day);
    ASSERT_TRUE(explanation.value) << each.text;
    EXPECT_FALSE(explanation.value->value.ok) << each.text;
    EXPECT_THAT(explanation.value->failure, HasSubstr(each.failure)) << each.text;
  }
}

TEST(Explanation, ItemsTellTheBarsTheyRead) {
  // From Monday 2020/01/06 to Friday 2020/02/07.
  const base::BarColumns bars = Series(std::vector<base::Bar>(25, FlatBar(5)));
  struct Case {
    const char* text;
    std::vector<const char*> dates;  // of the oldest bar and of the examined one
    int64_t count;
    bool from_first;
  };
  const std::vector<Case> cases = {
      {"終値(-1)", {"2020/02/05", "2020/02/05", "2020/02/05", "2020/02/05"}, 1, false},
      {"移動平均(3,-1)", {"2020/02/03", "2020/02/03", "2020/02/05", "2020/02/05"}, 3, false},
      {"前日比(0)", {"2020/02/05", "2020/02/05", "2020/02/06", "2020/02/06"}, 2, false},
      {"週間終値(0)", {"2020/02/03", "2020/02/06", "2020/02/03", "2020/02/06"}, 1, false},
      {"週間移動平均(2,-1)", {"2020/01/20", "2020/01/24", "2020/01/27", "2020/01/31"}, 2, false},
      {"月間移動平均(2,0)", {"2020/01/06", "2020/01/31", "2020/02/03", "2020/02/06"}, 2, false},
      {"ＶＲ(3,-1)", {"2020/01/06", "2020/01/06", "2020/02/05", "2020/02/05"}, 23, true},
      {"遅行スパン(3,-4)", {"2020/01/31", "2020/01/31", "2020/02/04", "2020/02/04"}, 3, false},
  };
  StockContext context(bars, nullptr);
  for (const Case& each : cases) {
    const Explanation explanation = Explained(each.text, context, 24);
    ASSERT_TRUE(explanation.value && explanation.value->IsOneItem()) << each.text;
    const auto& read = explanation.value->items[0].bars;
    ASSERT_TRUE(read) << each.text;
    EXPECT_THAT(
        (std::vector<std::string>{read->oldest.first.ToText(), read->oldest.last.ToText(),
                                  read->examined.first.ToText(), read->examined.last.ToText()}),
        ElementsAre(each.dates[0], each.dates[1], each.dates[2], each.dates[3]))
        << each.text;
    EXPECT_EQ(read->count, each.count) << each.text;
    EXPECT_EQ(read->from_first, each.from_first) << each.text;
  }
  EXPECT_FALSE(Explained("終値(-24)", context, 24).value->items[0].bars);
}

TEST(Explanation, NotesOfTheCompilerComeWithIt) {
  const base::BarColumns bars = Series({FlatBar(5)});
  StockContext context(bars, nullptr);
  const Explanation explanation = Explained("終値(0) > RSI(14,0) And 1", context, 1);
  ASSERT_EQ(explanation.notes.size(), 2U);
  EXPECT_EQ(explanation.notes[0].position, 9U);
  // The letters that would read as operators are not taken apart.
  EXPECT_EQ(OnlyRelation(explanation).right.failure, explanation.notes[0].message);
  EXPECT_TRUE(OnlyRelation(explanation).right.items.empty());
  EXPECT_FALSE(Explain("1<2<3<4<5<6", context, DayIndex(1)));
}

}  // namespace
}  // namespace orin::analysis
