#include "analysis/evaluation.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "store/company_format.h"
#include "store/file_names.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::DayIndex;
using support::BarOf;
using support::Code;
using ::testing::HasSubstr;

constexpr int32_t kStoredDays = 40;

/// Rises by 1 a day from `first`, its range growing with it.
std::vector<base::Bar> Rising(double first) {
  std::vector<base::Bar> bars;
  bars.reserve(kStoredDays);
  for (int i = 0; i < kStoredDays; ++i) {
    const double close = first + i;
    bars.push_back(BarOf(close, close + i, close / 2, close, 100 + i));
  }
  return bars;
}

/// Forty days of three stocks.
class EvaluationTest : public ::testing::Test {
 protected:
  EvaluationTest() : store_(Build()) {}

  static store::StockStore Build() {
    support::StoreBuilder builder("evaluation");
    builder.Days(support::Weekdays("2020/01/06", kStoredDays))
        .Stock("LOW", Rising(10))
        .Stock("HIGH", Rising(500))
        .Stock("NEW", {support::NoBar(), support::NoBar(), support::FlatBar(7)});
    return builder.Open();
  }

  [[nodiscard]] const store::StockStore& Store() const { return store_; }
  [[nodiscard]] const store::StockRecord& Stock(std::string_view code) const {
    return store_.Master().Stock(store_.Master().Find(Code(code)));
  }
  [[nodiscard]] Evaluation Make(const std::vector<std::string>& texts,
                                const EvaluationOptions& options) const {
    std::vector<Program> programs;
    programs.reserve(texts.size());
    for (const std::string& text : texts) programs.push_back(*BuildProgram(text));
    return std::move(*Evaluation::OfPrograms(store_, std::move(programs), options));
  }

 private:
  store::StockStore store_;
};

const EvaluationOptions kAllDays = {.days = {DayIndex(1), DayIndex(kStoredDays)}};

std::string TextOf(const Value& value) { return value.ok ? value.value.ToText() : "none"; }

std::string TextOf(const base::ValueColumn& values, size_t place) {
  return values.Has(place) ? values.At(place).ToText() : "none";
}

TEST_F(EvaluationTest, RangeGivesWhatEachDayAloneGivesWithItsKeyword) {
  const std::vector<std::string> texts = {"終値(analysisdate1)",      "移動平均(3,analysisdate1-2)",
                                          "週間高値(wanalysisdate1)", "週間安値(wanalysisdate1-1)",
                                          "終値(analysisdate1+1)",    "tcurrentday - analysisdate1",
                                          "終値(analysisdate2)",      "移動平均(5,0) + 高値(-1)"};
  Evaluation range = Make(texts, kAllDays);
  range.Load(Stock("LOW"));
  for (size_t i = 0; i < texts.size(); ++i) {
    base::ValueColumn values;
    range.Values(values, i);
    ASSERT_EQ(values.Size(), static_cast<size_t>(kStoredDays));
    for (int32_t day = 1; day <= kStoredDays; ++day) {
      Evaluation alone = Make({texts[i]}, {.days = {DayIndex(day), DayIndex(day)}});
      alone.Load(Stock("LOW"));
      EXPECT_EQ(TextOf(values, static_cast<size_t>(day - 1)), TextOf(alone.ValueOn(DayIndex(day))))
          << texts[i] << " day " << day;
    }
  }
  EXPECT_EQ(TextOf(range.ValueOn(DayIndex(9), 0)), "18.0000");
  EXPECT_EQ(TextOf(range.ValueOn(DayIndex(9), 6)), "none");
}

TEST_F(EvaluationTest, KeywordsStandForTheDaysThatAreGiven) {
  EvaluationOptions options = kAllDays;
  options.keyword_days.Set({DayKeyword::kAnalysisDate, 2}, DayIndex(5));
  Evaluation evaluation = Make({"終値(analysisdate1) = 終値(analysisdate2) + 3"}, options);
  evaluation.Load(Stock("HIGH"));
  std::vector<uint8_t> truths;
  evaluation.Truths(truths);
  EXPECT_EQ(std::count(truths.begin(), truths.end(), 1), 1);
  EXPECT_EQ(truths[7], 1);
  options.keyword_days = {};
  Evaluation unset = Make({"analysisdate1"}, options);
  unset.Load(Stock("HIGH"));
  EXPECT_FALSE(unset.ValueOn(DayIndex(8)).ok);
}

TEST_F(EvaluationTest, OneStockAfterTheOtherIsAsEachAlone) {
  const std::vector<std::string> texts = {"移動平均(4,0)", "終値(0) > 30", "週間終値(-1)"};
  EvaluationOptions options = {.days = {DayIndex(20), DayIndex(25)}};
  Evaluation moved = Make(texts, options);
  Evaluation evaluation = std::move(moved);
  const auto stocks = Store().Master().Stocks();
  for (const size_t place : {0U, 2U, 1U}) {
    evaluation.LoadNext(stocks, place);
    Evaluation alone = Make(texts, options);
    alone.Load(stocks[place]);
    for (const int32_t day : {20, 25}) {
      EXPECT_EQ(evaluation.ValueOn(DayIndex(day), 0), alone.ValueOn(DayIndex(day), 0));
      EXPECT_EQ(evaluation.IsTrue(DayIndex(day), 1), alone.IsTrue(DayIndex(day), 1));
      EXPECT_EQ(evaluation.ValueOn(DayIndex(day), 2), alone.ValueOn(DayIndex(day), 2));
    }
  }
  evaluation.Load(Stock("LOW"));
  EXPECT_TRUE(evaluation.IsTrue(DayIndex(25), 1));
  EXPECT_FALSE(evaluation.IsTrue(DayIndex(20), 1));
  EXPECT_FALSE(evaluation.IsTrue(DayIndex(25), 0)) << "a value is no truth";
  EXPECT_FALSE(evaluation.ValueOn(DayIndex(25), 1).ok) << "a condition has no value";
}

TEST_F(EvaluationTest, LoadsTheBarsThatExpressionsAndCallerNeedAndNoOthers) {
  const auto first = [this](const std::vector<std::string>& texts, const History& own) {
    Evaluation evaluation = Make(texts, {.days = {DayIndex(30), DayIndex(35)}, .own_needs = own});
    evaluation.Load(Stock("LOW"));
    EXPECT_EQ(evaluation.Daily().Count(), 35);
    return evaluation.Daily().First();
  };
  EXPECT_EQ(first({}, {}), 30);
  EXPECT_EQ(first({"終値(-1)", "移動平均(5,-2)"}, {}), 24);
  EXPECT_EQ(first({"終値(0)"}, {.daily = 2}), 29);
  EXPECT_EQ(first({"終値(-3)"}, {.daily = 2}), 27);
}

TEST_F(EvaluationTest, SecondStockIsReadAndItsLackIsSaid) {
  EvaluationOptions options = kAllDays;
  options.second_stock = Code("HIGH");
  Evaluation both = Make({"第二銘柄終値(0) - 終値(0)"}, options);
  both.Load(Stock("LOW"));
  EXPECT_EQ(TextOf(both.ValueOn(DayIndex(3))), "490.0000");
  EXPECT_EQ(both.SecondStockProblem(), "");

  options.second_stock = Code("GONE");
  Evaluation unknown = Make({"終値(0)", "さや(0)"}, options);
  unknown.Load(Stock("LOW"));
  EXPECT_TRUE(unknown.ValueOn(DayIndex(3), 0).ok);
  EXPECT_FALSE(unknown.ValueOn(DayIndex(3), 1).ok);
  EXPECT_EQ(unknown.SecondStockProblem(),
            "第二銘柄コード「GONE」の銘柄がないので、第二銘柄とさやの項目は計算できません。");

  EXPECT_EQ(Make({"終値(0)", "さや(0)"}, kAllDays).SecondStockProblem(),
            "第二銘柄コードがないので、第二銘柄とさやの項目は計算できません。");
  EXPECT_EQ(Make({"終値(0)"}, kAllDays).SecondStockProblem(), "");
}

TEST_F(EvaluationTest, WrongTextAndDamagedFileAreToldApart) {
  const auto wrong = Evaluation::OfText(Store(), "1 = 1 = 1 = 1 = 1 = 1", kAllDays);
  ASSERT_FALSE(wrong);
  EXPECT_TRUE(wrong.error().cannot_be_compiled);

  const store::StoreFile file = {store::kCompanyFiles[0].kind, 0};
  const std::filesystem::path path = store::PathOf(Store().Location(), file);
  std::ofstream(path) << "x";
  const auto damaged = Evaluation::OfText(Store(), "株価収益率(0) > 0", kAllDays);
  ASSERT_FALSE(damaged);
  EXPECT_FALSE(damaged.error().cannot_be_compiled);
  EXPECT_THAT(damaged.error().message, HasSubstr(path.filename().string()));
  EXPECT_TRUE(Evaluation::OfText(Store(), "終値(0) > 0", kAllDays)) << "needs no such file";
}

}  // namespace
}  // namespace orin::analysis
