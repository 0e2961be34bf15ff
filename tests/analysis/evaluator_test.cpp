#include "analysis/evaluator.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

#include "random_market.h"
#include "reference_evaluator.h"
#include "text_cases.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;

TEST(Evaluator, GivesEachCaseItsValueOrTruth) {
  const auto cases = ReadTextCases("evaluation_cases.txt");
  ASSERT_GT(cases.size(), 200U);
  base::BarColumns bars = RandomMarket(1).Bars(1);
  StockContext context(bars, nullptr);
  for (const TextCase& each : cases) {
    const auto condition = CompileCondition(each.text);
    ASSERT_TRUE(condition) << each.where;
    const Program program = Program::Build(*condition);
    Evaluator evaluator(program);
    const Value value = evaluator.EvaluateOperand(context, DayIndex(1));
    const bool truth = evaluator.EvaluateCondition(context, DayIndex(1));
    if (each.expected == "true" || each.expected == "false") {
      EXPECT_EQ(truth ? "true" : "false", each.expected) << each.where;
      EXPECT_EQ(ReferenceCondition(*condition, context, DayIndex(1)), truth) << each.where;
      EXPECT_FALSE(value.ok) << each.where;
    } else {
      EXPECT_EQ(value.ok ? value.value.ToText() : "fail", each.expected) << each.where;
      EXPECT_EQ(ReferenceOperand(condition->or_terms[0][0][0].text, context, DayIndex(1)), value)
          << each.where;
      EXPECT_FALSE(truth) << each.where;
    }
  }
}

TEST(Evaluator, FailedOperandLeavesTheErrorValue) {
  const auto program = BuildProgram("1 / 0");
  base::BarColumns bars = RandomMarket(1).Bars(1);
  StockContext context(bars, nullptr);
  EXPECT_EQ(Evaluator(*program).EvaluateOperand(context, DayIndex(1)).value,
            Currency::FromInt(-999));
}

TEST(Evaluator, RangesTooLargeForOneBlockAreEvaluatedInSeveral) {
  constexpr int32_t kManyDays = 1200;
  std::string text = "終値(0)";
  for (int i = 0; i < 20000; ++i) text += i % 2 == 0 ? "+始値(-1)" : "-安値(0)";
  const auto program = BuildProgram(text);
  ASSERT_TRUE(program);
  const base::BarColumns bars = RandomMarket(5).Bars(kManyDays);
  StockContext context(bars, nullptr);
  Evaluator evaluator(*program);
  base::ValueColumn values;
  evaluator.EvaluateOperandRange(context, DayIndex(1), DayIndex(kManyDays), values);
  for (int32_t day = 1; day <= kManyDays; day += 59) {
    const Value value = evaluator.EvaluateOperand(context, DayIndex(day));
    const auto place = static_cast<size_t>(day - 1);
    ASSERT_EQ(values.Has(place), value.ok) << day;
    if (value.ok) {
      ASSERT_EQ(values.At(place), value.value) << day;
    }
  }
}

TEST(Evaluator, OneObjectServesManyStocks) {
  const auto program = BuildProgram("終値(0) > 始値(0) And 終値(0) < 終値(-1) Or 出来高(0) = 0");
  Evaluator reused(*program);
  RandomMarket random(6);
  for (int stock = 0; stock < 50; ++stock) {
    const base::BarColumns bars = random.Bars(10);
    StockContext context(bars, nullptr);
    for (int32_t day = 1; day <= 10; ++day) {
      EXPECT_EQ(reused.EvaluateCondition(context, DayIndex(day)),
                Evaluator(*program).EvaluateCondition(context, DayIndex(day)));
    }
  }
}

TEST(Evaluator, EmptyRangesHaveNoPlaces) {
  const base::BarColumns bars = RandomMarket(5).Bars(5);
  StockContext context(bars, nullptr);
  std::vector<uint8_t> truths = {1, 1};
  base::ValueColumn values;
  values.Reset(2);
  for (const char* text : {"終値(0)", "終値(0) > 0"}) {
    const auto program = BuildProgram(text);
    Evaluator evaluator(*program);
    evaluator.EvaluateConditionRange(context, DayIndex(5), DayIndex(4), truths);
    evaluator.EvaluateOperandRange(context, DayIndex(5), DayIndex(4), values);
    EXPECT_TRUE(truths.empty());
    EXPECT_TRUE(values.Size() == 0);
  }
}

}  // namespace
}  // namespace orin::analysis
