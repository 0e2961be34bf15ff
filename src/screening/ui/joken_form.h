#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QTimer>
#include <QWidget>
#include <filesystem>
#include <string>

#include "base/messages.h"
#include "screening/analysis_document.h"
#include "screening/ui/analysis_fields_panel.h"
#include "screening/ui/condition_editor.h"
#include "screening/ui/day_counts_chart.h"
#include "screening/ui/market_count.h"
#include "screening/ui/try_panel.h"
#include "shell/program_state.h"
#include "shell/store_window.h"

namespace orin::screening {

/// The condition editor: one analysis file with its fields and its condition.
class joken_Form final : public QWidget, public shell::StoreWindow {
  Q_OBJECT

 public:
  /// Both outlive the window.
  joken_Form(const shell::ProgramState& state, base::Messages& messages);

  /// Shows the file; fails with a sentence where it cannot be read, and shows nothing.
  base::Status Open(const std::filesystem::path& file);
  /// A new, unnamed analysis.
  void New();
  [[nodiscard]] const std::filesystem::path& File() const { return file_; }  // empty: not saved
  [[nodiscard]] ConditionEditor& Editor() { return *editor_; }
  /// Stops what is counted: the store is about to be read anew.
  void ReleaseStore() override;
  void Reload() override;
  [[nodiscard]] bool HasUnsavedWork() const override { return IsChanged(); }
  [[nodiscard]] bool DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const override;

 public Q_SLOTS:
  /// False: cancelled, or it could not be saved, which the user has been told.
  bool mnu_save_Click();
  bool mnu_saveas_Click();
  void mnu_item_Click();
  void mnu_snippet_Click();
  void mnu_try_Click();

 Q_SIGNALS:
  void Saved(const QString& file);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* MakeToolbar();
  QWidget* MakeEditorPanel();
  QWidget* MakeLowerPanel();
  void ShowDocument();
  void ShowNotes();
  /// What would be saved.
  [[nodiscard]] AnalysisFields Fields() const;
  [[nodiscard]] QString Name() const;
  void ShowName();
  /// Whether anything would be lost.
  [[nodiscard]] bool IsChanged() const;
  bool SaveTo(const std::filesystem::path& file);
  /// What was tried once follows the condition, the fields and the day.
  void TryAgain();
  /// When nothing has changed for a moment.
  void CountSoon();
  void Count();

  const shell::ProgramState& state_;
  base::Messages& messages_;
  std::filesystem::path file_;
  AnalysisDocument document_;
  AnalysisFieldsPanel* fields_;
  ConditionEditor* editor_;
  QListWidget* notes_;
  QLabel* status_;
  TryPanel* try_;
  QLabel* count_label_;
  DayCountsChart* chart_;
  bool is_store_released_ = false;  // until Reload
  QTimer count_timer_;
  MarketCount count_{this};
};

}  // namespace orin::screening
