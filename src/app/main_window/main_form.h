#pragma once

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTimer>
#include <QToolBar>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/ordinal.h"
#include "lists/stock_menus.h"
#include "lists/ui/meigaramenu_form.h"
#include "lists/ui/pricelist_form.h"
#include "screening/ui/check2_form.h"
#include "screening/ui/joken_form.h"
#include "screening/ui/result_form.h"
#include "shell/start_up.h"
#include "store/file_names.h"
#include "widgets/job_progress.h"
#include "widgets/look.h"
#include "widgets/manual_form.h"
#include "widgets/table_form.h"

namespace orin::app {

/// The main window: an area of windows, the menus that reach everything, toolbar and status bar.
class main_Form final : public QMainWindow {
  Q_OBJECT

 public:
  /// All of them outlive the window.
  main_Form(shell::ProgramState& state, shell::StartUpScreen& screen, const widgets::Look& look);
  ~main_Form() override;
  main_Form(const main_Form&) = delete;
  main_Form& operator=(const main_Form&) = delete;

  /// Shows the window where it was last and the price listing of the initial stock.
  void Form_Load();
  /// A line in the status bar.
  void ShowStatus(const QString& status);
  /// The window of the stock's prices: one that shows it already, else a new one. Its keys for the
  /// next and the previous stock step through `sequence`, where that is not empty.
  void OpenStock(base::MasterRecord stock, const lists::StockSequence& sequence = {});

 public Q_SLOTS:
  void mnu_market_Click();
  void mnu_update_csv_Click();
  void mnu_company_read_Click();
  void mnu_company_write_Click();
  void mnu_search_Click();
  void mnu_pricelist_Click();
  void mnu_beforemeigara_Click();
  void mnu_aftermeigara_Click();
  void mnu_check2_Click();
  void mnu_analysis_Click();
  void mnu_joken_Click();
  void mnu_result_Click();
  void mnu_koumoku_Click();
  void mnu_toolbar_Click();
  void mnu_statusbar_Click();
  void mnu_larger_Click();
  void mnu_smaller_Click();
  void mnu_normal_Click();
  void mnu_check_Click();
  void mnu_bunkatsu_Click();
  void mnu_master_Click();
  void mnu_errorlog_Click();
  void mnu_settings_Click();
  void mnu_help_Click();
  void mnu_contents_Click();
  void mnu_about_Click();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct Command;
  static const std::vector<Command>& Commands();

  void MakeMenus();
  QAction* AddCommand(const Command& command, QMenu* menu);
  void MakeStockMenuEntries();
  void FillStockMenu(QMenu* menu, const lists::StockMenu& content);
  void MakeSystemFileEntries(QMenu* menu);
  void MakeThemeEntries(QMenu* menu);
  void MakeWindowEntries();
  void ListWindows();
  void RestorePlacement();
  void KeepPlacement();

  void ShowStore();
  void ShowChecks();
  void ReloadStore();
  /// Reads again the store that another process has changed, once no job and no dialog needs it and
  /// no process has it open for writing. What a killed writer has left is recovered then.
  void ReloadChangedStore();
  void ReloadWindows();
  void ApplySettings(const settings::Settings& changed);
  void ChangeTextSize(int32_t percent);
  void ChooseTheme(widgets::Theme theme);
  [[nodiscard]] base::Status Save(const settings::Settings& changed);

  QMdiSubWindow* Add(QWidget* window);
  [[nodiscard]] lists::meigaramenu_Form* StockMenuWindow();
  void ShowStockMenu(const QString& caption);
  void ShowTable(const QString& caption, base::Table table, const QString& page);
  void ShowSystemFile(store::FileKind kind, const QString& caption);
  void ShowManual(const QString& page);
  void OpenCode(const QString& code, const lists::StockSequence& sequence = {});

  // Screening.
  [[nodiscard]] screening::check2_Form* AnalysisWindow();
  void EditAnalysis(const std::filesystem::path& file);
  void ShowResult(screening::ResultContent content);
  void EditColumns();
  /// Windows of a kind, the one in front last.
  template <typename Form>
  [[nodiscard]] std::vector<Form*> Windows() const {
    std::vector<Form*> found;
    for (const QMdiSubWindow* window : area_->subWindowList(QMdiArea::ActivationHistoryOrder)) {
      if (auto* form = dynamic_cast<Form*>(window->widget())) found.push_back(form);
    }
    return found;
  }
  void Activate(QWidget* window);
  /// Of the results that are in front, else of the listing.
  void StepStock(int32_t step);
  /// Saves the settings and takes them over; no window is told.
  [[nodiscard]] base::Status Keep(const settings::Settings& changed);
  void ReleaseStore();
  /// Once the job under way has ended and its messages are read.
  void CloseWhenIdle();

  /// Runs a job that changes the store, then loads the store again. The job returns the sentence
  /// for the user.
  void ChangeStore(
      const std::string& stage,
      const std::function<base::Result<std::string>(store::StockStore&, base::Progress&)>& job);
  /// Tells what went wrong and keeps it in the log.
  void Fail(const std::string& stage, const std::string& sentence);

  shell::ProgramState& state_;
  shell::StartUpScreen& screen_;
  const widgets::Look& look_;
  QMdiArea* area_;
  QToolBar* toolbar_;
  QLabel* store_label_;
  QActionGroup* themes_;  // in the order of Theme
  QMenu* window_menu_ = nullptr;
  std::vector<QAction*> store_actions_;   // those that need a store
  std::vector<QAction*> window_actions_;  // those that need a window
  std::vector<QAction*> listed_windows_;
  QAction* market_action_ = nullptr;
  QAction* toolbar_action_ = nullptr;
  QAction* statusbar_action_ = nullptr;
  std::vector<QMenu*> stock_menus_;
  QTimer reload_timer_;  // runs while the store on the disk is another one than that of the state
  QTimer close_timer_;   // runs while the program is to close and may not yet
};

}  // namespace orin::app
