#pragma once

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <string>
#include <vector>

#include "base/messages.h"
#include "base/ordinal.h"
#include "lists/price_listing.h"
#include "shell/program_state.h"
#include "shell/store_window.h"
#include "widgets/table_view.h"

namespace orin::lists {

/// Stocks that are gone through one after another, as those of a result list.
struct StockSequence {
  std::string title;
  std::vector<store::StockCode> codes;
};

/// The prices of one stock by day, week or month.
class pricelist_Form final : public QWidget, public shell::StoreWindow {
  Q_OBJECT

 public:
  /// Both outlive the window.
  pricelist_Form(const shell::ProgramState& state, base::Messages& messages);

  /// What the keys for the next and the previous stock step through; all stocks of the master
  /// where it is empty.
  void SetSequence(StockSequence sequence);
  /// To the next stock, or the one before; at the end a sentence says so.
  void Step(int32_t step);
  /// A stock of the master of the state's store.
  void ShowStock(base::MasterRecord stock);
  void ShowPeriod(BarPeriod period);
  [[nodiscard]] base::MasterRecord Stock() const { return stock_; }
  /// Finds the stock again by its code; closes the window where it is gone.
  void Reload() override;
  [[nodiscard]] bool DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const override;

 public Q_SLOTS:
  void mnu_beforemeigara_Click();
  void mnu_aftermeigara_Click();
  void mnu_copy_Click();
  void mnu_save_Click();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void MakePeriodButtons(QBoxLayout* layout);
  void MakeActions();
  void ShowListing(widgets::CurrentRow current);
  void FitToFont();
  void MarkPeriod();
  void ShowHeading(const base::Table& daily);
  /// None at the end.
  [[nodiscard]] base::MasterRecord Neighbour(int32_t step) const;
  void Code_Entered();
  [[nodiscard]] const store::StockRecord& Record() const;
  [[nodiscard]] base::Table Load(BarPeriod period) const;

  const shell::ProgramState& state_;
  base::Messages& messages_;
  base::MasterRecord stock_;
  store::StockCode code_;
  BarPeriod period_;
  StockSequence sequence_;
  widgets::TableView* view_;
  QLabel* heading_;
  QLabel* newest_;
  QLineEdit* code_box_;
  QButtonGroup* periods_;
};

}  // namespace orin::lists
