#include "screening/ui/joken_form.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <fstream>
#include <gmock/gmock.h>
#include <set>
#include <string>

#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;
using screening::AnalysisFieldsPanel;
using screening::joken_Form;
using screening::MarketCount;
using testing::HasSubstr;
using testing::StartsWith;
using widgets::Text;
using widgets::Utf8;

constexpr int kLongEnough = 10'000;  // ms

class AnalysisEditor : public WindowTest {
 protected:
  void SetUp() override {
    MakeDemo();
    program_ = Start(messages_);
    program_.window->mnu_joken_Click();
    form_ = program_.window->findChild<joken_Form*>();
  }

  void Write(const char* name, const std::string& text) const {
    std::ofstream(home_ / name, std::ios::binary) << text;
  }
  void Open(const char* name, const std::string& text) {
    Write(name, text);
    ASSERT_TRUE(form_->Open(home_ / name));
  }
  [[nodiscard]] QLineEdit& Field(int row) const {
    return *form_->findChild<AnalysisFieldsPanel*>()->findChildren<QLineEdit*>().at(row);
  }
  [[nodiscard]] std::string Outcome() const {
    return Utf8(form_->findChild<screening::ExplanationView*>()->findChild<QLabel*>()->text());
  }
  void WaitForCount() const {
    QSignalSpy finished(form_->findChild<MarketCount*>(), &MarketCount::Finished);
    ASSERT_TRUE(finished.wait(kLongEnough));
  }

  Program program_;
  joken_Form* form_ = nullptr;
};

TEST_F(AnalysisEditor, OnlyWhatWouldBeLostIsAChange) {
  Open("a.txt", "タイトル：　見出し\n分析結果格納場所：.\n分析項目：終値(0) > {1 + 2} * 3\n");
  EXPECT_FALSE(form_->isWindowModified()) << "full-width blanks of the file are its own";
  look_.Apply(widgets::Theme::kDark, 125);
  QCoreApplication::processEvents();
  EXPECT_FALSE(form_->isWindowModified()) << "other colours change nothing";
  look_.Apply(widgets::Theme::kLight, 100);

  QTest::keyClicks(&form_->Editor(), QStringLiteral("1"));
  EXPECT_TRUE(form_->isWindowModified());
  form_->Editor().undo();
  EXPECT_FALSE(form_->isWindowModified());

  Field(0).setText(QStringLiteral("ほか"));
  EXPECT_TRUE(form_->isWindowModified());
  ASSERT_TRUE(form_->mnu_save_Click());
  EXPECT_FALSE(form_->isWindowModified());
  EXPECT_TRUE(form_->parentWidget()->close());
  EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(AnalysisEditor, LineBreaksOfItsWriterAreSaved) {
  Open("a.txt", "分析結果格納場所：.\n分析項目：終値(0) > 1 And 終値(0) < 2\n");
  QTextCursor cursor = form_->Editor().textCursor();
  cursor.setPosition(9);
  cursor.insertText(QStringLiteral("\n"));
  EXPECT_EQ(form_->Editor().Condition(), "終値(0) > 1 And 終値(0) < 2");
  ASSERT_TRUE(form_->mnu_save_Click());
  EXPECT_EQ(*base::ReadFile(home_ / "a.txt"),
            "分析結果格納場所：.\n分析項目：終値(0) > 1\n And 終値(0) < 2\n");
}

TEST_F(AnalysisEditor, LettersToJumpByAreThoseOfNoMenu) {
  std::set<QString> taken;
  const auto take = [&](const QString& text) {
    const QKeySequence keys = QKeySequence::mnemonic(text);
    if (keys.isEmpty()) return;
    EXPECT_TRUE(taken.insert(keys.toString()).second) << Utf8(text);
  };
  for (const QAction* menu : program_.window->menuBar()->actions()) take(menu->text());
  ASSERT_FALSE(taken.empty());
  for (const auto* button : form_->findChildren<QPushButton*>()) take(button->text());
  for (const auto* label : form_->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) take(label->text());
  }
}

TEST_F(AnalysisEditor, KeysAreThoseOfNoCommandOfTheMainWindow) {
  std::set<QString> taken;
  for (const auto* action : program_.window->findChildren<QAction*>()) {
    // Those of other child windows work in these alone.
    if (action->shortcutContext() == Qt::WidgetWithChildrenShortcut) continue;
    if (action->shortcut().isEmpty()) continue;
    taken.insert(action->shortcut().toString());
  }
  ASSERT_FALSE(taken.empty());
  std::set<QString> own;
  for (const QAction* action : form_->actions()) {
    EXPECT_EQ(taken.count(action->shortcut().toString()), 0U)
        << Utf8(action->shortcut().toString());
    EXPECT_EQ(action->shortcutContext(), Qt::WidgetWithChildrenShortcut);
    own.insert(action->shortcut().toString());
  }
  for (const char* key : {"Ctrl+S", "Ctrl+I", "Ctrl+J", "Ctrl+T"}) {
    EXPECT_EQ(own.count(QLatin1String(key)), 1U) << key;
  }
}

TEST_F(AnalysisEditor, WhatWasTriedFollowsTheTextTheFieldsAndTheDay) {
  form_->Editor().InsertText("第二銘柄終値(0) > 1");
  form_->mnu_try_Click();
  EXPECT_THAT(Outcome(), HasSubstr("選ばれません"));
  Field(3).setText(QStringLiteral("^DJI"));
  WaitForCount();
  EXPECT_THAT(Outcome(), HasSubstr("2020/01/10 に選ばれます"));
  Q_EMIT form_->findChild<screening::DayCountsChart*>()->DateChosen(
      *base::Date::Parse("2020/01/09"));
  EXPECT_THAT(Outcome(), HasSubstr("2020/01/09 に選ばれます"));
  form_->Editor().InsertText("0 * 99999");
  WaitForCount();
  EXPECT_THAT(Outcome(), HasSubstr("2020/01/09 に選ばれません"));
}

TEST_F(AnalysisEditor, MarketIsCountedOnTheDayAndTheNineteenBeforeIt) {
  form_->Editor().InsertText("終値(0) > 0");
  WaitForCount();
  const auto* count = form_->findChild<MarketCount*>();
  EXPECT_EQ(count->Counts().counts.size(), 20U);
  const int32_t all = count->Counts().counts.back();
  EXPECT_GT(all, 0);
  EXPECT_NE(FindByText<QLabel>(*form_, QStringLiteral("2020/01/10 に選ばれる銘柄：%1").arg(all)),
            nullptr);
  Field(2).setText(QStringLiteral("2019/12/20"));
  auto* market = form_->findChild<AnalysisFieldsPanel*>()->findChild<QComboBox*>();
  EXPECT_EQ(market->count(), 9) << "eight choices and none";
  market->setCurrentIndex(market->findText(QStringLiteral("ＮＡ市場銘柄")));
  WaitForCount();
  EXPECT_EQ(count->Counts().dates.back().ToText(), "2019/12/20");
  EXPECT_LT(count->Counts().counts.back(), all);
}

TEST_F(AnalysisEditor, CountSaysThatTheSecondStockIsMissing) {
  Open("第二.txt", "分析項目：さや(0) > 0\n第二銘柄コード：NONE\n");
  WaitForCount();
  EXPECT_NE(FindByText<QLabel>(*form_, QStringLiteral("選ばれる銘柄：0\n第二銘柄コード「NONE」の"
                                                      "銘柄がない")),
            nullptr);
  Open("第二なし.txt", "分析項目：終値(0) > 0\n第二銘柄コード：NONE\n");
  WaitForCount();
  for (const QLabel* label : form_->findChildren<QLabel*>()) {
    EXPECT_FALSE(label->text().contains(QStringLiteral("銘柄がない")));
  }
}

TEST_F(AnalysisEditor, NothingIsReadWhileTheStoreIsReadAnew) {
  form_->Editor().InsertText("終値(0) > 0");
  form_->Editor().CheckNow();
  const auto* count = form_->findChild<MarketCount*>();
  form_->ReleaseStore();
  auto store = std::move(program_.state->store);
  program_.state->store.reset();
  form_->mnu_try_Click();
  QTest::qWait(1000);
  EXPECT_FALSE(count->IsRunning());
  EXPECT_EQ(Outcome(), "");
  form_->Reload();
  form_->mnu_try_Click();
  EXPECT_EQ(Outcome(), "株価データがありません。");
  form_->ReleaseStore();
  program_.state->store = std::move(store);
  form_->Reload();
  WaitForCount();
  EXPECT_THAT(Outcome(), StartsWith("^DJI"));
}

}  // namespace
}  // namespace orin::test
