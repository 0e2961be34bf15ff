#include "lists/table.h"

#include <gtest/gtest.h>

#include "support/store_builder.h"

namespace orin::lists {
namespace {

using Strings = std::vector<std::string>;
using Rows = std::vector<Strings>;

Table OneColumn(const Strings& texts) {
  Table table{{"値"}, {}};
  for (const std::string& text : texts) table.rows.push_back({text});
  return table;
}

Strings Sorted(const Strings& texts, bool is_descending) {
  Table table = OneColumn(texts);
  table.Sort(0, is_descending);
  Strings sorted;
  for (const auto& row : table.rows) sorted.push_back(row[0]);
  return sorted;
}

TEST(Table, ColumnIsNumericWhereEveryTextThatIsThereIsANumber) {
  const std::vector<std::pair<Strings, bool>> cases = {
      {{"1", "-2.5", "+3", "1,234,567.8901", ""}, true},
      {{"", ""}, false},
      {{}, false},
      {{"1", "AAPL"}, false},
      {{"1", "2020/01/10"}, false},
      {{"+"}, false},
      {{","}, false},
      {{"1e5"}, false},
  };
  for (const auto& [texts, is_numeric] : cases) {
    EXPECT_EQ(OneColumn(texts).IsNumeric(0), is_numeric) << testing::PrintToString(texts);
  }
}

TEST(Table, NumbersAreSortedByValueAndTextsByTheirCharacters) {
  const Strings numbers = {"9", "", "1,000", "-3", "+10", "10"};
  EXPECT_EQ(Sorted(numbers, false), (Strings{"-3", "9", "+10", "10", "1,000", ""}));
  EXPECT_EQ(Sorted(numbers, true), (Strings{"1,000", "+10", "10", "9", "-3", ""}));
  const Strings texts = {"9", "", "10", "B", "A"};
  EXPECT_EQ(Sorted(texts, false), (Strings{"10", "9", "A", "B", ""}));
  EXPECT_EQ(Sorted(texts, true), (Strings{"B", "A", "9", "10", ""}));
}

TEST(Table, EqualRowsKeepTheirOrderBothWays) {
  for (const bool is_descending : {false, true}) {
    Table table{{"値", "番"}, {{"1.0", "a"}, {"2", "b"}, {"1", "c"}, {"1.00", "d"}}};
    table.Sort(0, is_descending);
    Strings order;
    for (const auto& row : table.rows) order.push_back(row[1]);
    EXPECT_EQ(order, is_descending ? (Strings{"b", "a", "c", "d"}) : (Strings{"a", "c", "d", "b"}));
  }
}

TEST(Table, CsvIsReadAsItWasWritten) {
  const Table table{{"銘柄コード", "銘柄名"},
                    {{"BRK.B", "Berkshire, Inc."}, {"X", "a \"b\""}, {"", ""}}};
  EXPECT_EQ(table.ToCsv("\n"),
            "銘柄コード,銘柄名\nBRK.B,\"Berkshire, Inc.\"\nX,\"a \"\"b\"\"\"\n,\n");
  for (const char* line_end : {"\n", "\r\n"}) {
    const Table read = TableFromCsv(table.ToCsv(line_end));
    EXPECT_EQ(read.headings, table.headings);
    EXPECT_EQ(read.rows, table.rows);
  }
}

TEST(Table, RowsOfACsvAreBroughtToTheLengthOfTheHeading) {
  const Table table = TableFromCsv("a,b\n1\n1,2,3\n");
  EXPECT_EQ(table.rows, (Rows{{"1", ""}, {"1", "2"}}));
  EXPECT_TRUE(TableFromCsv("").rows.empty());
  EXPECT_EQ(TableFromCsv("a,\"b").headings, (Strings{"a", "b"}));
}

TEST(Table, CodeColumnIsTheOneHeadedSo) {
  EXPECT_EQ((Table{{"レコード", "銘柄コード", "銘柄コード"}, {}}).CodeColumn(), 1U);
  EXPECT_EQ((Table{{"銘柄名"}, {}}).CodeColumn(), std::nullopt);
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
      list.table.rows,
      (Rows{{"AAPL", "APPLE", "ＮＡ市場", "310.3300", "+0.7000"},
            {"^DJI", "NYダウ工業株30種", "他市場", "28823.7700", "-133.1300"},
            {"BAC", "BANK OF AMERICA", "ＮＹ市場", "", ""},
            {"BIG", "VERY DEAR", "ＮＹ市場", "922337203685477.5807", "+922337203685477.0000"}}));
  EXPECT_TRUE(list.table.IsNumeric(4));
}

TEST(TableOfList, ListOfBareCodesHasEmptyColumns) {
  const ListedStocks list = TableOfList("t:見張り\nAAPL\n\n  \nGS      \n日本\n");
  EXPECT_EQ(list.title, "見張り");
  EXPECT_EQ(list.date, "");
  EXPECT_EQ(list.table.rows,
            (Rows{{"AAPL", "", "", "", ""}, {"GS", "", "", "", ""}, {"日本", "", "", "", ""}}));
}

TEST(TableOfSplits, RatioIsShownAsItIsWritten) {
  const store::SplitList splits(
      {{support::Code("AAPL"), "APPLE", 7, "7.0", support::Day("2014/06/06")}});
  const Table table = TableOfSplits(splits);
  EXPECT_EQ(table.headings, (Strings{"銘柄コード", "銘柄名", "分割倍率", "権利付最終日"}));
  EXPECT_EQ(table.rows, (Rows{{"AAPL", "APPLE", "7.0", "2014/06/06"}}));
}

}  // namespace
}  // namespace orin::lists
