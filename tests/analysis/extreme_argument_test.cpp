#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/evaluator.h"
#include "analysis/explanation.h"
#include "analysis/items/item_call.h"
#include "analysis/items/item_catalogue.h"
#include "indicators/bar_table.h"
#include "indicators/indicator.h"
#include "random_market.h"
#include "reference_evaluator.h"

namespace orin::analysis {
namespace {

using base::BarColumns;
using base::DayIndex;

constexpr int32_t kFarDays = 90;

struct Argument {
  std::string_view text;
  bool is_far;  // further than any series here reaches, or more than any parameter allows
};
constexpr Argument kArguments[] = {
    {"-2147483648", true},
    {"-2147483647", true},
    {"-1000001", true},
    {"0", false},
    {"1", false},
    {"1000000", true},
    {"2147483647", true},
    {"2147483648", true},
    {"-2147483649", true},
    {"9223372036854775808", true},
    {"-9223372036854775808", true},
    {"99999999999999999999", true},
};

/// An item call as the texts of its arguments.
struct Call {
  std::string name;
  std::vector<std::string> arguments;

  [[nodiscard]] std::string Text() const {
    std::string text = name + "(";
    for (size_t i = 0; i < arguments.size(); ++i) text += (i == 0 ? "" : ",") + arguments[i];
    return text + ")";
  }
  [[nodiscard]] std::string With(size_t place, std::string_view argument) const {
    Call changed = *this;
    changed.arguments[place] = argument;
    return changed.Text();
  }
};

/// Every form of every item that takes arguments of its own, each 3 or near it, on the day itself.
std::vector<Call> AllCalls() {
  std::vector<Call> calls;
  for (const ItemEntry& entry : ItemCatalogue()) {
    BoundItem item;
    item.entry = &entry;
    item.indicator = indicators::FindIndicator(entry.indicator);
    if (entry.family->ending == ItemFamily::Ending::kNone) continue;
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      Call call = {ItemName(entry, form), {}};
      for (size_t i = 0; i < entry.ParameterCount(); ++i) {
        const ArgumentLimits limits = item.LimitsOf(i);
        call.arguments.push_back(std::to_string(std::clamp(3, limits.minimum, limits.maximum)));
      }
      call.arguments.emplace_back("0");
      calls.push_back(call);
    }
  }
  return calls;
}

/// A stock and a second one on the same days, alone in their world.
struct FarSeries {
  explicit FarSeries(int32_t days)
      : last(std::max(days, 1)),
        daily(days == 0 ? BarColumns() : RandomMarket(5).Bars(days)),
        second(SecondOn(daily)),
        context(daily, &second) {
    // A keyword of the run's own is looked at wherever the day is there.
    context.KeywordDays().Set({DayKeyword::kAnalysisDate, 1}, DayIndex(days / 2));
  }

  int32_t last;
  BarColumns daily;
  BarColumns second;
  StockContext context;

 private:
  static BarColumns SecondOn(const BarColumns& columns) {
    BarColumns bars = support::RandomBars(7, static_cast<int>(columns.Size()));
    bars.dates = columns.dates;
    return bars;
  }
};

/// Over all days, on the last one, and plainly; gives whether any day has a value or is true.
bool HoldsAnywhere(const std::string& text, FarSeries& series) {
  const auto condition = CompileCondition(text);
  const Program program = Program::Build(*condition);
  const History& needs = program.Needs();
  EXPECT_GE(std::min({needs.weekly, needs.monthly, needs.second, needs.daily - 1}), 0) << text;
  Evaluator evaluator(program);
  base::ValueColumn values;
  std::vector<uint8_t> truths;
  evaluator.EvaluateOperandRange(series.context, DayIndex(1), DayIndex(series.last), values);
  evaluator.EvaluateConditionRange(series.context, DayIndex(1), DayIndex(series.last), truths);
  bool holds = false;
  for (const int32_t day : {1, (series.last + 1) / 2, series.last}) {
    const auto place = static_cast<size_t>(day - 1);
    const Value plain = condition->IsValue() ? ReferenceOperand(condition->or_terms[0][0][0].text,
                                                                series.context, DayIndex(day))
                                             : Value::Failed();
    const bool truth = ReferenceCondition(*condition, series.context, DayIndex(day));
    EXPECT_EQ(evaluator.EvaluateOperand(series.context, DayIndex(day)), plain) << text;
    EXPECT_EQ(values.At(place), plain.ok ? plain.value : base::kNoValue) << text << " day " << day;
    EXPECT_EQ(evaluator.EvaluateCondition(series.context, DayIndex(day)), truth) << text;
    EXPECT_EQ(truths[place] != 0, truth) << text << " day " << day;
    holds = holds || plain.ok || truth;
  }
  return holds;
}

TEST(ExtremeArgument, NoItemHasAValueOfBarsThatNoSeriesHas) {
  for (const int32_t days : {0, 1, 12, kFarDays}) {
    FarSeries series(days);
    for (const Call& call : AllCalls()) {
      for (size_t place = 0; place < call.arguments.size(); ++place) {
        for (const Argument& argument : kArguments) {
          const std::string text = call.With(place, argument.text);
          const bool holds = HoldsAnywhere(text, series);
          if (argument.is_far || days == 0) {
            EXPECT_FALSE(holds) << text << " over " << days << " days";
          }
        }
      }
    }
    ASSERT_FALSE(HasFailure());
  }
}

// Calls of one condition that differ in their offset alone share a column.
TEST(ExtremeArgument, FarOffsetsBesideNearOnesChangeNoValueOfThem) {
  FarSeries series(kFarDays);
  for (const Call& call : AllCalls()) {
    const size_t offset = call.arguments.size() - 1;
    const std::string near = call.Text();
    for (const Argument& argument : kArguments) {
      const std::string far = call.With(offset, argument.text);
      EXPECT_FALSE(argument.is_far && HoldsAnywhere(near + " + " + far, series)) << far;
      HoldsAnywhere(near + " <> " + far + " Or " + near + " = " + near, series);
      HoldsAnywhere(far + " > " + call.With(offset, "-2147483648") + " And " + near + " > 0",
                    series);
    }
    ASSERT_FALSE(HasFailure()) << near;
  }
}

TEST(ExtremeArgument, PeriodsThatAddUpBeyondAnIntegerHaveNoValue) {
  FarSeries series(kFarDays);
  for (const Call& call : AllCalls()) {
    for (const char* argument : {"2147483647", "-2147483648"}) {
      Call extreme = call;
      std::fill(extreme.arguments.begin(), extreme.arguments.end(), "2147483647");
      extreme.arguments.back() = argument;
      EXPECT_FALSE(HoldsAnywhere(extreme.Text(), series)) << extreme.Text();
    }
  }
}

TEST(ExtremeArgument, KeywordsAreCountedFromWithoutOverflow) {
  FarSeries series(kFarDays);
  for (const Call& call : AllCalls()) {
    const size_t offset = call.arguments.size() - 1;
    for (const char* keyword :
         {"analysisdate1", "wanalysisdate1", "manalysisdate1", "tcurrentday"}) {
      for (const char* days : {"-2147483648", "+2147483647", "+2147483648", "-9223372036854775808",
                               "-99999999999999999999"}) {
        const std::string text = call.With(offset, std::string(keyword) + days);
        EXPECT_FALSE(HoldsAnywhere(text, series)) << text;
      }
    }
  }
  EXPECT_TRUE(HoldsAnywhere("analysisdate1+2147483647 > 2147483647", series));
  EXPECT_TRUE(HoldsAnywhere("tcurrentday-2147483648 < -2147483557", series));
}

TEST(ExtremeArgument, AnExplanationSaysWhyThereIsNoValue) {
  for (const int32_t days : {1, kFarDays}) {
    FarSeries series(days);
    for (const Call& call : AllCalls()) {
      for (size_t place = 0; place < call.arguments.size(); ++place) {
        for (const Argument& argument : kArguments) {
          if (!argument.is_far) continue;
          const std::string text = call.With(place, argument.text);
          const auto explained = Explain(text, series.context, DayIndex(series.last));
          ASSERT_TRUE(explained && explained->value) << text;
          EXPECT_FALSE(explained->value->value.ok) << text;
          EXPECT_FALSE(explained->value->failure.empty()) << text;
        }
      }
    }
  }
}

}  // namespace
}  // namespace orin::analysis
