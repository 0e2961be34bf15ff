#include "analysis/evaluator.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

#include "reference_evaluator.h"
#include "text_cases.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;

class RandomMarket {
 public:
  explicit RandomMarket(uint32_t seed) : random_(seed) {}

  base::BarColumns Bars(int32_t count) {
    base::BarColumns bars;
    int32_t serial = 43000 + Below(500);
    int64_t price = 10000 + Below(5000000);
    for (int32_t day = 0; day < count; ++day) {
      serial += Below(12) == 0 ? 3 : 1;
      base::Bar bar;
      bar.date = base::Date::FromSerial(serial);
      if (Below(8) != 0) Fill(bar, price);
      bars.Append(bar);
    }
    return bars;
  }

  int32_t Below(int32_t limit) {
    return static_cast<int32_t>(random_() % static_cast<uint32_t>(limit));
  }

  template <size_t count>
  std::string OneOf(const std::string_view (&texts)[count]) {
    return std::string(texts[random_() % count]);
  }

 private:
  void Fill(base::Bar& bar, int64_t& price) {
    price = std::max<int64_t>(price + Below(40000) - 20000, 100);
    bar.open = Currency::FromRaw(price);
    bar.low = Currency::FromRaw(price - Below(static_cast<int32_t>(price / 20 + 1)));
    bar.high = Currency::FromRaw(price + Below(static_cast<int32_t>(price / 20 + 1)));
    bar.close = Below(2) == 0 ? bar.low : bar.high;
    bar.volume = Below(10) == 0 ? Currency() : Currency::FromInt(Below(100000));
  }

  std::mt19937 random_;
};

class RandomExpression {
 public:
  explicit RandomExpression(RandomMarket& random) : random_(random) {}

  std::string Condition() {
    std::string text = Relation();
    while (random_.Below(3) != 0) {
      text += random_.OneOf({" And ", "and", " AND ", " Or ", "or", " OR "}) + Relation();
    }
    return text;
  }

  std::string Operand(int depth) {
    std::string text = Term(depth);
    while (random_.Below(5) < 2) {
      text += random_.OneOf({" + ", "+", " - ", "-", " * ", "*", "/", " / ", " ^ ", "^", "\\",
                             " Mod ", "mod", " MOD ", " ? ", " - -", "*-"}) +
              Term(depth);
    }
    if (random_.Below(60) == 0) text += random_.OneOf({"+", "{", "}", "H", "mOd", "\"", "- ", "("});
    return text;
  }

 private:
  std::string Relation() {
    std::string text = Operand(1);
    do {
      text += random_.OneOf({" > ", "<", " >= ", "<=", " = ", "<>"}) + Operand(1);
    } while (random_.Below(6) == 0);
    return text;
  }

  std::string Term(int depth) {
    if (random_.Below(3) == 0 && depth < 4) return Sign() + "{" + Operand(depth + 1) + "}";
    if (random_.Below(3) == 0) return Sign() + Number();
    if (random_.Below(8) == 0) return Function() + Term(depth);
    return Sign() + Item();
  }

  std::string Sign() { return random_.Below(8) == 0 ? "-" : ""; }

  std::string Number() {
    return random_.OneOf({"0", "1", "2", "3.5", "100", "0.0001", "-0.5", "7.50005", "4000000000",
                          "922337203685477"});
  }

  std::string Function() {
    return random_.OneOf({"Ａｂｓ()? ", "Ａｔｎ()? ", "Ｃｏｓ()?", "Ｅｘｐ()? ", "Ｆｉｘ()? ",
                          "Ｉｎｔ()? ", "Ｌｏｇ()?", "Ｓｇｎ()? ", "Ｓｉｎ()? ", "Ｓｑｒ()? ",
                          "Ｔａｎ()? "});
  }

  std::string Item() {
    const std::string offset = random_.Below(2) == 0 ? "0" : "-" + std::to_string(random_.Below(6));
    const std::string period = std::to_string(1 + random_.Below(6));
    const std::string form = random_.OneOf({"", "", "", "週間", "月間", "第二銘柄"});
    if (random_.Below(3) == 0) {
      const std::string name =
          random_.OneOf({"移動平均", "最高値", "最安値", "ＲＳＩ", "出来高合計"});
      return form + name + "(" + period + "," + offset + ")";
    }
    const std::string name = random_.OneOf({"始値", "高値", "安値", "終値", "出来高"});
    return form + name + "(" + offset + ")";
  }

  RandomMarket& random_;
};

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

constexpr int32_t kDays = 40;

struct Successes {
  int32_t values = 0;
  int32_t truths = 0;
};

// All days from `first` on: as a range, one by one, and plainly.
void CompareWithReference(const CompiledCondition& condition, StockContext& context, int32_t first,
                          Successes& successes) {
  const Program program = Program::Build(condition);
  Evaluator evaluator(program);
  base::ValueColumn values;
  std::vector<uint8_t> truths;
  evaluator.EvaluateOperandRange(context, DayIndex(first), DayIndex(kDays), values);
  evaluator.EvaluateConditionRange(context, DayIndex(first), DayIndex(kDays), truths);
  ASSERT_EQ(values.values.size(), static_cast<size_t>(kDays - first + 1));
  ASSERT_EQ(truths.size(), values.values.size());
  for (int32_t number = first; number <= kDays; ++number) {
    const DayIndex day(number);
    const auto place = static_cast<size_t>(number - first);
    const Value expected = condition.IsValue()
                               ? ReferenceOperand(condition.or_terms[0][0][0].text, context, day)
                               : Value::Failed();
    ASSERT_EQ(evaluator.EvaluateOperand(context, day), expected) << "day " << number;
    ASSERT_EQ(values.valid[place] != 0, expected.ok) << "day " << number;
    ASSERT_EQ(values.values[place], expected.ok ? expected.value : Currency()) << "day " << number;
    const bool truth = ReferenceCondition(condition, context, day);
    ASSERT_EQ(evaluator.EvaluateCondition(context, day), truth) << "day " << number;
    ASSERT_EQ(truths[place] != 0, truth) << "day " << number;
    successes.values += expected.ok ? 1 : 0;
    successes.truths += truth ? 1 : 0;
  }
}

TEST(Evaluator, RangesAndDaysEqualThePlainEvaluation) {
  RandomMarket random(20);
  RandomExpression expression(random);
  Successes successes;
  for (int round = 0; round < 700; ++round) {
    const base::BarColumns bars = random.Bars(kDays);
    const base::BarColumns second = random.Bars(kDays);
    StockContext context(bars, round % 5 == 0 ? nullptr : &second);
    const std::string text = round % 2 == 0 ? expression.Operand(0) : expression.Condition();
    const auto condition = CompileCondition(text);
    if (!condition) continue;  // a chain of too many relations
    CompareWithReference(*condition, context, 1 + random.Below(kDays), successes);
    ASSERT_FALSE(HasFatalFailure()) << text;
  }
  // The comparison is worth something only where enough expressions have values.
  EXPECT_GT(successes.values, 1000);
  EXPECT_GT(successes.truths, 1000);
}

TEST(Evaluator, FragmentsInAnyOrderEqualThePlainEvaluation) {
  RandomMarket random(9);
  const base::BarColumns bars = random.Bars(kDays);
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
    CompareWithReference(*condition, context, kDays - 1, successes);
    ASSERT_FALSE(HasFatalFailure()) << text;
  }
  EXPECT_GT(successes.values, 200);
}

TEST(Evaluator, DaysToComeChangeNothing) {
  RandomMarket random(77);
  RandomExpression expression(random);
  for (int round = 0; round < 600; ++round) {
    const base::BarColumns bars = random.Bars(kDays);
    const base::BarColumns second = random.Bars(kDays);
    const int32_t day = 1 + random.Below(kDays);
    base::BarColumns cut = bars;
    base::BarColumns cut_second = second;
    cut.Resize(static_cast<size_t>(day));
    cut_second.Resize(static_cast<size_t>(day));
    const std::string text = round % 2 == 0 ? expression.Operand(0) : expression.Condition();
    const auto program = BuildProgram(text);
    if (!program) continue;  // a chain of too many relations
    Evaluator evaluator(*program);
    StockContext whole(bars, &second);
    StockContext shortened(cut, &cut_second);
    EXPECT_EQ(evaluator.EvaluateOperand(whole, DayIndex(day)),
              evaluator.EvaluateOperand(shortened, DayIndex(day)))
        << text << " on day " << day;
    EXPECT_EQ(evaluator.EvaluateCondition(whole, DayIndex(day)),
              evaluator.EvaluateCondition(shortened, DayIndex(day)))
        << text << " on day " << day;
  }
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
    ASSERT_EQ(values.valid[place] != 0, value.ok) << day;
    if (value.ok) {
      ASSERT_EQ(values.values[place], value.value) << day;
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
    EXPECT_TRUE(values.values.empty());
  }
}

}  // namespace
}  // namespace orin::analysis
