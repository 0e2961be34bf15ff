#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>
#include <algorithm>
#include <stdexcept>

#include "lists/ui/meigaramenu_form.h"
#include "lists/ui/pricelist_form.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

using lists::meigaramenu_Form;
using lists::pricelist_Form;
using widgets::Text;
using widgets::Utf8;
using Strings = std::vector<std::string>;

/// The entry of the menu with that text; "&" and what follows it do not count.
QAction* Entry(const QWidget& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->text() == text || action->text().startsWith(text + QStringLiteral("(&"))) {
      return action;
    }
  }
  ADD_FAILURE() << "no entry " << Utf8(text);
  return nullptr;
}

/// The texts of the row's cells that are shown.
Strings Line(const QTableView& view, int row) {
  Strings line;
  for (int column = 0; column < view.model()->columnCount(); ++column) {
    if (view.isColumnHidden(column)) continue;
    line.push_back(Utf8(view.model()->index(row, column).data().toString()));
  }
  return line;
}

/// Gives the widget a text as an input method does, a character at a time.
void Type(QWidget& widget, const QString& text) {
  for (const QChar letter : text) {
    QInputMethodEvent typed;
    typed.setCommitString(letter);
    QApplication::sendEvent(&widget, &typed);
  }
}

class ListsJourney : public WindowTest {
 protected:
  void SetUp() override {
    MakeDemo();
    program_ = Start(messages_);
    messages_.ForgetShown();
  }
  void TearDown() override { program_.window->close(); }

  template <typename Form>
  [[nodiscard]] Form& Active() const {
    const QMdiSubWindow* window = program_.window->findChild<QMdiArea*>()->activeSubWindow();
    auto* form = window == nullptr ? nullptr : qobject_cast<Form*>(window->widget());
    if (form == nullptr) throw std::runtime_error("another window is in front");
    return *form;
  }
  /// Chooses an entry of the menu bar, as {"銘柄", "業種別メニュー", "金融"}.
  void Choose(const std::vector<const char*>& path) {
    const QWidget* menu = program_.window->menuBar();
    QAction* action = nullptr;
    for (const char* text : path) {
      action = Entry(*menu, Text(text));
      ASSERT_NE(action, nullptr);
      menu = action->menu();
    }
    action->trigger();
    QCoreApplication::processEvents();
  }
  static QTableView& View(const QWidget& form) { return *form.findChild<QTableView*>(); }
  static QLineEdit& Box(const QWidget& form) { return *form.findChild<QLineEdit*>(); }
  /// The codes of the menu that is in front.
  [[nodiscard]] Strings Codes() const {
    const QTableView& view = View(Active<meigaramenu_Form>());
    Strings codes;
    for (int row = 0; row < view.model()->rowCount(); ++row) codes.push_back(Line(view, row)[0]);
    return codes;
  }
  pricelist_Form& OpenListing(const char* code) {
    auto& listing = Active<pricelist_Form>();
    QTest::keyClicks(&Box(listing), QLatin1String(code));
    QTest::keyClick(&Box(listing), Qt::Key_Return);
    return listing;
  }

  Program program_;
};

TEST_F(ListsJourney, EntryOfTheMenuBarShowsItsMenuAndAStockOpensItsPrices) {
  Choose({"銘柄", "証券コードメニュー", "ＮＹ市場", "Ａ"});
  auto& menu = Active<meigaramenu_Form>();
  EXPECT_EQ(Utf8(menu.windowTitle()), "証券コードメニュー（ＮＹ市場：Ａ）");
  EXPECT_EQ(Line(View(menu), 0), (Strings{"ABBV", "ABBVIE", "ＮＹ市場"}));
  EXPECT_EQ(Codes(), Strings{"ABBV"});
  QTest::keyClick(&View(menu), Qt::Key_Return);
  auto& listing = Active<pricelist_Form>();
  EXPECT_EQ(Utf8(listing.windowTitle()), "株価一覧（ABBV：ABBVIE）");
  EXPECT_EQ(Line(View(listing), 0), (Strings{"2020/01/10", "90.23", "90.29", "88.83", "89.06",
                                             "-1.15", "-1.27％", "8,077,594"}));
  FindByText<QLabel>(listing, QStringLiteral("終値 89.06　前日比 -1.15（-1.27％）"));
}

TEST_F(ListsJourney, EveryKindOfMenuIsReachedFromTheMenuBar) {
  struct Case {
    std::vector<const char*> path;
    const char* caption;
    Strings codes;
  };
  const std::vector<Case> cases = {
      {{"銘柄", "証券コードメニュー", "ＮＡ市場", "Ｃ"},
       "証券コードメニュー（ＮＡ市場：Ｃ）",
       {"CMCSA", "COST", "CSCO"}},
      {{"銘柄", "証券コードメニュー", "他市場", "その他"},
       "証券コードメニュー（他市場：その他）",
       {"^DJI", "^GSPC", "^IXIC"}},
      {{"銘柄", "証券コードメニュー", "他市場", "Ｚ"}, "証券コードメニュー（他市場：Ｚ）", {}},
      {{"銘柄", "５０音順メニュー", "ナ行"}, "５０音順メニュー（ナ行）", {"^IXIC"}},
      {{"銘柄", "業種別メニュー", "公共", "ＮＹ市場"}, "業種別メニュー（公共：ＮＹ市場）", {"EXC"}},
  };
  for (const Case& one : cases) {
    Choose(one.path);
    EXPECT_EQ(Utf8(Active<meigaramenu_Form>().windowTitle()), one.caption);
    EXPECT_EQ(Codes(), one.codes);
  }
  const auto& area = *program_.window->findChild<QMdiArea*>();
  EXPECT_EQ(area.subWindowList().size(), 2);  // the first listing and one menu for them all
}

TEST_F(ListsJourney, SearchAnswersEveryLetterAndEnterOpensTheBestMatch) {
  Choose({"銘柄", "銘柄検索"});
  auto& menu = Active<meigaramenu_Form>();
  EXPECT_EQ(QApplication::focusWidget(), &Box(menu));
  QTest::keyClick(&Box(menu), Qt::Key_C);
  EXPECT_EQ(Codes().size(), 26U);  // codes and names with a "C"
  QTest::keyClick(&Box(menu), Qt::Key_A);
  EXPECT_EQ(Codes()[0], "CAT");
  QTest::keyClick(&Box(menu), Qt::Key_T);
  EXPECT_EQ(Codes(), Strings{"CAT"});
  QTest::keyClick(&Box(menu), Qt::Key_Return);
  EXPECT_EQ(Line(View(Active<pricelist_Form>()), 0)[4], "146.13");
}

TEST_F(ListsJourney, SearchFindsByCodeNameAndReadingInAnyWidth) {
  Choose({"銘柄", "銘柄検索"});
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"nvd", "NVDA"},         {"ｇｏｌｄｍａｎ", "GS"}, {"sachs", "GS"}, {"ＡＡＰＬ", "AAPL"},
      {"なすだっく", "^IXIC"}, {"ﾅｽﾀﾞｯｸ", "^IXIC"},      {"dji", "^DJI"},
  };
  for (const auto& [typed, code] : cases) {
    Box(Active<meigaramenu_Form>()).clear();
    Type(Box(Active<meigaramenu_Form>()), Text(typed));
    EXPECT_EQ(Codes(), Strings{code}) << typed;
  }
  Type(Box(Active<meigaramenu_Form>()), QStringLiteral("無い"));
  EXPECT_EQ(Codes(), Strings());
  FindByText<QLabel>(Active<meigaramenu_Form>(), QStringLiteral("該当する銘柄がありません"));
  QTest::keyClick(&Box(Active<meigaramenu_Form>()), Qt::Key_Return);
  EXPECT_EQ(Utf8(Active<meigaramenu_Form>().windowTitle()), "銘柄検索");
}

TEST_F(ListsJourney, ArrowsChooseAmongTheFoundAndClearingBringsTheMenuBack) {
  Choose({"銘柄", "証券コードメニュー", "ＮＡ市場", "Ｃ"});
  auto& menu = Active<meigaramenu_Form>();
  QLineEdit& box = Box(menu);
  QTest::keyClicks(&box, QStringLiteral("bi"));
  EXPECT_EQ(Utf8(menu.windowTitle()), "銘柄検索");
  const Strings found = Codes();
  ASSERT_EQ(found, (Strings{"BIIB", "XOM"}));  // the code begins so; EXXON MOBIL has it inside
  box.clear();
  EXPECT_EQ(Utf8(menu.windowTitle()), "証券コードメニュー（ＮＡ市場：Ｃ）");
  EXPECT_EQ(Codes(), (Strings{"CMCSA", "COST", "CSCO"}));
  QTest::keyClicks(&box, QStringLiteral("bi"));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) {
    QTest::keyClick(&box, key);
  }
  EXPECT_EQ(Utf8(Active<pricelist_Form>().windowTitle()), "株価一覧（XOM：EXXON MOBIL）");
}

TEST_F(ListsJourney, ClearedSearchWithoutAMenuShowsNothing) {
  Choose({"銘柄", "銘柄検索"});
  QLineEdit& box = Box(Active<meigaramenu_Form>());
  QTest::keyClicks(&box, QStringLiteral("aapl"));
  EXPECT_EQ(Codes(), Strings{"AAPL"});
  box.clear();
  EXPECT_EQ(Codes(), Strings());
}

TEST_F(ListsJourney, ListingShowsDaysWeeksAndMonths) {
  auto& listing = OpenListing("aapl");
  const QTableView& view = View(listing);
  const auto choose = [&](const char* period) {
    FindByText<QPushButton>(listing, Text(period))->click();
  };
  EXPECT_EQ(view.model()->rowCount(), 1013);
  EXPECT_EQ(Line(view, 0), (Strings{"2020/01/10", "310.60", "312.67", "308.25", "310.33", "+0.70",
                                    "+0.23％", "35,217,272"}));
  choose("週足");
  EXPECT_EQ(view.model()->rowCount(), 210);
  // 2020/01/06 to 01/10, against 297.43 on 01/03.
  EXPECT_EQ(Line(view, 0), (Strings{"2020/01/10", "293.79", "312.67", "292.75", "310.33", "+12.90",
                                    "+4.34％", "167,578,972"}));
  choose("月足");
  EXPECT_EQ(view.model()->rowCount(), 49);
  // From 2020/01/02 on, against 293.65 on 12/31.
  EXPECT_EQ(Line(view, 0), (Strings{"2020/01/10", "296.24", "312.67", "292.75", "310.33", "+16.68",
                                    "+5.68％", "238,029,772"}));
  EXPECT_EQ(Utf8(view.model()->headerData(5, Qt::Horizontal).toString()), "前月比");
  FindByText<QLabel>(listing, QStringLiteral("前日比 +0.70（+0.23％）"));
  choose("日足");
  EXPECT_EQ(view.model()->rowCount(), 1013);
}

TEST_F(ListsJourney, HeadingSortsAndTheSelectionStaysWithItsDay) {
  auto& listing = OpenListing("CAT");
  QTableView& view = View(listing);
  QHeaderView& header = *view.horizontalHeader();
  EXPECT_EQ(Line(view, view.currentIndex().row())[0], "2020/01/10");
  const auto click_volume = [&] {
    QTest::mouseClick(
        header.viewport(), Qt::LeftButton, {},
        QPoint(header.sectionViewportPosition(7) + header.sectionSize(7) / 2, header.height() / 2));
  };
  program_.window->resize(1600, 900);
  click_volume();
  if (header.sortIndicatorOrder() == Qt::AscendingOrder) click_volume();
  // The days of the largest volumes in the file.
  EXPECT_EQ(Line(view, 0)[0], "2018/04/24");
  EXPECT_EQ(Line(view, 0)[7], "24,122,300");
  EXPECT_EQ(Line(view, 1)[7], "24,113,300");
  EXPECT_EQ(Line(view, view.currentIndex().row())[0], "2020/01/10");
  EXPECT_GT(view.currentIndex().row(), 1);
  // Another period keeps the order.
  FindByText<QPushButton>(listing, QStringLiteral("週足"))->click();
  EXPECT_EQ(header.sortIndicatorSection(), 7);
  EXPECT_EQ(Line(view, 0)[0], "2018/10/26");
  EXPECT_EQ(Line(view, 0)[7], "71,665,700");
}

TEST_F(ListsJourney, SelectedRowsAreCopied) {
  auto& listing = OpenListing("AAPL");
  QTableView& view = View(listing);
  QGuiApplication::clipboard()->setText(QStringLiteral("before"));
  view.clearSelection();
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Utf8(QGuiApplication::clipboard()->text()), "before");
  view.setCurrentIndex(view.model()->index(0, 0));
  QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Utf8(QGuiApplication::clipboard()->text()),
            "2020/01/10\t310.60\t312.67\t308.25\t310.33\t0.70\t0.23\t35217272\n"
            "2020/01/09\t307.24\t310.43\t306.20\t309.63\t6.44\t2.12\t42527100\n");
}

TEST_F(ListsJourney, ListingIsSavedAsCsvAndAFailureIsTold) {
  auto& listing = OpenListing("AAPL");
  FindByText<QPushButton>(listing, QStringLiteral("週足"))->click();
  messages_.WillChoose(home_ / "saved.csv").WillChoose(std::nullopt);
  QTest::keyClick(&View(listing), Qt::Key_S, Qt::ControlModifier);
  ASSERT_EQ(messages_.FileQuestions().size(), 1U);
  EXPECT_EQ(messages_.FileQuestions()[0].start, "AAPL_週足.csv");
  const std::string bytes = *base::ReadFile(home_ / "saved.csv");
  EXPECT_TRUE(
      bytes.starts_with("\xEF\xBB\xBF年月日,始値,高値,安値,終値,前週比,前週比率,出来高\r\n"
                        "2020/01/10,293.79,312.67,292.75,310.33,12.90,4.34,167578972\r\n"));
  EXPECT_EQ(std::ranges::count(bytes, '\n'), 211);
  listing.mnu_save_Click();
  EXPECT_TRUE(messages_.Texts().empty());
  messages_.WillChoose(home_ / "missing" / "saved.csv");
  listing.mnu_save_Click();
  ASSERT_EQ(messages_.Texts().size(), 1U);
  EXPECT_NE(messages_.Texts()[0].find("saved.csv"), std::string::npos) << messages_.Texts()[0];
}

TEST_F(ListsJourney, NeighboursAreSteppedThroughToBothEnds) {
  auto& listing = Active<pricelist_Form>();
  EXPECT_EQ(Utf8(listing.windowTitle()), "株価一覧（^DJI：NYダウ工業株30種）");
  Choose({"銘柄", "前の銘柄"});
  EXPECT_EQ(messages_.Texts(), Strings{"銘柄コードを先頭までサーチしました。"});
  Choose({"銘柄", "次の銘柄"});
  EXPECT_EQ(Utf8(listing.windowTitle()), "株価一覧（^GSPC：S&P500種株価指数）");
  OpenListing("XOM");
  Choose({"銘柄", "次の銘柄"});
  EXPECT_EQ(messages_.Texts().back(), "銘柄コードを最後までサーチしました。");
  EXPECT_EQ(Utf8(listing.windowTitle()), "株価一覧（XOM：EXXON MOBIL）");
  Choose({"銘柄", "前の銘柄"});
  EXPECT_EQ(Utf8(listing.windowTitle()), "株価一覧（WFC：WELLS FARGO）");
  EXPECT_EQ(messages_.Texts().size(), 2U);
}

TEST_F(ListsJourney, TypedCodeShowsItsStockAndAWrongOneSaysSo) {
  auto& listing = Active<pricelist_Form>();
  QLineEdit& box = Box(listing);
  const QString before = listing.windowTitle();
  for (const char* wrong : {"NONE", "日本", "a/b"}) {
    box.clear();
    Type(box, Text(wrong));
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(messages_.Texts(), Strings{"銘柄コードが見つかりません。"}) << wrong;
    EXPECT_EQ(listing.windowTitle(), before);
    messages_.ForgetShown();
  }
  box.clear();
  Type(box, QStringLiteral("ｇｓ"));
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_TRUE(messages_.Texts().empty());
  EXPECT_EQ(Line(View(listing), 0)[4], "242.11");
  EXPECT_EQ(QApplication::focusWidget(), &View(listing));
}

TEST_F(ListsJourney, ColoursAndColumnsOfAMenuFollowTheSettings) {
  Choose({"銘柄", "業種別メニュー", "金融", "ＮＹ市場"});
  auto& menu = Active<meigaramenu_Form>();
  const QTableView& view = View(menu);
  const Strings codes = Codes();
  auto& settings = program_.state->settings;
  settings.menu_color.nyse_common = {0x12, 0x34, 0x56};
  settings.menu_display.category_display = 1;
  menu.Reload();
  EXPECT_EQ(Codes(), codes);
  EXPECT_EQ(view.model()->index(0, 0).data(Qt::ForegroundRole).value<QColor>(),
            QColor(0x12, 0x34, 0x56));
  EXPECT_EQ(Line(view, 0), (Strings{"BAC", "BANK OF AMERICA", "金融", "ＮＹ市場"}));
  settings.menu_display.code_display = 2;
  settings.menu_display.category_display = 0;
  menu.Reload();
  EXPECT_EQ(Line(view, 0), (Strings{"BANK OF AMERICA", "ＮＹ市場"}));
}

TEST_F(ListsJourney, MenuReadAnewBehindAListingLeavesTheListingInFront) {
  Choose({"銘柄", "証券コードメニュー", "ＮＡ市場", "Ｃ"});
  auto& menu = Active<meigaramenu_Form>();
  QTest::keyClick(&View(menu), Qt::Key_Return);
  auto& listing = Active<pricelist_Form>();
  Choose({"表示", "配色", "明るい配色"});
  EXPECT_EQ(&Active<pricelist_Form>(), &listing);
  EXPECT_EQ(Utf8(menu.windowTitle()), "証券コードメニュー（ＮＡ市場：Ｃ）");
  EXPECT_EQ(View(menu).model()->rowCount(), 3);
}

TEST_F(ListsJourney, LargerTextsReachEveryPartOfTheWindows) {
  auto& listing = Active<pricelist_Form>();
  const auto* heading = FindByText<QLabel>(listing, QStringLiteral("NYダウ工業株30種"));
  const double size = heading->font().pointSizeF();
  const int row_height = View(listing).rowHeight(0);
  const int column_width = View(listing).columnWidth(1);
  for (int step = 0; step < 5; ++step) Choose({"表示", "文字を大きく"});
  EXPECT_NEAR(heading->font().pointSizeF(), size * 1.5, 0.1);
  EXPECT_GT(View(listing).rowHeight(0), row_height);
  EXPECT_GT(View(listing).columnWidth(1), column_width);
  Choose({"銘柄", "証券コードメニュー", "ＮＡ市場", "Ｃ"});
  const QTableView& menu = View(Active<meigaramenu_Form>());
  const int menu_row_height = menu.rowHeight(0);
  Choose({"表示", "標準の大きさ"});
  EXPECT_LT(menu.rowHeight(0), menu_row_height);
  EXPECT_EQ(View(listing).rowHeight(0), row_height);
  EXPECT_NEAR(heading->font().pointSizeF(), size, 0.1);
}

}  // namespace
}  // namespace orin::test
