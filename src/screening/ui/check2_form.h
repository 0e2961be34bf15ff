#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "screening/screening_run.h"
#include "screening/ui/day_counts_chart.h"
#include "screening/ui/group_list.h"
#include "screening/ui/market_count.h"
#include "screening/ui/result_content.h"
#include "screening/ui/trading_day_edit.h"
#include "settings/settings.h"
#include "shell/program_state.h"
#include "shell/store_window.h"
#include "widgets/job_progress.h"

namespace orin::screening {

/// 株価分析: the seven analysis files of a group, picked, changed and ticked; the day and the
/// first price file; the run over the market.
class check2_Form final : public QWidget, public shell::StoreWindow {
  Q_OBJECT

 public:
  /// What the window needs of its surroundings.
  struct Surroundings {
    /// Saves the settings and takes them over.
    std::function<base::Status(const settings::Settings&)> save;
    /// Opens the condition editor; an empty path for a new analysis.
    std::function<void(const std::filesystem::path&)> edit;
    std::function<void(ResultContent)> show;
    /// The store on the disk is another one than that of the state: reads it anew.
    std::function<void()> reload_store;
    /// Tells what went wrong and keeps it in the log.
    std::function<void(const std::string&)> fail;
  };
  /// All of them outlive the window.
  check2_Form(const shell::ProgramState& state, base::Messages& messages,
              Surroundings surroundings);

  void ReleaseStore() override;
  /// After a change of the store, the settings or an analysis file.
  void Reload() override;
  [[nodiscard]] bool DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const override;
  /// An analysis that was saved: its entry is read anew; one that the group lacks takes the
  /// current entry where that is empty.
  void TakeSaved(const std::filesystem::path& file);
  [[nodiscard]] bool IsRunning() const { return job_ != nullptr; }
  [[nodiscard]] GroupList& List() { return *list_; }

 public Q_SLOTS:
  /// 分析開始: runs every ticked entry.
  void Command1_Click();
  void mnu_openlist_Click();
  void mnu_group_Click();
  void mnu_savegroup_Click();
  void mnu_pick_Click();
  void mnu_new_Click();
  void mnu_edit_Click();
  void mnu_remove_Click();
  void mnu_up_Click();
  void mnu_down_Click();
  void mnu_analysisday_Click();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* MakeGroupBar();
  QWidget* MakeEntryButtons();
  QWidget* MakeDayPanel();
  QWidget* MakeRunBar();
  QPushButton* AddButton(QLayout* layout, const QString& text, const QString& tip,
                         void (check2_Form::*handler)());

  [[nodiscard]] std::filesystem::path GroupFile() const;
  [[nodiscard]] shell::AnalysisGroupFiles Files() const;
  [[nodiscard]] std::filesystem::path CurrentFile() const;
  /// Changes the group, saves it and shows it.
  void Change(const std::function<void(settings::AnalysisGroup&)>& change);
  /// Saves the settings; false where that failed, which the user has been told.
  bool Save(const settings::Settings& changed);
  void MoveEntry(int step);
  void ShowGroup();
  void ShowFirstFile();
  /// Explains the setting, or says why it cannot be used.
  [[nodiscard]] std::string FirstFileText(const store::MasterHeader& header, int32_t setting) const;
  void FirstFile_Changed(int number);
  void EnableButtons();
  void CountSoon();
  void CountCurrent();
  [[nodiscard]] std::optional<base::Date> ChosenDate() const;

  struct Run;
  /// One entry; false where the run is to end.
  bool RunEntry(Run& run, size_t place, const std::filesystem::path& file);
  void RunTicked(Run& run);
  void ShowResults(Run& run);
  void Report(const Run& run);
  [[nodiscard]] base::Result<std::optional<store::StockStore>> OpenFromFirstFile(
      const base::Result<std::optional<int16_t>>& first_file) const;

  const shell::ProgramState& state_;
  base::Messages& messages_;
  Surroundings surroundings_;
  widgets::JobProgress* job_ = nullptr;  // of the run under way
  bool is_stopping_to_close_ = false;
  bool is_filling_ = false;
  QLabel* group_label_;
  GroupList* list_;
  QCheckBox* own_date_;
  TradingDayEdit* date_;
  QSpinBox* first_file_;
  QLabel* first_file_text_;
  QLabel* count_label_;
  DayCountsChart* chart_;
  QPushButton* start_;
  std::vector<QPushButton*> file_buttons_;  // those that need an analysis file in the entry
  bool is_store_released_ = false;          // until Reload
  QTimer count_timer_;
  MarketCount count_{this};
};

}  // namespace orin::screening
