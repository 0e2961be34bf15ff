#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <functional>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "base/result.h"
#include "settings/ui/settings_draft.h"
#include "settings/ui/settings_page.h"
#include "settings/ui/settings_preview.h"

namespace orin::settings {

/// The settings window: groups at the left, the entries of one at the right, a search over all
/// of them.
class settings_Form final : public QDialog {
  Q_OBJECT

 public:
  /// Saves the settings for good; fails with a sentence for the user.
  using SaveFunction = std::function<base::Status(const Settings&)>;

  /// `save` is called by OK and 適用 where something has changed. `messages` outlives the window.
  settings_Form(const Settings& current, const SettingsPlaces& places, base::Messages& messages,
                SaveFunction save);
  ~settings_Form() override;

  /// The group, or the first of several, that has the section; an unknown one changes nothing.
  void ShowGroup(std::string_view section);
  /// The settings with every change that is not refused.
  [[nodiscard]] const Settings& Current() const { return draft_.Current(); }

  /// Asks where something would be lost.
  void reject() override;

 public Q_SLOTS:
  void ok_Click();
  void apply_Click();
  void group_default_Click();
  void all_default_Click();
  void search_Change(const QString& text);
  void group_Click(int group);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QWidget* MakeLeftSide();
  [[nodiscard]] QWidget* MakeRightSide();
  [[nodiscard]] QWidget* MakeButtons();
  void FillGroups();

  [[nodiscard]] SettingsPage* PageOf(size_t group);
  void Watch(SettingsPage* page);
  void ShowPage(SettingsPage* page, const QString& title);
  void ShowMoreHits(SettingsPage* page, std::vector<EntryPlace> places);
  void GoTo(EntryPlace place);
  [[nodiscard]] bool IsSearching() const;

  void TakeChange(size_t group);
  void TakeFocus(const QWidget* now);
  void ShowState();
  void ShowPreview(const std::string& heading);
  void MarkGroup(size_t group);
  [[nodiscard]] bool Save();

  SettingsDraft draft_;
  SettingsPlaces places_;
  base::Messages& messages_;
  SaveFunction save_;
  QLineEdit* search_;
  QListWidget* groups_;
  QLabel* title_;
  SettingsPreview* preview_;
  QStackedWidget* pages_;
  QPushButton* group_default_button_ = nullptr;
  QPushButton* apply_button_ = nullptr;
  std::vector<SettingsPage*> group_pages_;  // nullptr until first shown
  SettingsPage* hits_page_ = nullptr;       // of the search, else nullptr
};

}  // namespace orin::settings
