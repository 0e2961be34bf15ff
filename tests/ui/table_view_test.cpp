#include "widgets/table_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "base/color.h"
#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::test {
namespace {

using widgets::ColumnFit;
using widgets::CurrentRow;
using widgets::TableView;

base::Table Stocks(const std::vector<std::pair<std::string, int32_t>>& stocks) {
  base::Table table;
  table.columns = {base::CodeColumn(), base::WholeColumn("前日比"), {.heading = "色"}};
  table.columns[0].ink = 2;
  table.columns[1].has_plus = table.columns[1].is_tinted = true;
  table.columns[2].kind = base::ColumnKind::kColor;
  table.columns[2].is_hidden = true;
  for (const auto& [code, change] : stocks) {
    table.rows.push_back({code, base::Currency::FromInt(change), base::Color{1, 2, 3}});
  }
  return table;
}

QVariant Data(const TableView& view, int row, int column, int role) {
  return view.model()->index(row, column).data(role);
}

TEST(TableView, CurrentRowStaysWithItsStockThroughSortingAndANewTable) {
  TableView view(QStringLiteral("表"), ColumnFit::kContents);
  view.AllowSorting();
  view.Show(Stocks({{"A", 3}, {"B", 1}, {"C", 2}}));
  EXPECT_EQ(view.CurrentCode(), QStringLiteral("A"));
  view.sortByColumn(1, Qt::AscendingOrder);
  EXPECT_EQ(view.Codes(), (std::vector<std::string>{"B", "C", "A"}));
  EXPECT_EQ(view.CurrentCode(), QStringLiteral("A"));
  const QSignalSpy changes(&view, &TableView::CurrentCodeChanged);
  view.Show(Stocks({{"A", 2}, {"D", 3}, {"C", 1}}));
  EXPECT_EQ(view.Codes(), (std::vector<std::string>{"C", "A", "D"})) << "as the heading says";
  EXPECT_EQ(view.CurrentKey(), base::Cell("A"));
  EXPECT_EQ(changes.count(), 1);
  view.Show(Stocks({{"D", 3}, {"A", 5}}), CurrentRow::kFirst);
  EXPECT_EQ(view.CurrentCode(), QStringLiteral("D"));
  view.SelectCode(QStringLiteral("A"));
  view.Show(Stocks({{"E", 1}, {"D", 3}}));
  EXPECT_EQ(view.CurrentCode(), QStringLiteral("E")) << "the stock is gone";
  view.Show({});
  EXPECT_EQ(view.CurrentCode(), QString());
  EXPECT_EQ(view.CurrentKey(), base::Cell());
}

TEST(TableView, OnlyShownColumnsAreShownAndCopied) {
  TableView view(QStringLiteral("表"), ColumnFit::kContents);
  view.Show(Stocks({{"A", 3}, {"B", -1}, {"C", 2}}));
  EXPECT_TRUE(view.isColumnHidden(2));
  EXPECT_FALSE(view.isColumnHidden(1));
  view.clearSelection();
  QGuiApplication::clipboard()->setText(QStringLiteral("before"));
  view.mnu_copy_Click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
  for (const int row : {1, 0}) {
    view.selectionModel()->select(view.model()->index(row, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
  EXPECT_EQ(view.SelectedRows(), (std::vector<size_t>{0, 1}));
  view.mnu_copy_Click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("A\t+3\nB\t-1\n"));
  view.setSelectionMode(QAbstractItemView::SingleSelection);
  view.selectRow(1);
  view.mnu_copy_Click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("B\t-1"));
}

TEST(TableView, TextsHaveTheColoursOfTheirSignOrTheirColumn) {
  TableView view(QStringLiteral("表"), ColumnFit::kContents);
  view.Show(Stocks({{"A", 3}, {"B", -1}, {"C", 0}}));
  EXPECT_EQ(Data(view, 0, 0, Qt::ForegroundRole).value<QColor>(), QColor(1, 2, 3));
  const auto rise = Data(view, 0, 1, Qt::ForegroundRole).value<QColor>();
  const auto fall = Data(view, 1, 1, Qt::ForegroundRole).value<QColor>();
  EXPECT_NE(rise, fall);
  EXPECT_FALSE(Data(view, 2, 1, Qt::ForegroundRole).isValid());
  const QVariant right(Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_EQ(Data(view, 0, 1, Qt::TextAlignmentRole), right);
  EXPECT_NE(Data(view, 0, 0, Qt::TextAlignmentRole), right);
  EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole), right);
}

TEST(TableView, ExpectedTextsSetTheWidthsAndTheRestIsShared) {
  base::Table table = Stocks({{"A", 3}});
  table.columns[0].longest_text = "WWWW.W";
  TableView view(QStringLiteral("表"), ColumnFit::kExpected);
  view.resize(600, 200);
  view.Show(table);
  EXPECT_EQ(view.columnWidth(0), view.fontMetrics().horizontalAdvance(QStringLiteral("WWWW.W")) +
                                     view.fontMetrics().height());
  EXPECT_EQ(view.horizontalHeader()->sectionResizeMode(1), QHeaderView::Stretch);
  EXPECT_GT(view.columnWidth(1), view.columnWidth(0));
}

base::Color Plain(const QColor& color) {
  return base::Color::FromNumber(color.red() | (color.green() << 8) | (color.blue() << 16));
}

TEST(Colors, RisesAndFallsCanBeReadOnEveryRow) {
  const widgets::Look look;
  for (const widgets::Theme theme : {widgets::Theme::kDark, widgets::Theme::kLight}) {
    look.Apply(theme, 100);
    const QPalette palette = QGuiApplication::palette();
    EXPECT_EQ(widgets::IsDark(palette), theme == widgets::Theme::kDark);
    const widgets::Colors& colors = widgets::ColorsOf(palette);
    for (const QRgb color : {colors.up, colors.down}) {
      const base::Color text = Plain(widgets::TextColorOnRows(color, palette));
      for (const auto role : {QPalette::Base, QPalette::AlternateBase}) {
        EXPECT_GE(base::Contrast(text, Plain(palette.color(role))), 4.5);
      }
    }
  }
}

}  // namespace
}  // namespace orin::test
