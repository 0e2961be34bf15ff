#include "base/table.h"

#include <gtest/gtest.h>

namespace orin::base {
namespace {

using Strings = std::vector<std::string>;

Currency Number(double value) { return *Currency::FromDouble(value); }

Table OneColumn(const Column& column, const std::vector<Cell>& cells) {
  Table table{{column}, {}, {}, {}};
  for (const Cell& cell : cells) table.rows.push_back({cell});
  return table;
}

Strings Texts(const Table& table, size_t column = 0, TextForm form = TextForm::kShown) {
  Strings texts;
  for (size_t row = 0; row < table.rows.size(); ++row) {
    texts.push_back(table.Text(row, column, form));
  }
  return texts;
}

Strings Sorted(Table table, bool is_descending) {
  table.Sort(0, is_descending);
  return Texts(table);
}

TEST(Table, NumbersAreSortedByValueAndTextsByTheirCharacters) {
  const Column changes{.heading = "値", .kind = ColumnKind::kNumber, .is_grouped = true};
  const Table numbers = OneColumn(
      changes, {int64_t{9}, {}, Number(1000), Number(-3), CellOfWritten("+10"), int64_t{10}});
  EXPECT_EQ(Sorted(numbers, false), (Strings{"-3", "9", "+10", "10", "1,000", ""}));
  EXPECT_EQ(Sorted(numbers, true), (Strings{"1,000", "+10", "10", "9", "-3", ""}));
  const Table texts = OneColumn(TextColumn("値"), {"9", "", "10", "B", "A"});
  EXPECT_EQ(Sorted(texts, false), (Strings{"10", "9", "A", "B", ""}));
  EXPECT_EQ(Sorted(texts, true), (Strings{"B", "A", "9", "10", ""}));
  const Table dates = OneColumn({.heading = "日付", .kind = ColumnKind::kDate},
                                {*Date::Parse("2020/01/10"), Date(), *Date::Parse("2019/12/31")});
  EXPECT_EQ(Sorted(dates, false), (Strings{"2019/12/31", "2020/01/10", ""}));
}

TEST(Table, EqualRowsKeepTheirOrderBothWays) {
  for (const bool is_descending : {false, true}) {
    Table table{{WholeColumn("値"), TextColumn("番")},
                {{CellOfWritten("1.0"), "a"},
                 {CellOfWritten("2"), "b"},
                 {CellOfWritten("1"), "c"},
                 {CellOfWritten("1.00"), "d"}},
                {},
                {}};
    const std::vector<size_t> places = table.Sort(0, is_descending);
    EXPECT_EQ(Texts(table, 1),
              is_descending ? (Strings{"b", "a", "c", "d"}) : (Strings{"a", "c", "d", "b"}));
    EXPECT_EQ(places, is_descending ? (std::vector<size_t>{1, 0, 2, 3})
                                    : (std::vector<size_t>{0, 2, 3, 1}));
    // A column that settles the order of equal rows does so after any sorting before.
    table.order_of_equals = std::pair(size_t{1}, true);
    table.Sort(0, is_descending);
    EXPECT_EQ(Texts(table, 1),
              is_descending ? (Strings{"b", "d", "c", "a"}) : (Strings{"d", "c", "a", "b"}));
  }
}

TEST(Table, FormatOfAColumnIsForReadersAndNotForFiles) {
  const auto one = [](Column column, const Cell& cell) {
    const Table table = OneColumn(column, {cell});
    return Strings{table.Text(0, 0), table.Text(0, 0, TextForm::kPlain)};
  };
  Column column{.heading = "値", .kind = ColumnKind::kNumber, .decimals = 2};
  EXPECT_EQ(one(column, Number(1234.5)), (Strings{"1234.50", "1234.50"}));
  column.is_grouped = column.has_plus = true;
  EXPECT_EQ(one(column, Number(1234.5)), (Strings{"+1,234.50", "1234.50"}));
  EXPECT_EQ(one(column, Number(-0.125)), (Strings{"-0.13", "-0.13"}));
  EXPECT_EQ(one(column, Number(-0.004)), (Strings{"0.00", "0.00"}));
  EXPECT_EQ(one(column, int64_t{1'234'567}), (Strings{"+1,234,567", "1234567"}));
  EXPECT_EQ(one(column, std::numeric_limits<int64_t>::min()),
            (Strings{"-9,223,372,036,854,775,808", "-9223372036854775808"}));
  EXPECT_EQ(one(column, CellOfWritten("+7.0")), (Strings{"+7.0", "7.0"}));
  column.kind = ColumnKind::kPercent;
  EXPECT_EQ(one(column, Number(10)), (Strings{"+10.00％", "10.00"}));
  EXPECT_EQ(one(column, {}), (Strings{"", ""}));
  EXPECT_EQ(one(TextColumn("名"), "+1,000％"), (Strings{"+1,000％", "+1,000％"}));
}

TEST(Table, CsvIsReadAsItWasWritten) {
  const Table table{{CodeColumn(), TextColumn("銘柄名")},
                    {{"BRK.B", "Berkshire, Inc."}, {"X", "a \"b\""}, {"", ""}},
                    {},
                    {}};
  EXPECT_EQ(table.ToCsv("\n"),
            "銘柄コード,銘柄名\nBRK.B,\"Berkshire, Inc.\"\nX,\"a \"\"b\"\"\"\n,\n");
  EXPECT_EQ(table.ToCsv(),
            "銘柄コード,銘柄名\r\nBRK.B,\"Berkshire, Inc.\"\r\nX,\"a \"\"b\"\"\"\r\n,\r\n");
}

TEST(Table, HiddenColumnsAreNeitherSavedNorCopied) {
  Table table{{WholeColumn("番"), TextColumn("名"), WholeColumn("値")},
              {{int64_t{1}, "A", int64_t{1000}}, {int64_t{2}, "B", int64_t{2000}}},
              {},
              {}};
  table.columns[0].is_hidden = true;
  table.columns[1].file_heading = "名前";
  table.columns[2].is_grouped = true;
  EXPECT_EQ(table.ToCsv("\n"), "名前,値\nA,1000\nB,2000\n");
  EXPECT_EQ(table.ToTabs(std::vector<size_t>{1, 0}), "B\t2,000\nA\t1,000\n");
  table.copied_form = TextForm::kPlain;
  EXPECT_EQ(table.ToTabs(std::vector<size_t>{1}), "B\t2000\n");
  EXPECT_EQ(table.ToTabs({}), "");
}

TEST(Table, RowsAreFoundByTheirKeyElseByTheirCode) {
  Table table{{WholeColumn("レコード"), CodeColumn(), CodeColumn()},
              {{int64_t{2}, "A", "C"}, {int64_t{3}, "B", "A"}},
              {},
              {}};
  EXPECT_EQ(table.CodeColumn(), 1U);
  EXPECT_EQ(table.FindRow("B"), 1U);
  EXPECT_EQ(table.FindRow("C"), std::nullopt);
  table.columns[0].is_key = true;
  EXPECT_EQ(table.FindRow(int64_t{3}), 1U);
  EXPECT_EQ(table.CodeColumn(), 1U);
  EXPECT_EQ((Table{{TextColumn("銘柄名")}, {}, {}, {}}).CodeColumn(), std::nullopt);
  EXPECT_EQ(TableOfTexts("記録", {"a"}).FindRow("a"), std::nullopt);
}

TEST(Table, LongestTextMayStandOnEitherSideOfZero) {
  const Column column{.heading = "値", .kind = ColumnKind::kNumber, .is_grouped = true};
  EXPECT_EQ(OneColumn(column, {Number(5), Number(-100), {}, Number(99)}).LongestText(0), "-100");
  EXPECT_EQ(OneColumn(column, {Number(5), Number(-100), Number(12345)}).LongestText(0), "12,345");
  EXPECT_EQ(OneColumn(column, {{}, {}}).LongestText(0), "");
  EXPECT_EQ(OneColumn(TextColumn("名"), {"abc", "市場", "ab"}).LongestText(0), "市場");
}

}  // namespace
}  // namespace orin::base
