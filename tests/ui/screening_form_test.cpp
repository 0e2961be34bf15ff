#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTreeWidget>
#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "base/cp932.h"
#include "screening/ui/check2_form.h"
#include "screening/ui/columns_form.h"
#include "screening/ui/result_form.h"
#include "settings/analysis_group.h"
#include "store/transaction.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;
using screening::check2_Form;
using screening::columns_Form;
using screening::result_Form;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using widgets::Text;
using widgets::Utf8;

constexpr const char* kEnd = "株価チェックが終了しました。";

class AnalysisWindow : public WindowTest {
 protected:
  void SetUp() override {
    MakeDemo();
    program_ = Start(messages_);
  }

  check2_Form& Window() {
    auto* window = Find<check2_Form>().empty() ? nullptr : Find<check2_Form>().front();
    if (window != nullptr) return *window;
    program_.window->mnu_check2_Click();
    return *Find<check2_Form>().front();
  }

  template <typename Form>
  std::vector<Form*> Find() {
    std::vector<Form*> found;
    for (Form* form : program_.window->findChildren<Form*>()) found.push_back(form);
    return found;
  }

  result_Form& Result(const std::string& title) {
    for (result_Form* form : Find<result_Form>()) {
      if (form->Content().title == title) return *form;
    }
    ADD_FAILURE() << "no result " << title;
    return *Find<result_Form>().front();
  }

  /// Makes the entries of the group those of these files, all ticked, and opens the window.
  check2_Form& WindowWith(const std::vector<fs::path>& files) {
    settings::AnalysisGroup group;
    for (size_t i = 0; i < files.size(); ++i) {
      group.entries.at(i) = {"", files[i].string(), true};
    }
    program_.state->settings.analysis_group = group;
    check2_Form& window = Window();
    window.Reload();
    return window;
  }

  fs::path WriteAnalysis(const std::string& title, const std::string& condition,
                         const std::string& further = {}) {
    const fs::path results = home_ / ("results_" + title);
    fs::create_directories(results);
    const fs::path file = home_ / (title + ".txt");
    std::ofstream(file) << "タイトル：" << title << "\n分析結果格納場所：" << results.string()
                        << "\n分析項目：" << condition << '\n'
                        << further;
    return file;
  }

  /// Takes seconds over the demo market.
  fs::path WriteSlowAnalysis(const std::string& title) {
    std::string condition;
    for (int i = 2; i < 900; ++i) {
      const std::string days = "(" + std::to_string(i) + ",";
      condition += (i == 2 ? "" : i % 90 == 0 ? " Or " : " And ");
      condition += "ＲＣＩ" + days + "0) + ＲＣＩ" + days + "-1) + ＲＣＩ" + days + "-2) + ＲＣＩ" +
                   days + "-3) > -99999" + (i % 90 == 89 ? " And 1 = 2" : "");
    }
    return WriteAnalysis(title, condition);
  }

  [[nodiscard]] size_t ListsOf(const std::string& title) {
    const auto lists = fs::directory_iterator(home_ / ("results_" + title));
    return static_cast<size_t>(std::distance(begin(lists), end(lists)));
  }

  static QAction* Action(const QMenu& menu, const QString& part) {
    for (QAction* action : menu.actions()) {
      if (action->text().contains(part)) return action;
    }
    ADD_FAILURE() << "no entry " << part.toStdString();
    return nullptr;
  }

  /// A window that loads from the store.
  void OpenOtherStock() {
    program_.window->OpenStock(
        program_.state->store->Master().Find(*store::StockCode::Parse("AAPL")));
  }

  /// What the explanation beside a result says.
  static std::string Outcome(result_Form& form) {
    return Utf8(form.findChild<screening::ExplanationView*>()->findChild<QLabel*>()->text());
  }

  Program program_;
};

TEST_F(AnalysisWindow, GroupIsRunAndEveryListHasItsTable) {
  program_.window->mnu_analysis_Click();
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{kEnd});
  ASSERT_EQ(Find<result_Form>().size(), 3U);
  for (result_Form* form : Find<result_Form>()) {
    const auto list = screening::ReadList(form->Content().list);
    ASSERT_TRUE(list) << list.error().message;
    EXPECT_EQ(list->codes, form->Content().codes);
    EXPECT_EQ(form->Table().Content().rows.size(), list->codes.size());
  }
  QTreeWidgetItem* first = Window().List().topLevelItem(0);
  EXPECT_THAT(Utf8(first->text(5)), testing::EndsWith("銘柄"));
}

TEST_F(AnalysisWindow, CaptionNamesEveryFileAndTheEndUntilTheNextJob) {
  check2_Form& window = WindowWith({WriteAnalysis("一", "終値(0) > 0"),
                                    WriteAnalysis("二", "1 < 2 < 3 < 4 < 5 < 6 < 7"),
                                    WriteAnalysis("三", "終値(0) > 100")});
  const QSignalSpy captions(program_.window.get(), &QWidget::windowTitleChanged);
  window.Command1_Click();
  const auto is_shown = [&captions](const std::string& caption) {
    return std::ranges::any_of(captions, [&caption](const QList<QVariant>& shown) {
      return Utf8(shown.front().toString()).starts_with(caption);
    });
  };
  for (const char* title : {"一", "二", "三"}) {
    EXPECT_TRUE(is_shown("ミルテ（株価分析：" + std::string(title) + "）")) << title;
  }
  EXPECT_THAT(Utf8(program_.window->windowTitle()), StartsWith("ミルテ（株価分析終了）"));
  program_.window->mnu_check_Click();
  EXPECT_THAT(Utf8(program_.window->windowTitle()), testing::Not(HasSubstr("株価分析終了")));
}

TEST_F(AnalysisWindow, WindowThatLoadsFromAChangedStoreIsReadAnew) {
  {
    auto other = store::StockStore::Open(program_.state->StoreLocation(),
                                         {store::Access::kWrite, {}}, base::NativeFileSystem());
    ASSERT_TRUE(other) << other.error().message;
    ASSERT_TRUE(other->AppendDay(*base::Date::Parse("2020/01/13"), {}));
  }
  const auto days = [this] { return program_.state->store->Days().Count(); };
  const int32_t before = days();
  OpenOtherStock();
  EXPECT_THAT(Utf8(program_.window->statusBar()->currentMessage()),
              HasSubstr("読み込み直します。"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return days() == before + 1; }));
  EXPECT_THAT(Utf8(program_.window->statusBar()->currentMessage()),
              HasSubstr("読み込み直しました。"));
  EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(AnalysisWindow, StoreOfAKilledWriterIsRecoveredAndReadAgain) {
  const store::StoreLocation location = program_.state->StoreLocation();
  const store::StockRecord stock = program_.state->store->Master().Stocks().front();
  const std::vector<store::BarChange> changes = {
      {stock.slot, base::DayIndex(1), support::FlatBar(50)}};
  for (int64_t n = 1; !store::HasJournal(location); ++n) {
    support::FaultyFileSystem files;
    files.DieAt(n);
    auto killed = store::StockStore::Open(location, {store::Access::kWrite, {}}, files);
    if (killed) static_cast<void>(killed->ChangeBars(changes));
    ASSERT_TRUE(files.IsDead()) << "no journal was left";
  }
  OpenOtherStock();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !store::HasJournal(location); }));
  base::BarColumns bars;
  program_.state->store->LoadBars(stock.slot, base::DayIndex(1), base::DayIndex(1), bars);
  EXPECT_EQ(bars.close, std::vector<base::Currency>{support::FlatBar(50).close});
  EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(AnalysisWindow, ReloadWaitsForTheWriterAndKeepsTheRamDisk) {
  shell::ProgramState& state = *program_.state;
  state.settings.bus.ram_disk_directory = (home_ / "ram").string();
  ASSERT_TRUE(shell::LoadStore(state, *program_.screen));
  ASSERT_TRUE(state.ram_disk);
  const int32_t before = state.store->Days().Count();
  const auto is_reloaded = [&] { return state.store->Days().Count() == before + 1; };
  {
    auto writer = store::StockStore::Open(state.StoreLocation(), {store::Access::kWrite, {}},
                                          base::NativeFileSystem());
    ASSERT_TRUE(writer) << writer.error().message;
    ASSERT_TRUE(writer->AppendDay(*base::Date::Parse("2020/01/13"), {}));
    OpenOtherStock();
    // Some looks of the window at the store.
    EXPECT_FALSE(QTest::qWaitFor(is_reloaded, 1000));
  }
  EXPECT_TRUE(QTest::qWaitFor(is_reloaded));
  EXPECT_TRUE(state.ram_disk);
  EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(AnalysisWindow, ResultIsSortedExplainedSteppedThroughAndExported) {
  WindowWith({WriteAnalysis("高い", "終値(0) > 100")}).Command1_Click();
  result_Form& form = Result("高い");
  widgets::TableView& table = form.Table();
  ASSERT_GT(table.Content().rows.size(), 3U);

  table.SelectCode(QStringLiteral("AAPL"));
  table.sortByColumn(3, Qt::DescendingOrder);
  EXPECT_EQ(table.CurrentCode(), QStringLiteral("AAPL")) << "the row goes with its stock";
  EXPECT_THAT(Outcome(form), StartsWith("AAPL（APPLE）は 2020/01/10 に選ばれます。"));

  // A stock that was not selected.
  auto* box = form.findChild<QLineEdit*>();
  box->setText(QStringLiteral("intc"));
  form.Code_Entered();
  EXPECT_THAT(Outcome(form), StartsWith("INTC（"));
  EXPECT_THAT(Outcome(form), HasSubstr("選ばれません。1番目の条件「終値(0) > 100」が成り立たない"));
  box->setText(QStringLiteral("NOSUCH"));
  form.Code_Entered();
  EXPECT_EQ(Outcome(form), "NOSUCH：銘柄コードが見つかりません。");

  const std::vector<store::StockCode> codes = form.Codes();
  table.SelectCode(Text(codes[0].Text()));
  program_.window->mnu_aftermeigara_Click();
  EXPECT_EQ(Utf8(table.CurrentCode()), codes[1].Text());
  Q_EMIT table.CodeChosen(table.CurrentCode());
  auto* listing = program_.window->findChild<lists::pricelist_Form*>();
  for (auto* each : Find<lists::pricelist_Form>()) listing = each;
  const auto& master = program_.state->store->Master();
  EXPECT_EQ(listing->Stock(), master.Find(codes[1]));
  listing->Step(1);
  EXPECT_EQ(listing->Stock(), master.Find(codes[2])) << "in the order of the table";
  EXPECT_NE(FindByText<QLabel>(*listing, QStringLiteral("3／%1").arg(codes.size())), nullptr);

  const fs::path csv = home_ / "結果.csv";
  messages_.WillChoose(csv);
  table.mnu_save_Click();
  const std::string saved = *base::ReadFile(csv);
  EXPECT_THAT(saved,
              StartsWith("\xEF\xBB\xBF銘柄コード,銘柄名,市場,終値,前日比,前日比率(%),出来高"));
  EXPECT_EQ(static_cast<size_t>(std::count(saved.begin(), saved.end(), '\n')), codes.size() + 1);
}

TEST_F(AnalysisWindow, UsersColumnsAreComputedAndKeptWithTheGroup) {
  WindowWith({WriteAnalysis("高い", "終値(0) > 100")}).Command1_Click();
  result_Form& form = Result("高い");
  WithDialog<columns_Form>([](columns_Form& dialog) {
    const auto boxes = dialog.findChildren<QLineEdit*>();
    boxes[0]->setText(QStringLiteral("二倍"));
    boxes[1]->setText(QStringLiteral("終値(0) * 2"));
    boxes[3]->setText(QStringLiteral("終値(0) > 200"));
    dialog.accept();
  });
  FindByText<QPushButton>(form, QStringLiteral("列"))->click();
  const base::Table& table = form.Table().Content();
  EXPECT_EQ(table.columns[7].heading, "二倍");
  EXPECT_EQ(table.columns[8].heading, "終値(0) > 200");
  const auto apple = table.FindRow("AAPL");
  ASSERT_TRUE(apple);
  EXPECT_EQ(table.Text(*apple, 3), "310.3300");
  EXPECT_EQ(table.Text(*apple, 7), "620.6600");
  EXPECT_EQ(table.Text(*apple, 8), "○");
  const auto group = settings::LoadAnalysisGroup(home_ / "orin.chk");
  ASSERT_TRUE(group);
  EXPECT_EQ(group->columns[0].expression, "終値(0) * 2");
}

TEST_F(AnalysisWindow, ListsAreComparedWithTheOneBeforeAndWithOneAnother) {
  const fs::path high = WriteAnalysis("高い", "終値(0) > 100");
  WindowWith({high, WriteAnalysis("値上がり", "前日比(0) > 0")}).Command1_Click();
  result_Form& form = Result("高い");
  std::ofstream(home_ / "results_高い" / "k20200109.txt")
      << "T:高い\nD:2020/01/09\nAAPL    \nNOSUCH  \n";
  auto* menu = form.findChild<QMenu*>();
  Q_EMIT menu->aboutToShow();
  Action(*menu, QStringLiteral("新しく選ばれた銘柄"))->trigger();
  result_Form& fresh = Result("高い－新しく選ばれた銘柄（2020/01/09）");
  EXPECT_EQ(fresh.Content().codes.size() + 1, form.Content().codes.size());

  Q_EMIT menu->aboutToShow();
  QMenu* both = Action(*menu, QStringLiteral("両方にある銘柄"))->menu();
  Action(*both, QStringLiteral("値上がり"))->trigger();
  result_Form& combined = Result("高い－両方にある銘柄（値上がり）");
  for (const store::StockCode& code : combined.Content().codes) {
    EXPECT_THAT(form.Content().codes, testing::Contains(code));
    EXPECT_THAT(Result("値上がり").Content().codes, testing::Contains(code));
  }
}

TEST_F(AnalysisWindow, AnyPastDateCanBeRunAndCounted) {
  const fs::path file = WriteAnalysis("上昇", "前日比(0) > 0");
  check2_Form& window = WindowWith({file});
  window.findChild<screening::TradingDayEdit*>()->ShowDay(*base::Date::Parse("2019/12/28"));
  FindByText<QCheckBox>(window, QStringLiteral("この日付で分析する"))->setChecked(true);
  window.Command1_Click();
  // A Saturday: the Friday before.
  EXPECT_TRUE(Exists("results_上昇/k20191227.txt"));
  const size_t selected = Result("上昇").Content().codes.size();

  const auto* count = window.findChild<screening::MarketCount*>();
  QSignalSpy finished(count, &screening::MarketCount::Finished);
  ASSERT_TRUE(finished.wait(10'000));
  EXPECT_EQ(count->Counts().dates.size(), 20U);
  EXPECT_EQ(count->Counts().dates.back(), *base::Date::Parse("2019/12/27"));
  EXPECT_EQ(static_cast<size_t>(count->Counts().counts.back()), selected);
}

TEST_F(AnalysisWindow, FilesThatCannotBeUsedAreToldAndTheOthersRun) {
  const fs::path vanished = WriteAnalysis("消えた", "終値(0) > 0");
  fs::remove_all(home_ / "results_消えた");
  std::ofstream(home_ / "日付.txt") << "分析日付：2020/13/41\n分析項目：終値(0) > 0\n";
  check2_Form& window = WindowWith({home_ / "ない.txt", home_ / "日付.txt", vanished,
                                    WriteAnalysis("上限", "1 < 2 < 3 < 4 < 5 < 6 < 7"),
                                    WriteAnalysis("よい", "終値(0) > 0")});
  window.Command1_Click();
  EXPECT_EQ(Find<result_Form>().size(), 1U);
  const std::vector<std::string> texts = messages_.Texts();
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0], kEnd);
  EXPECT_EQ(std::count(texts[1].begin(), texts[1].end(), '\n'), 3) << texts[1];
  EXPECT_THAT(texts[1], HasSubstr("ない.txt"));
  EXPECT_THAT(texts[1], HasSubstr("2020/13/41"));
  EXPECT_THAT(texts[1], HasSubstr("results_消えた というディレクトリがありません。"));
  EXPECT_EQ(Utf8(window.List().topLevelItem(0)->text(5)), "使えません");
  EXPECT_GE(window.List().topLevelItem(3)->childCount(), 1);
}

TEST_F(AnalysisWindow, StoppedRunWritesNothingMoreAndSaysNothing) {
  check2_Form& window = WindowWith({WriteAnalysis("先", "終値(0) > 0"), WriteSlowAnalysis("遅い"),
                                    WriteAnalysis("後", "終値(0) > 0")});
  QTimer stopper;
  stopper.setInterval(0);
  QObject::connect(&stopper, &QTimer::timeout, [&] {
    if (auto* job = program_.window->findChild<widgets::JobProgress*>()) job->Stop();
  });
  stopper.start();
  window.Command1_Click();
  EXPECT_TRUE(messages_.Texts().empty());
  EXPECT_EQ(ListsOf("遅い"), 0U);
  EXPECT_EQ(ListsOf("後"), 0U);
  EXPECT_EQ(Utf8(window.List().topLevelItem(1)->text(5)), "中止");
  EXPECT_FALSE(window.IsRunning());
}

TEST_F(AnalysisWindow, ClosingTheProgramDuringARunStopsItFirst) {
  check2_Form& window = WindowWith({WriteSlowAnalysis("遅い")});
  bool was_closed_at_once = true;
  QTimer closer;
  closer.setInterval(0);
  closer.setSingleShot(true);
  QObject::connect(&closer, &QTimer::timeout,
                   [&] { was_closed_at_once = program_.window->close(); });
  closer.start();
  window.Command1_Click();
  EXPECT_FALSE(was_closed_at_once);
  EXPECT_EQ(ListsOf("遅い"), 0U);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !program_.window->isVisible(); }));
  EXPECT_FALSE(Exists("orin.act"));
}

TEST_F(AnalysisWindow, ClosingTheWindowDuringARunStopsItFirst) {
  check2_Form& window = WindowWith({WriteSlowAnalysis("遅い")});
  QPointer<check2_Form> still_there = &window;
  QTimer::singleShot(0, [&] { window.parentWidget()->close(); });
  window.Command1_Click();
  EXPECT_EQ(ListsOf("遅い"), 0U);
  EXPECT_TRUE(QTest::qWaitFor([&] { return still_there == nullptr; }));
  EXPECT_TRUE(program_.window->isVisible());
}

TEST_F(AnalysisWindow, StoreChangedDuringARunIsToldAndReadAnew) {
  check2_Form& window = WindowWith({WriteSlowAnalysis("遅い")});
  const base::Date day = *base::Date::Parse("2020/01/13");
  QTimer::singleShot(0, [&] {
    auto other = store::StockStore::Open(program_.state->StoreLocation(),
                                         {store::Access::kWrite, {}}, base::NativeFileSystem());
    ASSERT_TRUE(other) << other.error().message;
    ASSERT_TRUE(other->AppendDay(day, {}));
  });
  window.Command1_Click();
  ASSERT_EQ(messages_.Texts().size(), 1U);
  EXPECT_THAT(messages_.Texts()[0], HasSubstr("の途中で株価データが更新されたので"));
  EXPECT_EQ(ListsOf("遅い"), 0U);
  EXPECT_TRUE(QTest::qWaitFor([&] { return program_.state->store->Days().Days().back() == day; }));
}

TEST_F(AnalysisWindow, FirstPriceFileIsExplainedAndLeavesFourFiles) {
  check2_Form& window = Window();
  auto* number = window.findChild<QSpinBox*>();
  const int last = number->maximum();
  ASSERT_GE(last, 5);
  EXPECT_EQ(Utf8(number->text()), "すべて");
  number->stepUp();
  EXPECT_EQ(Utf8(number->text()), "1");
  number->stepUp();
  EXPECT_EQ(program_.state->settings.common.first_price_file, 2);
  auto* text = FindByText<QLabel>(window, QStringLiteral("先頭ファイルの番号が2の場合"));
  ASSERT_NE(text, nullptr);
  EXPECT_TRUE(text->text().startsWith(
      QStringLiteral("先頭ファイルの番号を大きくすると株価分析のスピードが速くなりますが、")));
  number->setValue(last);
  EXPECT_EQ(messages_.Texts(),
            std::vector<std::string>{"データファイルは４ファイル以上必要です。"});
  EXPECT_EQ(number->value(), 2);
  number->setValue(0);
  EXPECT_EQ(program_.state->settings.common.first_price_file, 0);
  EXPECT_EQ(messages_.Texts().size(), 1U);
}

TEST_F(AnalysisWindow, FirstPriceFileOutOfRangeIsShownAsItIsAndStopsTheRun) {
  check2_Form& window = WindowWith({WriteAnalysis("全部", "終値(0) > 0")});
  auto* number = window.findChild<QSpinBox*>();
  const int last = number->maximum();
  for (const int setting : {last, last + 1, 1000, -1}) {
    program_.state->settings.common.first_price_file = setting;
    window.Reload();
    EXPECT_EQ(Utf8(number->text()), std::to_string(setting));
    const QString sentence = QStringLiteral("AnalysisSystemFirstFile の値%1では").arg(setting);
    EXPECT_NE(FindByText<QLabel>(window, sentence), nullptr);
    window.Command1_Click();
    ASSERT_FALSE(messages_.Texts().empty());
    EXPECT_THAT(messages_.Texts().back(), HasSubstr(Utf8(sentence)));
    EXPECT_EQ(ListsOf("全部"), 0U);
  }
  // As the sentence says.
  number->setValue(0);
  EXPECT_EQ(Utf8(number->text()), "すべて");
  window.Command1_Click();
  EXPECT_EQ(ListsOf("全部"), 1U);
}

TEST_F(AnalysisWindow, GroupIsChangedAndSavedWithWhatElseItsFileHolds) {
  const fs::path other = home_ / "other.chk";
  std::ofstream(other) << "[Title]\nchecktitle1=x\n[File]\ncheckfile1=none.txt\n[Mine]\nkey=1\n";
  check2_Form& window = Window();
  messages_.WillChoose(other);
  window.mnu_group_Click();
  EXPECT_EQ(messages_.FileQuestions().back().caption, "株価分析グループファイル");
  EXPECT_EQ(messages_.FileQuestions().back().filter, "株価分析グループファイル|*.chk|");
  EXPECT_EQ(program_.state->settings.common.analysis_group_file, "other.chk");

  window.List().SelectEntry(1);
  messages_.WillChoose(WriteAnalysis("足した", "終値(0) > 0"));
  window.mnu_pick_Click();
  EXPECT_EQ(messages_.FileQuestions().back().caption, "株価分析ファイルを指定する");
  EXPECT_EQ(messages_.FileQuestions().back().filter, "株価分析ファイル|*.txt|");
  window.List().topLevelItem(1)->setCheckState(0, Qt::Unchecked);
  window.List().SelectEntry(0);
  window.mnu_remove_Click();
  window.List().SelectEntry(1);
  window.mnu_up_Click();
  const auto saved = settings::LoadAnalysisGroup(other);
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->entries[0], (settings::AnalysisGroupEntry{"足した", "足した.txt", false}));
  EXPECT_EQ(saved->entries[1], settings::AnalysisGroupEntry());
  EXPECT_THAT(*base::ReadFile(other), HasSubstr("[Mine]"));
}

TEST_F(AnalysisWindow, DateUnderAnalysisIsWrittenBesideTheFile) {
  check2_Form& window = WindowWith({WriteAnalysis("日", "終値(0) > 0", "分析日付：2019/12/27\n")});
  window.mnu_analysisday_Click();
  EXPECT_EQ(messages_.Texts(),
            std::vector<std::string>{"株価分析日付ファイル（analysisday.txt）を\n"
                                     "分析ファイルと同じディレクトリに作成しました。"});
  EXPECT_EQ(base::DecodeCp932(*base::ReadFile(home_ / "analysisday.txt")),
            "analysis_day：2019/12/27\r\n");
}

TEST_F(AnalysisWindow, StocksWithADayOfTheirOwnAreRunAndExplainedOnIt) {
  std::ofstream(home_ / "orinana.day") << "AAPL    ,2019/12/27\n";
  check2_Form& window = WindowWith({WriteAnalysis("日", "日付(0) < 43830")});  // 2019/12/31
  window.Command1_Click();
  result_Form& form = Result("日");
  ASSERT_EQ(form.Codes().size(), 1U);
  EXPECT_THAT(Outcome(form), StartsWith("AAPL（APPLE）は 2019/12/27 に選ばれます。"));
  EXPECT_EQ(Utf8(window.List().topLevelItem(0)->child(0)->text(0)),
            "orinana.day により、1銘柄は別の日付で分析しました。");
}

}  // namespace
}  // namespace orin::test
