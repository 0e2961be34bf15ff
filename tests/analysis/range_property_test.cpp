#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "analysis/evaluator.h"
#include "random_market.h"
#include "reference_evaluator.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;

/// The same draws in every run; another number in the environment draws others.
uint32_t FirstSeed() {
  const char* text = std::getenv("ORIN_SEED");
  return text == nullptr ? 1 : static_cast<uint32_t>(std::strtoul(text, nullptr, 10));
}

std::string Drawn(uint32_t seed, const std::string& text) {
  return "ORIN_SEED=" + std::to_string(seed) + " " + text;
}

struct Successes {
  int32_t values = 0;
  int32_t truths = 0;
};

// The days first..last: as a range, one by one where `each` divides them, and plainly.
void CompareWithReference(const CompiledCondition& condition, StockContext& context, int32_t first,
                          int32_t last, int32_t each, Successes& successes) {
  const Program program = Program::Build(condition);
  Evaluator evaluator(program);
  base::ValueColumn values;
  std::vector<uint8_t> truths;
  evaluator.EvaluateOperandRange(context, DayIndex(first), DayIndex(last), values);
  evaluator.EvaluateConditionRange(context, DayIndex(first), DayIndex(last), truths);
  ASSERT_EQ(values.Size(), static_cast<size_t>(last - first + 1));
  ASSERT_EQ(truths.size(), values.Size());
  for (int32_t number = first; number <= last; number += each) {
    const DayIndex day(number);
    const auto place = static_cast<size_t>(number - first);
    const Value expected = condition.IsValue()
                               ? ReferenceOperand(condition.or_terms[0][0][0].text, context, day)
                               : Value::Failed();
    ASSERT_EQ(evaluator.EvaluateOperand(context, day), expected) << "day " << number;
    ASSERT_EQ(values.Has(place), expected.ok) << "day " << number;
    ASSERT_EQ(values.At(place), expected.ok ? expected.value : base::kNoValue) << "day " << number;
    const bool truth = ReferenceCondition(condition, context, day);
    ASSERT_EQ(evaluator.EvaluateCondition(context, day), truth) << "day " << number;
    ASSERT_EQ(truths[place] != 0, truth) << "day " << number;
    successes.values += expected.ok ? 1 : 0;
    successes.truths += truth ? 1 : 0;
  }
}

/// Rounds of a market and an expression each, numbered from the seed on.
template <typename Compare>
void ForEachDraw(uint32_t rounds, int32_t days, Compare compare) {
  for (uint32_t seed = FirstSeed(); seed < FirstSeed() + rounds; ++seed) {
    RandomMarket random(seed);
    const base::BarColumns bars = random.Bars(days);
    const base::BarColumns second = random.Bars(days);
    RandomExpression expression(random);
    const std::string text = seed % 2 == 0 ? expression.Operand(0) : expression.Condition();
    compare(seed, random, bars, second, text);
    ASSERT_FALSE(testing::Test::HasFatalFailure()) << Drawn(seed, text);
  }
}

TEST(RangeProperty, RangesAndDaysEqualThePlainEvaluation) {
  Successes successes;
  ForEachDraw(900, 40,
              [&](uint32_t seed, RandomMarket& random, const auto& bars, const auto& second,
                  const std::string& text) {
                StockContext context(bars, seed % 5 == 0 ? nullptr : &second);
                const auto condition = CompileCondition(text);
                if (!condition) return;  // a chain of too many relations
                CompareWithReference(*condition, context, 1 + random.Below(40), 40, 1, successes);
              });
  // The comparison is worth something only where enough expressions have values.
  EXPECT_GT(successes.values, 1000);
  EXPECT_GT(successes.truths, 1000);
}

TEST(RangeProperty, LongRangesEqualThePlainEvaluation) {
  constexpr int32_t kDays = 640;
  Successes successes;
  ForEachDraw(60, kDays,
              [&](uint32_t, RandomMarket& random, const auto& bars, const auto& second,
                  const std::string& text) {
                StockContext context(bars, &second);
                const auto condition = CompileCondition(text);
                if (!condition) return;
                CompareWithReference(*condition, context, 1 + random.Below(20), kDays, 7,
                                     successes);
              });
  EXPECT_GT(successes.values, 500);
}

// Every item of the catalogue in each form it has, by itself, so that none hides behind another
// that fails.
TEST(RangeProperty, EveryItemGivesOverARangeWhatItGivesOnADay) {
  constexpr int32_t kDays = 320;
  Successes successes;
  for (uint32_t seed = FirstSeed(); seed < FirstSeed() + 400; ++seed) {
    RandomMarket random(seed);
    const base::BarColumns bars = random.Bars(kDays);
    const base::BarColumns second = random.Bars(kDays);
    StockContext context(bars, &second);
    const std::string text = RandomExpression(random).AnyItem(seed % 3 == 0 ? 60 : 8);
    CompareWithReference(*CompileCondition(text), context, 1 + random.Below(kDays), kDays, 3,
                         successes);
    ASSERT_FALSE(HasFatalFailure()) << Drawn(seed, text);
  }
  EXPECT_GT(successes.values, 5000);
}

TEST(RangeProperty, FragmentsInAnyOrderEqualThePlainEvaluation) {
  RandomMarket random(FirstSeed() + 8);
  const base::BarColumns bars = random.Bars(40);
  StockContext context(bars, nullptr);
  Successes successes;
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    for (int32_t left = random.Below(14); left > 0; --left) {
      text += random.OneOf({"{",       "}", "{", "}",   "-",   "-",  "H",   "I",  "J",  "+",
                            "*",       "N", "^", "Mod", "mOd", "?",  "5",   "5",  "2",  "7.5",
                            "始値(0)", "(", ")", " ",   "<",   ">=", "And", "Or", "\"", "\xE7"});
    }
    const auto condition = CompileCondition(text);
    if (!condition) continue;  // a chain of too many relations
    CompareWithReference(*condition, context, 39, 40, 1, successes);
    ASSERT_FALSE(HasFatalFailure()) << text;
  }
  EXPECT_GT(successes.values, 200);
}

TradePrices RandomTrade(RandomMarket& random) {
  TradePrices trade;
  if (random.Below(4) != 0) trade.buy = static_cast<float>(random.Below(100000)) / 64;
  if (random.Below(4) != 0) trade.sell = static_cast<float>(random.Below(100000)) / 64;
  if (random.Below(2) != 0) trade.buy_date = base::Date::FromSerial(43000 + random.Below(500));
  return trade;
}

// A range reads the prices of the trade like each day alone, which then stores its own.
TEST(RangeProperty, PricesOfTheTradeAreReadAndStoredAsPlainly) {
  constexpr int32_t kDays = 12;
  int stored = 0;
  for (uint32_t seed = FirstSeed(); seed < FirstSeed() + 1500; ++seed) {
    RandomMarket random(seed);
    const base::BarColumns bars = random.Bars(kDays);
    const std::string text = RandomExpression(random, true).Condition();
    const auto condition = CompileCondition(text);
    if (!condition) continue;  // a chain of too many relations
    StockContext context(bars, nullptr);
    const TradePrices before = RandomTrade(random);
    context.Trade() = before;
    const Program program = Program::Build(*condition);
    Evaluator evaluator(program);
    std::vector<uint8_t> truths;
    evaluator.EvaluateConditionRange(context, DayIndex(1), DayIndex(kDays), truths);
    ASSERT_EQ(context.Trade(), before) << Drawn(seed, text);
    for (int32_t day = 1; day <= kDays; ++day) {
      context.Trade() = before;
      const bool truth = ReferenceCondition(*condition, context, DayIndex(day));
      const TradePrices after = ReferencePrices(*condition, context, DayIndex(day));
      ASSERT_EQ(truths[static_cast<size_t>(day - 1)] != 0, truth) << Drawn(seed, text);
      ASSERT_EQ(evaluator.EvaluateCondition(context, DayIndex(day)), truth) << Drawn(seed, text);
      ASSERT_EQ(context.Trade(), after) << Drawn(seed, text) << " day " << day;
      stored += after == before ? 0 : 1;
    }
  }
  EXPECT_GT(stored, 1000);
}

TEST(RangeProperty, DaysToComeChangeNothing) {
  ForEachDraw(900, 40,
              [](uint32_t, RandomMarket& random, const auto& bars, const auto& second,
                 const std::string& text) {
                const int32_t day = 1 + random.Below(40);
                base::BarColumns cut = bars;
                base::BarColumns cut_second = second;
                cut.Resize(static_cast<size_t>(day));
                cut_second.Resize(static_cast<size_t>(day));
                const auto program = BuildProgram(text);
                if (!program) return;  // a chain of too many relations
                Evaluator evaluator(*program);
                StockContext whole(bars, &second);
                StockContext shortened(cut, &cut_second);
                ASSERT_EQ(evaluator.EvaluateOperand(whole, DayIndex(day)),
                          evaluator.EvaluateOperand(shortened, DayIndex(day)))
                    << "day " << day;
                ASSERT_EQ(evaluator.EvaluateCondition(whole, DayIndex(day)),
                          evaluator.EvaluateCondition(shortened, DayIndex(day)))
                    << "day " << day;
              });
}

}  // namespace
}  // namespace orin::analysis
