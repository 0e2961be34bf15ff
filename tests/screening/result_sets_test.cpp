#include "screening/result_sets.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "screening/result_columns.h"
#include "screening/result_table.h"
#include "screening/stock_days.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::screening {
namespace {

using base::Currency;
using store::StockCode;
using support::Code;
using support::Day;
using support::FlatBar;
using support::NoBar;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(ResultSets, ListIsReadWithItsMarksInAnyCase) {
  const ListedCodes list = ParseList(
      "t: 題名\r\nD:2020/01/10\r\nAAPL     APPLE  ＮＡ市場\r\n\r\nA,B\r\nAAPL    \nMSFT\nT:X");
  EXPECT_EQ(list.title, "題名");
  EXPECT_EQ(list.date, Day("2020/01/10"));
  EXPECT_THAT(list.codes, ElementsAre(Code("AAPL"), Code("MSFT"), Code("T:X")));
  ASSERT_EQ(list.notes.size(), 1U);
  EXPECT_THAT(list.notes[0], HasSubstr("5行目"));
  EXPECT_FALSE(ParseList("D:いつか\n").date);
  EXPECT_LE(ParseList(std::string(100'000, '\x81')).notes.size(), 10U);
}

TEST(ResultSets, CombinationsKeepTheOrderOfTheList) {
  const std::vector<StockCode> here = {Code("C"), Code("A"), Code("B")};
  const std::vector<StockCode> other = {Code("B"), Code("D"), Code("C")};
  EXPECT_THAT(Combine(here, other, ListOperation::kInBoth), ElementsAre(Code("C"), Code("B")));
  EXPECT_THAT(Combine(here, other, ListOperation::kOnlyHere), ElementsAre(Code("A")));
  EXPECT_THAT(Combine(here, other, ListOperation::kInEither),
              ElementsAre(Code("C"), Code("A"), Code("B"), Code("D")));
}

TEST(ResultSets, PreviousListIsTheNewestEarlierOneBeside) {
  const support::ScratchDirectory home;
  for (const char* name : {"k20200103.txt", "K20200107.TXT", "k20200110.txt", "k20201340.txt",
                           "k2020010.txt", "x20200109.txt"}) {
    std::ofstream(home / name) << "T:\n";
  }
  EXPECT_EQ(PreviousResultList(home / "k20200109.txt"), home / "K20200107.TXT");
  EXPECT_EQ(PreviousResultList(home / "k20200107.txt"), home / "k20200103.txt");
  EXPECT_FALSE(PreviousResultList(home / "k20200103.txt"));
  EXPECT_FALSE(PreviousResultList(home / "serial.txt"));
  EXPECT_FALSE(PreviousResultList(home / "none" / "k20200109.txt"));
}

TEST(StockDays, LinesNameStocksAndTradingDays) {
  support::StoreBuilder builder("stock_days");
  builder.Days(support::Weekdays("2020/01/06", 5)).Stock("A").Stock("BRK.B");
  const store::StockStore store = builder.Open();
  const StockDays days = ParseStockDays(
      "' 注釈\r\nA       ,2020/01/07,x\nBRK.B,2020/1/8\n\nA,2020/01/09\nNONE,2020/01/07\n"
      "A,2020/01/11\nA\nA,まだ\n",
      store);
  EXPECT_EQ(days.Of(Code("A"), base::DayIndex(1)), base::DayIndex(4)) << "the last line counts";
  EXPECT_EQ(days.Of(Code("BRK.B"), base::DayIndex(1)), base::DayIndex(3));
  EXPECT_EQ(days.Of(Code("C"), base::DayIndex(1)), base::DayIndex(1));
  ASSERT_EQ(days.notes.size(), 4U);
  EXPECT_EQ(days.notes[0], "6行目：銘柄コード「NONE」が見つからないので読み飛ばしました。");
  EXPECT_EQ(days.notes[1], "7行目：2020/01/11 は取引日ではないので読み飛ばしました。");
  EXPECT_LE(
      ParseStockDays(std::string(300'000, '\n') + std::string(50'000, ','), store).notes.size(),
      10U);
  EXPECT_TRUE(ReadStockDays("/none", store)->days.empty());
}

TEST(ResultColumns, RowsHaveTheDaysPricesAndTheUsersValues) {
  support::StoreBuilder builder("result_columns");
  builder.Days(support::Weekdays("2020/01/06", 3))
      .Stock("^DJI", {FlatBar(1), FlatBar(2), FlatBar(3)})
      .Stock("A", {FlatBar(10), FlatBar(11, 500), FlatBar(12)})
      .Stock("B", {NoBar(), FlatBar(5)});
  const store::StockStore store = builder.Open();
  const std::vector<StockCode> codes = {Code("B"), Code("A"), Code("GONE")};
  const std::vector<ResultColumn> columns = {{"", "終値(0) * 2"},
                                             {"", "終値(-1) > 9"},
                                             {"", "終値(0) / 第二銘柄終値(0)"},
                                             {"", "1<2<3<4<5<6<7"},
                                             {"", "analysisdate1"}};
  base::SilentProgress progress;
  std::vector<std::string> notes;
  const auto rows =
      *LoadResultRows(store, codes, {base::DayIndex(2), columns, Code("^DJI")}, progress, notes);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[1].close, Currency::FromInt(11));
  EXPECT_EQ(rows[1].change, Currency::FromInt(1));
  EXPECT_EQ(rows[1].change_percent, Currency::FromInt(10));
  EXPECT_EQ(rows[1].volume, Currency::FromInt(500));
  EXPECT_EQ(rows[1].columns[0].value, Currency::FromInt(22));
  EXPECT_EQ(rows[1].columns[1].truth, true);
  EXPECT_EQ(rows[1].columns[2].value, Currency::FromDouble(5.5));
  EXPECT_EQ(rows[1].columns[4].value, Currency::FromInt(2)) << "the day of the list";
  EXPECT_FALSE(rows[0].change) << "no data on the day before";
  EXPECT_EQ(rows[0].columns[1].truth, false);
  EXPECT_TRUE(rows[2].stock.IsNone());
  EXPECT_FALSE(rows[2].close || rows[2].columns[0].value);
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_THAT(notes[0], HasSubstr("列「1<2<3<4<5<6<7」の"));
  notes.clear();
  const auto without =
      *LoadResultRows(store, codes, {base::DayIndex(2), columns, {}}, progress, notes);
  EXPECT_FALSE(without[1].columns[2].value);
  EXPECT_EQ(notes.size(), 2U);
}

TEST(ResultTable, ValuesAreFormattedByTheirColumn) {
  support::StoreBuilder builder("result_table");
  builder.Days(support::Weekdays("2020/01/06", 1)).Stock("A");
  const store::StockStore store = builder.Open();
  const auto number = [](double value) { return Currency::FromDouble(value); };
  const std::vector<ResultColumn> columns = {{"比", "x"}, {"", "終値(0) > 1"}, {"株数", "y"}};
  const std::vector<ResultRow> rows = {
      {Code("A"),
       store.Master().Find(Code("A")),
       number(1234.125),
       number(-2),
       number(0.5),
       number(98765),
       {{number(1.5), {}}, {{}, true}, {number(2000), {}}}},
      {Code("GONE"), {}, {}, {}, {}, {}, {{}, {{}, false}, {number(10), {}}}}};
  const base::Table table = TableOfResults(store.Master(), rows, columns);
  EXPECT_EQ(table.ToCsv("\n"),
            "銘柄コード,銘柄名,市場,終値,前日比,前日比率(%),出来高,比,終値(0) > 1,株数\n"
            "A,A,ＮＹ市場,1234.125,-2.000,0.50,98765,1.50,○,2000\n"
            "GONE,,,,,,,,×,10\n");
  const std::vector<std::string> shown = {"1,234.125", "-2.000", "+0.50", "98,765", "1.50", "○"};
  for (size_t i = 0; i < shown.size(); ++i) EXPECT_EQ(table.Text(0, 3 + i), shown[i]);
  EXPECT_TRUE(table.columns[7].IsNumeric());
  EXPECT_FALSE(table.columns[8].IsNumeric());
}

}  // namespace
}  // namespace orin::screening
