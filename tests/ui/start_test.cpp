#include <QLineEdit>
#include <QMdiArea>
#include <fstream>

#include "base/cp932.h"
#include "settings/ui/settings_form.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;
using base::Answer;

constexpr const char* kRunningCaption = "ミルテ（複数起動、異常状態チェック）";
constexpr const char* kRunningText =
    "ミルテが複数起動されてるか、または、ミルテの異常状態です。\n"
    "ミルテは複数起動されていますか？\n"
    "はい　：そのままミルテを使用します。\n"
    "いいえ：異常状態を回復します。";

class StartJourney : public WindowTest {
 protected:
  void SetUp() override { MakeDemo(); }

  [[nodiscard]] std::string Bytes(const std::string& name) const {
    return *base::ReadFile(home_.Path() / name);
  }
  static qsizetype Windows(const Program& program) {
    return program.window->findChild<QMdiArea*>()->subWindowList().size();
  }
};

TEST_F(StartJourney, DemoOpensOnTheIndexAndLeavesNoMarker) {
  Program program = Start(messages_);
  EXPECT_TRUE(Exists("orin.act"));
  EXPECT_TRUE(Exists("orinuser.act"));
  EXPECT_EQ(Windows(program), 1);
  EXPECT_TRUE(program.window->findChild<QMdiArea*>()->activeSubWindow()->windowTitle().contains(
      QStringLiteral("^DJI")));
  program.window->close();
  EXPECT_FALSE(Exists("orin.act"));
  EXPECT_FALSE(Exists("orinuser.act"));
  EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(StartJourney, SecondStartAsksAndYesLeavesTheMarkersToTheFirst) {
  Program first = Start(messages_);
  messages_.WillAnswer(Answer::kYes);
  Program second = Start(messages_);
  ASSERT_EQ(messages_.Shown().size(), 1U);
  EXPECT_EQ(messages_.Shown()[0].caption, kRunningCaption);
  EXPECT_EQ(messages_.Shown()[0].text, kRunningText);
  EXPECT_EQ(Windows(second), 1);
  second.window->close();
  EXPECT_TRUE(Exists("orin.act"));
  first.window->close();
  EXPECT_FALSE(Exists("orin.act"));
}

TEST_F(StartJourney, MarkersOfACrashAreTakenOverWhenTheUserRecovers) {
  for (const char* name : {"orin.act", "orinuser.act"}) {
    std::ofstream(home_ / name, std::ios::binary) << "\xff\xff";
  }
  messages_.WillAnswer(Answer::kNo);
  Program program = Start(messages_);
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{kRunningText});
  EXPECT_EQ(Bytes("orin.act"), "\xff\xff");
  program.window->close();
  EXPECT_FALSE(Exists("orin.act"));
  EXPECT_FALSE(Exists("orinuser.act"));
  Program again = Start(messages_);
  EXPECT_EQ(messages_.Shown().size(), 1U);
  again.window->close();
}

TEST_F(StartJourney, WrongPathsAreCorrectedInTheSettings) {
  fs::create_directories(home_ / "elsewhere");
  for (const char* name : {"orin.sys", "orin.ind", "orin.add", "orin.del"}) {
    fs::rename(home_ / name, home_ / "elsewhere" / name);
  }
  messages_.WillAnswer(Answer::kYes);
  WithDialog<settings::settings_Form>([this](settings::settings_Form& form) {
    auto* field = form.findChild<QLineEdit*>(QStringLiteral("system_dir"));
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, widgets::Text((home_ / "elsewhere").string()));
    form.ok_Click();
  });
  Program program = Start(messages_);
  EXPECT_EQ(messages_.Texts(),
            std::vector<std::string>{"初期設定ファイルで指定した場所にorin.sysがありません。\n"
                                     "初期設定ファイルを変更しますか？"});
  ASSERT_TRUE(program.state->store.has_value());
  EXPECT_EQ(Windows(program), 1);
  program.window->close();
}

TEST_F(StartJourney, WithoutTheMasterTheWindowOpensAllTheSame) {
  fs::remove(home_ / "orin.sys");
  messages_.WillAnswer(Answer::kNo);
  Program program = Start(messages_);
  EXPECT_FALSE(program.state->store.has_value());
  EXPECT_EQ(Windows(program), 0);
  program.window->close();
}

TEST_F(StartJourney, GarbageInTheSettingsFileIsKeptAndDefaultsAreUsed) {
  std::string garbage;
  for (size_t i = 0; i < 10'000'000; ++i) garbage += static_cast<char>((i * 2654435761U) >> 13);
  std::ofstream(home_ / "orin.ini", std::ios::binary) << garbage;
  Program program = Start(messages_);
  ASSERT_TRUE(program.state->store.has_value());
  program.window->resize(900, 700);
  program.window->close();
  EXPECT_GE(Bytes("orin.ini").size(), garbage.size());
  EXPECT_NE(Bytes("orin.ini").find(garbage.substr(5'000'000, 1000)), std::string::npos);
}

TEST_F(StartJourney, PlacementIsRestored) {
  Program program = Start(messages_);
  program.window->setGeometry(40, 30, 640, 480);
  QCoreApplication::processEvents();
  program.window->close();
  Program again = Start(messages_);
  EXPECT_EQ(again.window->geometry(), QRect(40, 30, 640, 480));
  again.window->close();
}

TEST_F(StartJourney, MinimizedWindowStartsMinimizedAndKeepsItsPlace) {
  Program program = Start(messages_);
  program.window->setGeometry(40, 30, 640, 480);
  program.window->showMinimized();
  QCoreApplication::processEvents();
  program.window->close();
  // A start that is closed at once changes nothing.
  for (int i = 0; i < 2; ++i) {
    Program again = Start(messages_);
    EXPECT_EQ(again.state->settings.orin.window_state, 1);
    EXPECT_TRUE(again.window->isMinimized());
    again.window->close();
  }
  Program last = Start(messages_);
  last.window->showNormal();
  QCoreApplication::processEvents();
  EXPECT_EQ(last.window->geometry(), QRect(40, 30, 640, 480));
  last.window->close();
  EXPECT_EQ(last.state->settings.orin.window_state, 0);
}

}  // namespace
}  // namespace orin::test
