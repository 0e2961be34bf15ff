#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QListWidget>
#include <QSignalSpy>
#include <QSpinBox>
#include <fstream>
#include <gmock/gmock.h>
#include <string>

#include "base/cp932.h"
#include "screening/ui/check2_form.h"
#include "screening/ui/item_form.h"
#include "screening/ui/joken_form.h"
#include "screening/ui/result_form.h"
#include "screening/ui/snippet_form.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;
using screening::ConditionEditor;
using screening::joken_Form;
using testing::HasSubstr;
using testing::StartsWith;
using widgets::Text;
using widgets::Utf8;

class ConditionWindow : public WindowTest {
 protected:
  void SetUp() override {
    MakeDemo();
    program_ = Start(messages_);
  }

  joken_Form& Open(const fs::path& file = {}) {
    program_.window->mnu_check2_Click();
    auto* analysis = program_.window->findChild<screening::check2_Form*>();
    if (file.empty()) {
      analysis->mnu_new_Click();
    } else {
      settings::AnalysisGroup group;
      group.entries[0] = {"", file.string(), true};
      program_.state->settings.analysis_group = group;
      analysis->Reload();
      analysis->mnu_edit_Click();
    }
    return *program_.window->findChild<joken_Form*>();
  }

  static void Commit(ConditionEditor& editor, const char* text, const char* composing = "") {
    QInputMethodEvent event(Text(composing), {});
    event.setCommitString(Text(text));
    QCoreApplication::sendEvent(&editor, &event);
  }

  static QAbstractItemView* List(ConditionEditor& editor) {
    return editor.findChild<QCompleter*>()->popup();
  }

  Program program_;
};

TEST_F(ConditionWindow, ConditionIsWrittenFromNothingTriedSavedAndRun) {
  joken_Form& form = Open();
  ConditionEditor& editor = form.Editor();
  // By completion, from the reading; the first argument is ready to be typed over.
  Commit(editor, "いどう");
  ASSERT_TRUE(List(editor)->isVisible());
  QTest::keyClick(List(editor), Qt::Key_Return);
  EXPECT_EQ(editor.Condition(), "移動平均(25,0)");
  EXPECT_EQ(editor.textCursor().selectedText(), QStringLiteral("25"));
  QTest::keyClicks(&editor, QStringLiteral("5"));
  editor.moveCursor(QTextCursor::End);
  QTest::keyClicks(&editor, QStringLiteral(" < "));
  // By dialog.
  WithDialog<screening::koumoku_Form>([](screening::koumoku_Form& dialog) {
    dialog.ShowItem("週間移動平均");
    EXPECT_EQ(dialog.Call(), "週間移動平均(13,0)");
    const auto boxes = dialog.findChildren<QSpinBox*>();
    boxes[0]->setValue(26);
    boxes[1]->setValue(-1);
    dialog.accept();
  });
  form.mnu_item_Click();
  EXPECT_EQ(editor.Condition(), "移動平均(5,0) < 週間移動平均(26,-1)");

  // A mistake is marked where it stands, and goes when it is mended.
  QTest::keyClicks(&editor, QStringLiteral(" aND 1 = 1"));
  editor.CheckNow();
  ASSERT_FALSE(editor.Notes().empty());
  EXPECT_EQ(editor.Notes()[0].position, 27U);
  auto* notes = form.findChild<QListWidget*>();
  ASSERT_GE(notes->count(), 1);
  EXPECT_THAT(Utf8(notes->item(0)->text()), StartsWith("27文字目：「aND」"));
  EXPECT_FALSE(editor.extraSelections().isEmpty());
  editor.moveCursor(QTextCursor::Start);
  Q_EMIT notes->itemActivated(notes->item(0));
  EXPECT_EQ(editor.textCursor().position(), 26);
  QTest::keyClick(&editor, Qt::Key_Delete);
  QTest::keyClicks(&editor, QStringLiteral("A"));
  QTest::keyClick(&editor, Qt::Key_Delete);
  QTest::keyClicks(&editor, QStringLiteral("n"));
  QTest::keyClick(&editor, Qt::Key_Delete);
  QTest::keyClicks(&editor, QStringLiteral("d"));
  editor.CheckNow();
  EXPECT_EQ(editor.Condition(), "移動平均(5,0) < 週間移動平均(26,-1) And 1 = 1");
  EXPECT_TRUE(editor.Notes().empty());

  form.mnu_try_Click();
  const auto* explanation = form.findChild<screening::ExplanationView*>();
  EXPECT_THAT(Utf8(explanation->findChild<QLabel*>()->text()),
              StartsWith("^DJI（NYダウ工業株30種）は 2020/01/10 に選ばれません。"));
  const auto* count = form.findChild<screening::MarketCount*>();
  QSignalSpy finished(count, &screening::MarketCount::Finished);
  ASSERT_TRUE(finished.wait(10'000));

  fs::create_directories(home_ / "results");
  auto boxes = form.findChild<screening::AnalysisFieldsPanel*>()->findChildren<QLineEdit*>();
  boxes[0]->setText(QStringLiteral("五日"));
  boxes[1]->setText(QStringLiteral("results"));
  const fs::path file = home_ / "五日.txt";
  messages_.WillChoose(file);
  ASSERT_TRUE(form.mnu_save_Click());
  EXPECT_EQ(messages_.FileQuestions().back().filter, "株価分析ファイル|*.txt|");
  // An empty entry of the group takes it; here all seven are taken, so the first one is emptied.
  auto* analysis = program_.window->findChild<screening::check2_Form*>();
  analysis->List().SelectEntry(0);
  analysis->mnu_remove_Click();
  ASSERT_TRUE(form.mnu_save_Click());
  EXPECT_EQ(program_.state->settings.analysis_group.entries[0].title, "五日");
  analysis->Command1_Click();
  EXPECT_TRUE(Exists("results/k20200110.txt"));
  for (const auto* result : program_.window->findChildren<screening::result_Form*>()) {
    if (result->Content().title != "五日") continue;
    EXPECT_EQ(static_cast<int32_t>(result->Content().codes.size()), count->Counts().counts.back());
  }
}

TEST_F(ConditionWindow, ComposingInputMethodIsLeftAlone) {
  joken_Form& form = Open();
  ConditionEditor& editor = form.Editor();
  Commit(editor, "いどう");
  ASSERT_TRUE(List(editor)->isVisible());
  Commit(editor, "", "へいk");
  EXPECT_FALSE(List(editor)->isVisible()) << "nothing lies over what is being composed";
  QTest::keyClick(&editor, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_FALSE(List(editor)->isVisible());
  Commit(editor, "へいきん");
  EXPECT_TRUE(List(editor)->isVisible());
  QTest::keyClick(List(editor), Qt::Key_Escape);
  EXPECT_FALSE(List(editor)->isVisible());
  EXPECT_EQ(editor.Condition(), "いどうへいきん");
}

TEST_F(ConditionWindow, PastedTextIsMendedInAStepThatCanBeUndone) {
  joken_Form& form = Open();
  ConditionEditor& editor = form.Editor();
  QTest::keyClicks(&editor, QStringLiteral("1 = 1 And "));
  QGuiApplication::clipboard()->setText(QStringLiteral("終値（０）\t＞\r\n移動平均（２５，－１）"));
  editor.paste();
  EXPECT_EQ(editor.Lines(), "1 = 1 And 終値(0) >\n移動平均(25,-1)");
  EXPECT_EQ(editor.Condition(), "1 = 1 And 終値(0) >移動平均(25,-1)");
  EXPECT_NE(FindByText<QLabel>(form, QStringLiteral("貼り付けた文字の全角のかっこ")), nullptr);
  editor.undo();
  EXPECT_THAT(editor.Lines(), HasSubstr("（２５，－１）"));
  editor.undo();
  EXPECT_EQ(editor.Lines(), "1 = 1 And ");
  editor.redo();
  editor.redo();
  EXPECT_THAT(editor.Lines(), HasSubstr("(25,-1)"));
}

TEST_F(ConditionWindow, SnippetIsInsertedOrJoinedToTheWhole) {
  joken_Form& form = Open();
  ConditionEditor& editor = form.Editor();
  editor.SetCondition("終値(0) > 100 Or 終値(0) < 5");
  WithDialog<screening::snippet_Form>([](screening::snippet_Form& dialog) {
    dialog.findChild<QComboBox*>()->setCurrentIndex(1);
    EXPECT_THAT(dialog.Result(), HasSubstr("Or 終値(0) < 5 And 移動平均(25,-1) <= "));
    dialog.findChildren<QLineEdit*>()[0]->setText(QStringLiteral("終値(0) > 1"));
    EXPECT_EQ(dialog.Result(), "");
    EXPECT_NE(FindByText<QLabel>(dialog, QStringLiteral("値の式でなければ")), nullptr);
    dialog.findChildren<QLineEdit*>()[0]->setText(QStringLiteral("終値(0)"));
    dialog.accept();
  });
  form.mnu_snippet_Click();
  EXPECT_EQ(
      editor.Condition(),
      "終値(0) > 100 And 終値(-1) <= 移動平均(75,-1) And 終値(0) > 移動平均(75,0) Or 終値(0) < 5 "
      "And 終値(-1) <= 移動平均(75,-1) And 終値(0) > 移動平均(75,0)");
  editor.undo();
  EXPECT_EQ(editor.Condition(), "終値(0) > 100 Or 終値(0) < 5");
}

TEST_F(ConditionWindow, FileKeepsItsEncodingItsLinesAndWhatItsWriterAdded) {
  const fs::path file = home_ / "a.txt";
  const std::string before = *base::EncodeCp932(
      "作者：わたし\r\nタイトル：a\r\n分析結果格納場所：.\r\n分析項目：終値(0) > 1 And\r\n終値(0) "
      "< 2\r\n");
  std::ofstream(file, std::ios::binary) << before;
  joken_Form& form = Open(file);
  ASSERT_TRUE(form.mnu_save_Click());
  EXPECT_EQ(*base::ReadFile(file), before);
  form.findChild<screening::AnalysisFieldsPanel*>()->findChildren<QLineEdit*>()[0]->setText(
      QStringLiteral("ｂ"));
  ASSERT_TRUE(form.mnu_save_Click());
  EXPECT_EQ(base::DecodeCp932(*base::ReadFile(file)),
            "作者：わたし\r\nタイトル：ｂ\r\n分析結果格納場所：.\r\n分析項目：終値(0) > 1 "
            "And\r\n終値(0) < 2\r\n");

  form.Editor().ReplaceCondition("終値(0) > 1 \"注：釈\"");
  EXPECT_FALSE(form.mnu_save_Click());
  EXPECT_THAT(messages_.Texts().back(), StartsWith("分析項目に「：」は使えません。"));
  fs::remove(file);
  fs::create_directory(file);
  form.Editor().ReplaceCondition("終値(0) > 2");
  EXPECT_FALSE(form.mnu_save_Click());
  EXPECT_THAT(messages_.Texts().back(), HasSubstr("a.txt"));
  EXPECT_EQ(form.Editor().Condition(), "終値(0) > 2") << "what is written is not lost";
}

TEST_F(ConditionWindow, ClosingAsksForWhatIsNotSaved) {
  joken_Form& form = Open();
  QPointer<joken_Form> still_there = &form;
  QTest::keyClicks(&form.Editor(), QStringLiteral("1 = 1"));
  EXPECT_TRUE(form.isWindowModified());
  messages_.WillAnswer(base::Answer::kCancel);
  EXPECT_FALSE(program_.window->close()) << "the program stays too";
  EXPECT_EQ(messages_.Texts().back(),
            "「新しい条件」は変更されています。保存しますか？\n"
            "はい　　　：保存して閉じます。\n"
            "いいえ　　：保存しないで閉じます。\n"
            "キャンセル：閉じません。");
  messages_.WillAnswer(base::Answer::kYes);
  messages_.WillChoose(std::nullopt);
  EXPECT_FALSE(form.parentWidget()->close()) << "no name was given";
  messages_.WillAnswer(base::Answer::kNo);
  EXPECT_TRUE(program_.window->close());
}

TEST_F(ConditionWindow, LongConditionIsBrokenForTheEyeAlone) {
  std::string condition;
  for (int i = 0; condition.size() < 150'000; ++i) {
    condition += (i == 0        ? "終値("
                  : i % 90 == 0 ? " Or 終値("
                                : " And 終値(") +
                 std::to_string(-i) + ") + 移動平均(25,0) > {1 + 2} * 3";
  }
  const fs::path file = home_ / "long.txt";
  std::ofstream(file) << "分析結果格納場所：.\n分析項目：" << condition << '\n';
  const std::string before = *base::ReadFile(file);
  joken_Form& form = Open(file);
  ConditionEditor& editor = form.Editor();
  EXPECT_GT(editor.blockCount(), 100);
  EXPECT_EQ(editor.Condition(), condition);
  ASSERT_TRUE(form.mnu_save_Click());
  EXPECT_EQ(*base::ReadFile(file), before);
  editor.moveCursor(QTextCursor::End);
  QTest::keyClicks(&editor, QStringLiteral(" + 1"));
  EXPECT_EQ(editor.Condition(), condition + " + 1");
  // A hundred notes at their characters.
  editor.SetCondition(std::string(100'000, '('));
  EXPECT_LE(editor.Notes().size(), 100U);
  editor.GoTo(99'999);
  EXPECT_GE(editor.textCursor().position(), 99'998);
}

}  // namespace
}  // namespace orin::test
