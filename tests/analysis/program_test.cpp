#include "analysis/program.h"

#include <algorithm>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "analysis/evaluator.h"
#include "base/text.h"
#include "text_cases.h"

namespace orin::analysis {
namespace {

std::string NoteList(const std::vector<Note>& notes) {
  std::string list;
  for (const Note& note : notes) {
    list += "\n  " + std::to_string(note.position) + ":" + note.message;
  }
  return list;
}

// Three bars with data and one without.
struct FourDays {
  FourDays() {
    for (int32_t day = 1; day <= 4; ++day) {
      base::Bar bar;
      bar.date = base::Date::FromSerial(43000 + day);
      if (day != 3) {
        bar.open = bar.low = base::Currency::FromInt(day);
        bar.high = bar.close = base::Currency::FromInt(10 * day);
        bar.volume = base::Currency::FromInt(day - 1);
      }
      bars.Append(bar);
    }
  }

  Value ValueOf(std::string_view text, int32_t day) {
    const auto program = BuildProgram(text);
    StockContext context(bars, nullptr);
    return program ? Evaluator(*program).EvaluateOperand(context, base::DayIndex(day))
                   : Value::Failed();
  }

  base::BarColumns bars;
};

TEST(ProgramNotes, NameThePlaceInTheTextAsTyped) {
  for (const TextCase& each : ReadTextCases("note_cases.txt")) {
    const auto program = BuildProgram(each.text);
    ASSERT_TRUE(program) << each.where;
    const std::vector<Note>& notes = program->Notes();
    if (each.expected == "none") {
      EXPECT_TRUE(notes.empty()) << each.where << NoteList(notes);
      continue;
    }
    const auto expected = base::SplitByDelimiter(each.expected, " ; ");
    EXPECT_EQ(notes.size(), expected->size()) << each.where << NoteList(notes);
    for (size_t i = 0; i < std::min(notes.size(), expected->size()); ++i) {
      const size_t colon = (*expected)[i].find(':');
      EXPECT_EQ(std::to_string(notes[i].position), (*expected)[i].substr(0, colon)) << each.where;
      EXPECT_THAT(notes[i].message, testing::HasSubstr((*expected)[i].substr(colon + 1)))
          << each.where;
      EXPECT_TRUE(notes[i].message.ends_with("。")) << each.where << NoteList(notes);
    }
  }
}

TEST(ProgramNotes, StopAtAHundred) {
  const auto program = BuildProgram(Repeated("未知(0)+", 5000) + "1");
  ASSERT_TRUE(program);
  EXPECT_EQ(program->Notes().size(), 100U);
}

TEST(ProgramNotes, ManyUnknownNamesCostNoSearchBehindTheLastNote) {
  std::string text = "0";
  for (int i = 0; i < 130000; ++i) text += "+x" + std::to_string(i);
  const std::clock_t start = std::clock();
  EXPECT_EQ(BuildProgram(text)->Notes().size(), 100U);
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 8.0);
}

TEST(Program, NeedsWhatAllItsItemsNeed) {
  const auto needs = [](std::string_view text) { return BuildProgram(text)->Needs(); };
  EXPECT_EQ(needs("1 > 0").weekly, 0);
  EXPECT_GE(needs("終値(-9) > 0").daily, 10);
  const History both = needs("終値(0) > 1 And 移動平均(25,0) > 2 Or 週間終値(-3) > 1");
  EXPECT_GE(both.daily, 25);
  EXPECT_GE(both.weekly, 4);
  EXPECT_EQ(both.monthly, 0);
  EXPECT_GE(needs("第二銘柄終値(-4)").second, 5);
}

TEST(Program, KnowsWhetherItReadsTheSecondStock) {
  const auto needs = [](std::string_view text) { return BuildProgram(text)->NeedsSecondStock(); };
  EXPECT_TRUE(needs("終値(0) > 第二銘柄終値(0)"));
  EXPECT_TRUE(needs("1 > 0 Or 2 * さや最小値(5,0) > 1"));
  EXPECT_TRUE(needs("さや(0)"));
  EXPECT_FALSE(needs("終値(0) > 週間終値(0) And 買い値 > 1"));
}

TEST(Program, ItemsAreReadOnTheExaminedDay) {
  FourDays days;
  EXPECT_EQ(days.ValueOf("終値(0) * 100 / 終値(-1) - 100", 2),
            Value::Of(base::Currency::FromInt(100)));
  EXPECT_EQ(days.ValueOf("{終値(0) - 終値(-1)} * 2", 2), Value::Of(base::Currency::FromInt(20)));
  EXPECT_EQ(days.ValueOf("Ｓｑｒ()? {終値(0) * 終値(0)}", 2),
            Value::Of(base::Currency::FromInt(20)));
  EXPECT_EQ(days.ValueOf("-始値(0)", 2), Value::Of(base::Currency::FromInt(-2)));
  EXPECT_FALSE(days.ValueOf("終値(0)", 3).ok);
  EXPECT_FALSE(days.ValueOf("終値(-1)", 1).ok);
  EXPECT_FALSE(days.ValueOf("終値(0) - 終値(-1)", 4).ok);
}

TEST(Program, DivisionByADayWithoutVolumeMakesEachRelationFalse) {
  FourDays days;
  StockContext context(days.bars, nullptr);
  for (const char* relation : {"> 0", "< 0", "= 0", "<> 0"}) {
    const auto program = BuildProgram(std::string("終値(0) / 出来高(0) ") + relation);
    EXPECT_FALSE(Evaluator(*program).EvaluateCondition(context, base::DayIndex(1))) << relation;
  }
}

TEST(Program, LongChainsNeedNeitherDeepStackNorQuadraticTime) {
  FourDays days;
  const std::clock_t start = std::clock();
  EXPECT_EQ(days.ValueOf("終値(0)" + Repeated("+1", 300000), 1),
            Value::Of(base::Currency::FromInt(300010)));
  EXPECT_EQ(days.ValueOf("1" + Repeated("-始値(0)", 60000), 2),
            Value::Of(base::Currency::FromInt(1 - 120000)));
  EXPECT_EQ(days.ValueOf(Repeated("-", 300000) + "始値(0)", 2),
            Value::Of(base::Currency::FromInt(2)));
  EXPECT_EQ(days.ValueOf(Repeated("1*", 300000) + "始値(0)", 2),
            Value::Of(base::Currency::FromInt(2)));
  std::string calls;
  for (int offset = 0; offset < 30000; ++offset) {
    calls += "終値(-" + std::to_string(offset) + ")*";
  }
  EXPECT_FALSE(days.ValueOf(calls + "1", 2).ok);
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  EXPECT_LT(seconds, 30.0);
}

TEST(Program, TablesOfOddShapeAreFalse) {
  FourDays days;
  StockContext context(days.bars, nullptr);
  const Piece one = {"1", {}};
  const Piece equal = {"=", {}};
  const Piece nonsense = {"==", {9}};
  for (const AndTerm& pieces :
       {AndTerm{}, AndTerm{one, equal}, AndTerm{one, nonsense, one}, AndTerm{equal, one}}) {
    CompiledCondition condition;
    condition.or_terms = {{pieces}};
    const Program program = Program::Build(condition);
    EXPECT_FALSE(Evaluator(program).EvaluateCondition(context, base::DayIndex(1)));
  }
  const Program empty = Program::Build(CompiledCondition{});
  EXPECT_FALSE(Evaluator(empty).EvaluateCondition(context, base::DayIndex(1)));
}

}  // namespace
}  // namespace orin::analysis
