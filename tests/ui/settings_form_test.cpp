#include "settings/ui/settings_form.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "settings/ui/settings_pick_editors.h"
#include "settings/ui/settings_search.h"
#include "support/answered_messages.h"
#include "support/scratch_directory.h"
#include "widgets/qt_text.h"

namespace orin::shell {

namespace {

using support::AnsweredMessages;

/// The settings of an empty program directory, and the window over them.
class SettingsForm : public testing::Test {
 protected:
  SettingsForm()
      : places_{directory_.Path(), directory_.Path() / "orin.ini"},
        settings_(settings::LoadWhatIsReadable(places_).settings) {
    MakeForm();
  }

  void MakeForm() {
    form_.reset();
    form_ = std::make_unique<settings::settings_Form>(
        settings_, places_, messages_, [this](const settings::Settings& changed) -> base::Status {
          if (!refusal_.empty()) return base::Fail(refusal_);
          saved_.push_back(changed);
          return {};
        });
    form_->show();
    QCoreApplication::processEvents();
  }

  template <typename Widget = QWidget>
  Widget* Find(const char* name) {
    auto* found = form_->findChild<QStackedWidget*>()->currentWidget()->findChild<Widget*>(
        QString::fromUtf8(name));
    if (found == nullptr) throw std::runtime_error(std::string("no field ") + name);
    return found;
  }

  /// Types a text over what stands in the field.
  void Type(const char* key, const char* text) {
    auto* field = Find(key);
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(field)) field = spin->findChild<QLineEdit*>();
    field->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
      line->selectAll();
      QTest::keyClick(line, Qt::Key_Backspace);
      line->insert(widgets::Text(text));
      Q_EMIT line->textEdited(line->text());
    } else {
      qobject_cast<QPlainTextEdit*>(field)->setPlainText(widgets::Text(text));
    }
  }

  std::string Sentence(const char* key) {
    const auto* label = Find<QLabel>((std::string(key) + ".sentence").c_str());
    return label->isVisible() ? widgets::Utf8(label->text()) : std::string();
  }

  void Press(const char* name) { Find<QToolButton>(name)->click(); }
  void PressOk() { form_->findChild<QPushButton*>("ok")->click(); }
  void Search(const char* text) {
    form_->findChild<QLineEdit*>("search")->setText(widgets::Text(text));
  }
  std::string Title() { return widgets::Utf8(form_->findChild<QLabel*>("title")->text()); }
  QListWidgetItem* CurrentGroup() {
    return form_->findChild<QListWidget*>("groups")->currentItem();
  }
  QImage Preview() {
    return form_->findChild<QWidget*>("preview")->grab().toImage().convertToFormat(
        QImage::Format_RGB32);
  }

  support::ScratchDirectory directory_;
  settings::SettingsPlaces places_;
  settings::Settings settings_;
  AnsweredMessages messages_;
  std::vector<settings::Settings> saved_;
  std::string refusal_;  // of saving
  std::unique_ptr<settings::settings_Form> form_;
};

TEST_F(SettingsForm, EveryKeyHasAnEditorThatShowsItsValueAndNamesItsKey) {
  size_t entries = 0;
  for (const settings::SettingsGroup& group : settings::SettingsCatalogue()) {
    auto* groups = form_->findChild<QListWidget*>("groups");
    groups->setCurrentItem(groups->findItems(widgets::Text(group.title), Qt::MatchExactly).front());
    for (const settings::SettingEntry& entry : group.entries) {
      const auto* field = Find(entry.key.c_str());
      ++entries;
      EXPECT_FALSE(field->accessibleName().isEmpty()) << entry.key;
      EXPECT_THAT(widgets::Utf8(field->parentWidget()->toolTip()), testing::HasSubstr(entry.key));
      if (const auto* line = qobject_cast<const QLineEdit*>(field)) {
        EXPECT_EQ(widgets::Utf8(line->text()), entry.text(settings_)) << entry.key;
      }
      EXPECT_EQ(Sentence(entry.key.c_str()), "") << entry.key;
    }
  }
  EXPECT_GT(entries, 350u);
  EXPECT_FALSE(form_->property("helpPage").toString().isEmpty());
}

TEST_F(SettingsForm, OkSavesWhatWasChangedAndNothingElse) {
  form_->ShowGroup("Tax");
  Type("syouhi_zeiritu", "８．５");
  Find<QCheckBox>("capitalgain_tax")->click();
  form_->ShowGroup("ChartAction");
  Type("daymargin", "7");
  PressOk();
  ASSERT_EQ(saved_.size(), 1u);
  EXPECT_FALSE(form_->isVisible());
  settings::Settings expected = settings_;
  expected.tax.consumption_tax = *base::Currency::Parse("8.5");
  expected.tax.taxes_gains = !settings_.tax.taxes_gains;
  EXPECT_EQ(saved_[0].tax, expected.tax);
  EXPECT_NE(saved_[0].chart_action, settings_.chart_action);
  expected.chart_action = saved_[0].chart_action;
  EXPECT_EQ(saved_[0], expected);
}

TEST_F(SettingsForm, OkWithoutChangesSavesNothingAndCloses) {
  PressOk();
  EXPECT_TRUE(saved_.empty());
  EXPECT_EQ(form_->result(), QDialog::Accepted);
}

TEST_F(SettingsForm, WrongTextIsExplainedMarkedAndKeepsTheWindowOpenAtItsField) {
  struct Case {
    const char* section;
    const char* key;
    const char* text;
  };
  for (const Case& wrong :
       {Case{"Tax", "syouhi_zeiritu", "五"}, Case{"Window", "FontPercent", "500"},
        Case{"OrinSimulation", "sim_start_date", "2020/02/31"},
        Case{"OrinSimulation", "sim_meigaracode2", "TOO LONG A CODE"}}) {
    MakeForm();
    form_->ShowGroup(wrong.section);
    Type(wrong.key, wrong.text);
    EXPECT_NE(Sentence(wrong.key), "") << wrong.key;
    EXPECT_TRUE(CurrentGroup()->text().endsWith(widgets::Text("！"))) << wrong.key;
    Search("背景の色");
    PressOk();
    EXPECT_TRUE(form_->isVisible()) << wrong.key;
    EXPECT_TRUE(saved_.empty()) << wrong.key;
    auto* field = Find(wrong.key);
    EXPECT_TRUE(field->isAncestorOf(form_->focusWidget()) || field == form_->focusWidget());
    EXPECT_EQ(widgets::Utf8(form_->findChild<QLineEdit*>("search")->text()), "");

    Press((std::string(wrong.key) + ".reset").c_str());
    EXPECT_EQ(Sentence(wrong.key), "") << wrong.key;
    EXPECT_FALSE(CurrentGroup()->text().endsWith(widgets::Text("！"))) << wrong.key;
  }
}

TEST_F(SettingsForm, CompilerSpeaksAtTheFieldOfAnExpressionButDoesNotForbidIt) {
  form_->ShowGroup("StockRanking");
  Type("rankanalysis1", "出来だか(0)");
  EXPECT_THAT(Sentence("rankanalysis1"), testing::HasSubstr("文字目："));
  Type("rankanalysis1", "終値(0) > 始値(0)");
  EXPECT_EQ(Sentence("rankanalysis1"), "値の式ではなく、大小を比べる条件です。");
  Type("rankanalysis1", " 終値(0)\n + 1 ");
  EXPECT_EQ(Sentence("rankanalysis1"), "");
  PressOk();
  ASSERT_EQ(saved_.size(), 1u);
  EXPECT_EQ(saved_[0].stock_ranking.slots[0].analysis, " 終値(0)  + 1 ");
}

TEST_F(SettingsForm, OneFieldAGroupOrEverythingGoesBackToItsDefaults) {
  form_->ShowGroup("Bus");
  EXPECT_FALSE(Find("serial_file.reset")->isVisible());
  Type("serial_file", "mine.txt");
  Type("comp_file", "other.txt");
  EXPECT_TRUE(Find("serial_file.reset")->isVisible());
  Press("serial_file.reset");
  EXPECT_FALSE(Find("serial_file.reset")->isVisible());
  EXPECT_EQ(form_->Current().bus.stock_list_file, settings_.bus.stock_list_file);
  EXPECT_EQ(form_->Current().bus.comparison_file, "other.txt");

  // Resetting the section writes another update file than a missing key gives.
  form_->group_default_Click();
  EXPECT_EQ(form_->Current().bus.comparison_file, settings_.bus.comparison_file);
  EXPECT_EQ(form_->Current().bus.update_file, "html\\StockHtm.txt");
  EXPECT_EQ(widgets::Utf8(Find<QLineEdit>("update_file")->text()), "html\\StockHtm.txt");

  form_->ShowGroup("Tax");
  Type("syouhi_zeiritu", "8");
  messages_.WillAnswer(base::Answer::kNo).WillAnswer(base::Answer::kYes);
  form_->all_default_Click();
  EXPECT_NE(form_->Current().tax, settings_.tax);
  form_->all_default_Click();
  EXPECT_EQ(form_->Current().tax, settings_.tax);
  EXPECT_THAT(messages_.Texts()[0], testing::StartsWith("すべての設定を既定値に戻しますか？\n"));
}

TEST_F(SettingsForm, SearchFindsByKeyAndLabelInAnyWidthAndCase) {
  const auto keys = [](const char* text) {
    std::set<std::string> found;
    const auto& groups = settings::SettingsCatalogue();
    for (const settings::EntryPlace place : settings::FindSettings(groups, widgets::Text(text))) {
      found.insert(groups[place.group].entries[place.entry].key);
    }
    return found;
  };
  EXPECT_THAT(keys("ＳＹＯＵＨＩ_Zeiritu"), testing::ElementsAre("syouhi_zeiritu"));
  EXPECT_THAT(keys("消費税"), testing::Contains("syouhi_zeiritu"));
  EXPECT_THAT(keys("rsi1 色"), testing::ElementsAre("rsi1_color"));
  EXPECT_TRUE(keys("　 ").empty());
  EXPECT_TRUE(keys("そんな設定はない").empty());
}

TEST_F(SettingsForm, HitsAreEditedInPlaceAndTheGroupShowsItAfterwards) {
  form_->ShowGroup("Tax");
  Search("syouhi_zeiritu");
  EXPECT_EQ(Title(), "検索結果：1件");
  Type("syouhi_zeiritu", "8");
  Search("");
  EXPECT_EQ(Title(), widgets::Utf8(CurrentGroup()->text()));
  EXPECT_EQ(widgets::Utf8(Find<QLineEdit>("syouhi_zeiritu")->text()), "8");
  Search("そんな設定はない");
  EXPECT_EQ(Title(), "「そんな設定はない」に当たる設定はありません");
}

TEST_F(SettingsForm, ManyHitsComePieceByPieceUntilAllAreThere) {
  Search("_");
  const size_t all = settings::FindSettings(settings::SettingsCatalogue(), "_").size();
  auto* page = form_->findChild<QStackedWidget*>()->currentWidget();
  auto* hits = qobject_cast<settings::SettingsPage*>(page);
  for (size_t i = 0; i < all && hits->Rows() < all; ++i) {
    const size_t before = hits->Rows();
    QCoreApplication::processEvents();
    for (auto* button : page->findChildren<QPushButton*>()) {
      if (button->text().startsWith(widgets::Text("残りの")) && !button->isHidden())
        button->click();
    }
    ASSERT_GT(hits->Rows(), before);
  }
  EXPECT_EQ(hits->Rows(), all);
}

TEST_F(SettingsForm, ColourShowsInThePreviewBeforeItIsSaved) {
  for (const char* section : {"MenuColor", "ChartCommonColor"}) {
    form_->ShowGroup(section);
    QCoreApplication::processEvents();
    const QImage before = Preview();
    const bool is_menu = std::string(section) == "MenuColor";
    auto* editor = qobject_cast<settings::SettingEditor*>(
        Find(is_menu ? "mnubase_color" : "chartbase_color")->parentWidget());
    Q_EMIT editor->Edited("4660");  // red 52, green 18
    const QImage after = Preview();
    const QPoint corner(after.width() - 2, after.height() - 2);
    EXPECT_NE(before.pixelColor(corner), QColor(52, 18, 0)) << section;
    EXPECT_EQ(after.pixelColor(corner), QColor(52, 18, 0)) << section;
  }
  form_->ShowGroup("Tax");
  EXPECT_FALSE(form_->findChild<QWidget*>("preview")->isVisible());
}

TEST_F(SettingsForm, PathIsChosenInADialogThatStartsAtTheOldOne) {
  form_->ShowGroup("Bus");
  messages_.WillChoose(directory_.Path() / "prices");
  auto* editor = Find("datasave_dir")->parentWidget();
  editor->findChild<QPushButton*>()->click();
  const std::string expected =
      settings::PathSettingText(directory_.Path() / "prices", settings::SettingKind::kDirectory);
  EXPECT_EQ(form_->Current().bus.price_directory, expected);
  ASSERT_EQ(messages_.FileQuestions().size(), 1u);
  EXPECT_EQ(messages_.FileQuestions()[0].choice, base::FileChoice::kDirectory);
  EXPECT_EQ(messages_.FileQuestions()[0].start,
            settings::NativeSetting(places_, settings_.bus.price_directory));
  EXPECT_EQ(settings::NativeSetting(places_, expected), directory_.Path() / "prices");
}

TEST_F(SettingsForm, TabGoesThroughTheFieldsAndEscapeLeavesTheSearch) {
  form_->activateWindow();
  form_->ShowGroup("Bus");
  Type("update_file", "mine.txt");
  auto* browse = Find("update_file")->parentWidget()->findChild<QPushButton*>();
  for (QWidget* next :
       {static_cast<QWidget*>(browse), Find("update_file.reset"), Find("csvday_dir")}) {
    QTest::keyClick(form_->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(form_->focusWidget(), next);
  }
  Search("消費税");
  auto* search = form_->findChild<QLineEdit*>("search");
  QTest::keyClick(search, Qt::Key_Escape);
  EXPECT_EQ(widgets::Utf8(search->text()), "");
  EXPECT_TRUE(form_->isVisible());

  // The return key in an expression is that of the window.
  form_->ShowGroup("StockRanking");
  Type("rankanalysis1", "終値(0)");
  QTest::keyClick(Find("rankanalysis1"), Qt::Key_Return);
  ASSERT_EQ(saved_.size(), 1u);
  EXPECT_EQ(saved_[0].stock_ranking.slots[0].analysis, "終値(0)");
}

TEST_F(SettingsForm, ClosingWithChangesAsksAndSavesNothing) {
  form_->reject();
  EXPECT_FALSE(form_->isVisible());
  EXPECT_TRUE(messages_.Shown().empty());

  MakeForm();
  form_->ShowGroup("Tax");
  Type("syouhi_zeiritu", "8");
  messages_.WillAnswer(base::Answer::kNo).WillAnswer(base::Answer::kYes);
  form_->close();
  EXPECT_TRUE(form_->isVisible());
  form_->close();
  EXPECT_FALSE(form_->isVisible());
  EXPECT_TRUE(saved_.empty());
  EXPECT_THAT(messages_.Texts()[0], testing::StartsWith("変更を保存せずに閉じますか？\n"));
}

TEST_F(SettingsForm, ApplySavesOnceAndAFailureIsToldAndLosesNothing) {
  form_->ShowGroup("Tax");
  Type("syouhi_zeiritu", "8");
  refusal_ = "「orin.ini」に書けません。";
  PressOk();
  EXPECT_TRUE(form_->isVisible());
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{refusal_});
  refusal_.clear();
  form_->apply_Click();
  form_->apply_Click();
  EXPECT_EQ(saved_.size(), 1u);
  form_->reject();
  EXPECT_FALSE(form_->isVisible());
}

}  // namespace

}  // namespace orin::shell
