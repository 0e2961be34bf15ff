#include "lists/stock_tables.h"

#include <gtest/gtest.h>

#include "support/store_builder.h"

namespace orin::lists {
namespace {

using Strings = std::vector<std::string>;
using Rows = std::vector<Strings>;

Strings Headings(const base::Table& table) {
  Strings headings;
  for (const base::Column& column : table.columns) headings.push_back(column.heading);
  return headings;
}

Rows Texts(const base::Table& table) {
  Rows rows;
  for (size_t row = 0; row < table.rows.size(); ++row) {
    rows.emplace_back();
    for (size_t column = 0; column < table.columns.size(); ++column) {
      rows.back().push_back(table.Text(row, column));
    }
  }
  return rows;
}

TEST(TableOfList, ColumnsOfAResultListAreTakenApart) {
  const ListedStocks list = TableOfList(
      "T:株価分析：その１\r\nD:2020/01/10\r\n"
      "AAPL     APPLE            ＮＡ市場       310.3300        +0.7000\r\n"
      "^DJI     NYダウ工業株30種 他市場       28823.7700      -133.1300\r\n"
      "BAC      BANK OF AMERICA  ＮＹ市場              -              -\r\n"
      "BIG      VERY DEAR        ＮＹ市場 922337203685477.5807 +922337203685477.0000\r\n");
  EXPECT_EQ(list.title, "株価分析：その１");
  EXPECT_EQ(list.date, "2020/01/10");
  EXPECT_EQ(list.table.CodeColumn(), 0U);
  EXPECT_EQ(
      Texts(list.table),
      (Rows{{"AAPL", "APPLE", "ＮＡ市場", "310.3300", "+0.7000"},
            {"^DJI", "NYダウ工業株30種", "他市場", "28823.7700", "-133.1300"},
            {"BAC", "BANK OF AMERICA", "ＮＹ市場", "", ""},
            {"BIG", "VERY DEAR", "ＮＹ市場", "922337203685477.5807", "+922337203685477.0000"}}));
  EXPECT_TRUE(list.table.columns[4].IsNumeric());
}

TEST(TableOfList, ListOfBareCodesHasEmptyColumns) {
  const ListedStocks list = TableOfList("t:見張り\nAAPL\n\n  \nGS      \n日本\n");
  EXPECT_EQ(list.title, "見張り");
  EXPECT_EQ(list.date, "");
  EXPECT_EQ(Texts(list.table),
            (Rows{{"AAPL", "", "", "", ""}, {"GS", "", "", "", ""}, {"日本", "", "", "", ""}}));
}

TEST(TableOfSplits, RatioIsShownAsItIsWritten) {
  const store::SplitList splits(
      {{support::Code("AAPL"), "APPLE", 7, "7.0", support::Day("2014/06/06")}});
  const base::Table table = TableOfSplits(splits);
  EXPECT_EQ(Headings(table), (Strings{"銘柄コード", "銘柄名", "分割倍率", "権利付最終日"}));
  EXPECT_EQ(Texts(table), (Rows{{"AAPL", "APPLE", "7.0", "2014/06/06"}}));
}

}  // namespace
}  // namespace orin::lists
