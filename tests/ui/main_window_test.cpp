#include <QAbstractSpinBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTableView>
#include <QTextBrowser>
#include <fstream>
#include <set>

#include "settings/ui/settings_form.h"
#include "support/test_files.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;

class MainWindow : public WindowTest {
 protected:
  void SetUp() override {
    MakeDemo();
    program_ = Start(messages_);
  }
  void TearDown() override {
    program_.window->close();
    EXPECT_TRUE(messages_.IsEveryAnswerUsed());
  }

  QMdiArea* Area() { return program_.window->findChild<QMdiArea*>(); }
  QMdiSubWindow* Front() { return Area()->activeSubWindow(); }
  std::string FrontTitle() {
    return Front() == nullptr ? "" : widgets::Utf8(Front()->widget()->windowTitle());
  }
  int FrontRows() {
    const auto* table = Front()->widget()->findChild<QTableView*>();
    return table == nullptr ? -1 : table->model()->rowCount();
  }
  /// The entry of the menu bar with that text, which its menus are searched for.
  QAction* Entry(const QString& text) {
    for (QAction* action : program_.window->findChildren<QAction*>()) {
      if (action->menu() == nullptr && action->text().startsWith(text)) return action;
    }
    ADD_FAILURE() << "no entry " << widgets::Utf8(text);
    return nullptr;
  }
  void Choose(const char* text) {
    Entry(widgets::Text(text))->trigger();
    QCoreApplication::processEvents();
  }

  Program program_;
};

TEST_F(MainWindow, EveryMenuEntryHasAKeyOrAMnemonicAndWorks) {
  std::set<QString> keys;
  for (const QAction* menu : program_.window->menuBar()->actions()) {
    EXPECT_TRUE(menu->text().contains('&'));
    std::set<QString> mnemonics;
    for (const QAction* entry : menu->menu()->actions()) {
      if (entry->isSeparator() || entry->menu() != nullptr) continue;
      const QString key = entry->shortcut().toString();
      if (!key.isEmpty()) {
        EXPECT_TRUE(keys.insert(key).second) << widgets::Utf8(entry->text());
      }
      const qsizetype mark = entry->text().indexOf('&');
      if (mark >= 0) {
        EXPECT_TRUE(mnemonics.insert(entry->text().mid(mark, 2)).second)
            << widgets::Utf8(entry->text());
      }
      // The demo market has all there is to work with, but a store is there already.
      const bool is_made = entry->text().contains(QStringLiteral("株価データを用意する"));
      EXPECT_EQ(entry->isEnabled(), !is_made) << widgets::Utf8(entry->text());
    }
  }
}

TEST_F(MainWindow, ListsOfTheStoreOpenInWindows) {
  const std::vector<std::pair<const char*, std::pair<const char*, int>>> kLists = {
      {"銘柄マスター一覧", {"銘柄マスター一覧", 43}},
      {"５０音順一覧", {"５０音順一覧（orin.ind）", 43}},
      {"追加銘柄一覧", {"追加銘柄一覧（orin.add）", 43}},
      {"削除銘柄一覧", {"削除銘柄一覧（orin.del）", 0}},
      {"分析項目一覧", {"分析項目一覧", 426}},
      {"株式分割一覧", {"株式分割一覧", 0}},
  };
  for (const auto& [entry, expected] : kLists) {
    Choose(entry);
    EXPECT_EQ(FrontTitle(), expected.first);
    EXPECT_EQ(FrontRows(), expected.second) << entry;
  }
  Choose("株価データの検査");
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"株価データに問題はありません。"});
  EXPECT_EQ(messages_.Shown()[0].caption, "ミルテ（株価データの検査）");
}

TEST_F(MainWindow, StockOfAListOpensItsPrices) {
  Choose("銘柄マスター一覧");
  auto* table = Front()->widget()->findChild<QTableView*>();
  table->sortByColumn(1, Qt::AscendingOrder);
  Q_EMIT table->activated(table->model()->index(0, 0));
  EXPECT_EQ(FrontTitle(), "株価一覧（AAPL：APPLE）");
  EXPECT_EQ(Area()->subWindowList().size(), 3);
  // Its window is there already.
  program_.window->OpenStock(
      program_.state->store->Master().Find(*store::StockCode::Parse("AAPL")));
  EXPECT_EQ(Area()->subWindowList().size(), 3);
}

TEST_F(MainWindow, AnalysisRunsTheGroupAndShowsItsLists) {
  Choose("株価分析の実行");
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"株価チェックが終了しました。"});
  EXPECT_GT(Area()->subWindowList().size(), 1);
  EXPECT_TRUE(FrontTitle().starts_with("分析結果（")) << FrontTitle();
  EXPECT_TRUE(
      program_.window->windowTitle().startsWith(QStringLiteral("ミルテ（株価分析終了） - [")));
}

TEST_F(MainWindow, CsvUpdateAddsADayAndReloadsTheWindows) {
  const fs::path quotes = home_ / "new";
  fs::create_directories(quotes);
  std::ofstream(quotes / "^DJI.csv")
      << "年月日,始値,高値,安値,終値,出来高\n"
      << "2020/01/13,28869.01,28909.91,28819.43,28907.05,249830000\n";
  const int before = FrontRows();
  messages_.WillChoose(quotes);
  Choose("ＣＳＶ株価更新");
  ASSERT_EQ(messages_.Shown().size(), 1U);
  EXPECT_EQ(messages_.Shown()[0].caption, "ミルテ（ＣＳＶ株価更新）");
  EXPECT_TRUE(messages_.Shown()[0].text.starts_with("ＣＳＶ株価更新が終了しました。"));
  EXPECT_EQ(FrontRows(), before + 1);
}

TEST_F(MainWindow, SettingsAreSavedAndTakeEffectAtOnce) {
  WithDialog<settings::settings_Form>([](settings::settings_Form& form) {
    form.ShowGroup("Window");
    auto* size = form.findChild<QAbstractSpinBox*>(QStringLiteral("FontPercent"));
    ASSERT_NE(size, nullptr);
    size->selectAll();
    QTest::keyClicks(size, QStringLiteral("150"));
    form.ok_Click();
  });
  const double before = QApplication::font().pointSizeF();
  Choose("設定");
  EXPECT_NEAR(QApplication::font().pointSizeF(), before * 1.5, 0.1);
  const auto profile = base::ProfileFile::Load(home_ / "orin.ini");
  EXPECT_EQ(profile->Get("Window", "FontPercent", ""), "150");
  Choose("標準の大きさ");
  EXPECT_NEAR(QApplication::font().pointSizeF(), before, 0.1);
}

TEST_F(MainWindow, DarkAndLightChangeThePaletteOfOpenWindows) {
  Choose("暗い配色");
  EXPECT_LT(program_.window->palette().color(QPalette::Base).lightness(), 100);
  Choose("明るい配色");
  EXPECT_GT(program_.window->palette().color(QPalette::Base).lightness(), 200);
}

TEST_F(MainWindow, HelpOpensAtThePageOfTheWindow) {
  Choose("このウィンドウの説明");
  EXPECT_EQ(FrontTitle(), "使い方");
  const auto* browser = Front()->widget()->findChild<QTextBrowser*>();
  EXPECT_TRUE(browser->source().fileName().endsWith(QStringLiteral("price_listing.md")));
  EXPECT_GT(browser->toPlainText().size(), 200);
  // Every page that a window names is there.
  for (const char* page : {"index", "first_start", "main_window", "stock_menus", "price_listing",
                           "settings", "screening", "condition_editor", "items", "trouble"}) {
    EXPECT_TRUE(fs::exists(support::ManualFile(std::string(page) + ".md"))) << page;
  }
}

TEST_F(MainWindow, WithoutAnErrorThereIsNoLogToShow) {
  Choose("エラーの記録");
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"エラーの記録はありません。"});
  messages_.ForgetShown();
  program_.state->settings.analysis_group = {};
  Choose("株価分析の実行");
  ASSERT_EQ(messages_.Shown().size(), 1U);
  EXPECT_NE(messages_.Shown()[0].text.find("orin.chk"), std::string::npos);
  Choose("エラーの記録");
  EXPECT_EQ(FrontTitle(), "エラーの記録");
}

}  // namespace
}  // namespace orin::test
