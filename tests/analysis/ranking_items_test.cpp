#include <gtest/gtest.h>
#include <string>

#include "analysis/items/item_call.h"
#include "base/file_system.h"
#include "base/value_column.h"
#include "store/ranking_files.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;
using support::Code;
using support::Day;

/// Days 1-3 are 2020/01/08 to 10, days 4-8 the 13th to 17th, days 9-10 the 20th and 21st. Rankings
/// of the 9th, the 14th, the 16th and the 21st. Daily values of ranking 1 are AAA 3, BBB 2 and,
/// in another market, CCC 1; weekly ones are the negatives. Ranking 2 has AAA alone, on the 16th.
class RankingItemsTest : public ::testing::Test {
 protected:
  RankingItemsTest() : builder_("ranking_items") {
    builder_.Days(support::Weekdays("2020/01/08", 10));
    builder_.Stock("AAA").Stock("BBB").Stock("CCC").Build();
    for (const char* date : {"2020/01/09", "2020/01/14", "2020/01/16", "2020/01/21"}) {
      store::RankingContent content;
      content.date = Day(date);
      content.stocks = {Ranked("AAA", 1, 3), Ranked("BBB", 1, 2), Ranked("CCC", 2, 1)};
      if (content.date == Day("2020/01/16")) {
        content.stocks[0].values[0][1] = Currency::FromInt(1);
      }
      EXPECT_TRUE(
          store::WriteRankingFile(base::NativeFileSystem(), builder_.Location(), content, 100));
    }
  }

  std::string At(const std::string& text, std::string_view code, int32_t day) {
    const store::StockStore store = builder_.Open();
    const ItemCall call = *ItemCall::Bind(text);
    const History needs = call.Needs();
    EXPECT_TRUE(needs.rankings);
    StockContext context(store, needs, DayIndex(day), DayIndex(day), nullptr, true);
    context.KeywordDays().Set({DayKeyword::kAnalysisDate, 1}, DayIndex(5));
    const auto beside = Companions::Load(store, needs);
    context.SetBeside(&*beside);
    context.Load(store.Master().Stock(store.Master().Find(Code(code))));
    const Value value = ItemValue(text, context, DayIndex(day));
    return value.ok ? value.value.ToText() : "none";
  }

  support::StoreBuilder builder_;

 private:
  static store::RankedStock Ranked(std::string_view code, int16_t listing, int32_t value) {
    store::RankedStock stock{Code(code), listing, {}};
    for (store::RankedValues& values : stock.values) values.fill(base::kNoValue);
    stock.values[0][0] = Currency::FromInt(value);
    stock.values[1][0] = Currency::FromInt(-value);
    return stock;
  }
};

TEST_F(RankingItemsTest, ArgumentsChooseRankingMarketAndOrder) {
  EXPECT_EQ(At("ランキング順位(1,0,1,0)", "AAA", 5), "1.0000");
  EXPECT_EQ(At("ランキング順位(1,0,0,0)", "AAA", 5), "3.0000");
  EXPECT_EQ(At("ランキング順位(1,0,1,0)", "CCC", 5), "3.0000");
  EXPECT_EQ(At("ランキング順位(1,1,1,0)", "CCC", 5), "1.0000");
  EXPECT_EQ(At("ランキング順位(1,1,0,0)", "AAA", 5), "2.0000");
  EXPECT_EQ(At("ランキング順位(2,0,0,0)", "AAA", 7), "1.0000");
  EXPECT_EQ(At("ランキング順位(2,0,0,0)", "AAA", 5), "none");
  EXPECT_EQ(At("ランキング順位(2,0,0,0)", "BBB", 7), "none");
}

TEST_F(RankingItemsTest, TheFileIsThatOfTheDay) {
  EXPECT_EQ(At("ランキング順位(1,0,1,0)", "AAA", 4), "none");
  EXPECT_EQ(At("ランキング順位(1,0,1,-1)", "AAA", 6), "1.0000");
  EXPECT_EQ(At("ランキング順位(1,0,1,-8)", "AAA", 10), "1.0000");
  EXPECT_EQ(At("ランキング順位(1,0,1,-10)", "AAA", 10), "none");
  EXPECT_EQ(At("ランキング順位(1,0,1,analysisdate1)", "AAA", 9), "1.0000");
  EXPECT_EQ(At("ランキング順位(1,0,1,analysisdate1)", "AAA", 4), "none");
}

TEST_F(RankingItemsTest, OfAWeekTheNewestFileAsOfTheDayCounts) {
  EXPECT_EQ(At("週間ランキング順位(1,0,1,0)", "AAA", 8), "3.0000");
  EXPECT_EQ(At("週間ランキング順位(1,0,1,0)", "AAA", 5), "3.0000");
  EXPECT_EQ(At("週間ランキング順位(1,0,1,0)", "AAA", 4), "none");
  EXPECT_EQ(At("週間ランキング順位(1,0,0,-1)", "AAA", 4), "1.0000");
  EXPECT_EQ(At("週間ランキング順位(1,0,0,0)", "AAA", 9), "none");
  EXPECT_EQ(At("週間ランキング順位(1,0,0,wanalysisdate1)", "AAA", 9), "1.0000");
  EXPECT_EQ(At("週間ランキング順位(1,0,0,-3)", "AAA", 9), "none");
}

TEST_F(RankingItemsTest, OverARangeEveryDayIsAsAlone) {
  const store::StockStore store = builder_.Open();
  for (const char* text : {"ランキング順位(1,0,1,-1)", "週間ランキング順位(1,0,0,0)"}) {
    const ItemCall call = *ItemCall::Bind(text);
    StockContext context(store, call.Needs(), DayIndex(3), DayIndex(10), nullptr, true);
    const auto beside = Companions::Load(store, call.Needs());
    context.SetBeside(&*beside);
    context.Load(store.Master().Stocks()[0]);
    base::ValueColumn column;
    call.Evaluate(context, DayIndex(3), DayIndex(10), column);
    for (int32_t day = 3; day <= 10; ++day) {
      const auto place = static_cast<size_t>(day - 3);
      EXPECT_EQ(column.Has(place) ? column.At(place).ToText() : "none", At(text, "AAA", day));
    }
  }
}

TEST_F(RankingItemsTest, AFileOfAnotherVersionStopsTheLoading) {
  const auto path = builder_.Location().system_directory / "orinm002.rnk";
  ASSERT_TRUE(base::ReplaceFile(base::NativeFileSystem(), path, "made by something older"));
  const store::StockStore store = builder_.Open();
  History needs;
  EXPECT_TRUE(Companions::Load(store, needs));
  needs.rankings = true;
  const auto loaded = Companions::Load(store, needs);
  ASSERT_FALSE(loaded);
  EXPECT_NE(loaded.error().message.find("orinm002.rnk"), std::string::npos);
}

}  // namespace
}  // namespace orin::analysis
