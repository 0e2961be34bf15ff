#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <fstream>

#include "shell/ui/assistant_form.h"
#include "ui/window_test.h"

namespace orin::test {
namespace {

namespace fs = std::filesystem;
using shell::assistant_Form;

class FirstStart : public WindowTest {
 protected:
  static void Begin(assistant_Form& form) {
    QTest::mouseClick(FindByText<QPushButton>(form, QStringLiteral("始める")), Qt::LeftButton);
  }
  static const QTableView* Table(const Program& program) {
    const auto* area = program.window->findChild<QMdiArea*>();
    const auto* window = area->activeSubWindow();
    return window == nullptr ? nullptr : window->widget()->findChild<QTableView*>();
  }
  static std::string StoreLine(Program& program) {
    for (const QLabel* label : program.window->statusBar()->findChildren<QLabel*>()) {
      if (!label->text().isEmpty()) return widgets::Utf8(label->text());
    }
    return {};
  }
};

TEST_F(FirstStart, DemoMarketEndsWithPricesOnScreen) {
  WithDialog<assistant_Form>([](assistant_Form& form) { Begin(form); });
  Program program = Start(messages_);
  ASSERT_NE(Table(program), nullptr);
  EXPECT_GT(Table(program)->model()->rowCount(), 1000);
  EXPECT_EQ(StoreLine(program), "最新日付 2020/01/10　43銘柄");
  EXPECT_TRUE(messages_.Texts().empty());
  program.window->close();
  EXPECT_FALSE(Exists("orin.act"));
  EXPECT_TRUE(Exists("orin.chk"));
}

TEST_F(FirstStart, EmptyStoreOpensAndSaysThatItHasNoPrices) {
  WithDialog<assistant_Form>([](assistant_Form& form) {
    FindByText<QRadioButton>(form, QStringLiteral("空の株価データ"))->click();
    Begin(form);
  });
  Program program = Start(messages_);
  EXPECT_EQ(StoreLine(program), "最新日付 株価なし　0銘柄");
  program.window->close();
}

TEST_F(FirstStart, WrongFolderIsToldAndAnotherOneCanBeChosen) {
  const fs::path wrong = home_ / "nothing";
  const fs::path quotes = home_ / "quotes";
  fs::create_directories(wrong);
  fs::create_directories(quotes);
  std::ofstream(quotes / "^DJI.csv") << "年月日,始値,高値,安値,終値,出来高\n"
                                     << "2020/01/09,10,12,9,11,100\n2020/01/10,11,13,10,12,100\n";
  messages_.WillChoose(wrong).WillChoose(quotes);
  WithDialog<assistant_Form>([](assistant_Form& form) {
    FindByText<QRadioButton>(form, QStringLiteral("ＣＳＶファイル"))->click();
    auto* begin = FindByText<QPushButton>(form, QStringLiteral("始める"));
    EXPECT_FALSE(begin->isEnabled());
    auto* browse = FindByText<QPushButton>(form, QStringLiteral("参照"));
    browse->click();
    begin->click();
    EXPECT_TRUE(form.isVisible());
    browse->click();
    begin->click();
  });
  Program program = Start(messages_);
  ASSERT_EQ(messages_.Shown().size(), 1U);
  EXPECT_NE(messages_.Shown()[0].text.find("nothing"), std::string::npos)
      << messages_.Shown()[0].text;
  EXPECT_EQ(StoreLine(program), "最新日付 2020/01/10　1銘柄");
  program.window->close();
}

TEST_F(FirstStart, DeclinedAssistantLeavesAWindowThatOffersItAgain) {
  WithDialog<assistant_Form>([](assistant_Form& form) { form.reject(); });
  Program program = Start(messages_);
  EXPECT_EQ(StoreLine(program), "株価データがありません");
  EXPECT_FALSE(Exists("orin.sys"));
  WithDialog<assistant_Form>([](assistant_Form& form) { Begin(form); });
  program.window->mnu_market_Click();
  ASSERT_NE(Table(program), nullptr);
  EXPECT_EQ(StoreLine(program), "最新日付 2020/01/10　43銘柄");
  program.window->close();
}

}  // namespace
}  // namespace orin::test
