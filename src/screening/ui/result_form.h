#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "base/messages.h"
#include "screening/result_sets.h"
#include "screening/ui/explanation_view.h"
#include "screening/ui/result_content.h"
#include "shell/program_state.h"
#include "shell/store_window.h"
#include "store/stock_store.h"
#include "widgets/table_view.h"

namespace orin::screening {

/// The stocks of a result list: a table that sorts, copies and saves itself, beside it the reason
/// for the row chosen or for any stock typed in.
class result_Form final : public QWidget, public shell::StoreWindow {
  Q_OBJECT

 public:
  /// What the window needs of its surroundings.
  struct Surroundings {
    /// The other result windows.
    std::function<std::vector<const result_Form*>()> others;
    /// Shows the user's columns for change and keeps them.
    std::function<void()> edit_columns;
    /// Shows a combination of this list and another.
    std::function<void(ResultContent)> show;
  };
  /// All of them outlive the window.
  result_Form(const shell::ProgramState& state, base::Messages& messages, Surroundings surroundings,
              ResultContent content);

  [[nodiscard]] const ResultContent& Content() const { return content_; }
  [[nodiscard]] widgets::TableView& Table() const { return *view_; }
  /// In the order of the table.
  [[nodiscard]] std::vector<store::StockCode> Codes() const;
  /// The store is about to be read anew.
  void ReleaseStore() override { own_store_.reset(); }
  void Reload() override;
  [[nodiscard]] bool DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const override;
  /// To another row; false at the end.
  bool Step(int32_t step);
  void SelectStock(const QString& code) { view_->SelectCode(code); }

 public Q_SLOTS:
  /// Explains the stock whose code is in the box.
  void Code_Entered();

 Q_SIGNALS:
  /// To be opened, with the stocks of the table in its order.
  void StockChosen(const QString& code);

 private:
  void MakeHeading(QBoxLayout* layout);
  QWidget* MakeExplanation();
  void FillCompareMenu();
  void CombineWithFile(ListOperation operation, const QString& name);
  void CombineWithPrevious();
  void ShowCombination(ListOperation operation, const QString& name,
                       const std::vector<store::StockCode>& other, const std::string& other_title);
  void Explain(const QString& code);
  void LoadRows();
  /// The store that the list was made from: the state's, or one from the same first price file.
  [[nodiscard]] const store::StockStore* Store();
  [[nodiscard]] std::optional<store::StockCode> SecondStock() const;

  const shell::ProgramState& state_;
  base::Messages& messages_;
  Surroundings surroundings_;
  ResultContent content_;
  std::optional<store::StockStore> own_store_;
  QLabel* heading_;
  QLabel* notes_;
  QMenu* compare_menu_;
  widgets::TableView* view_;
  QLineEdit* code_box_;
  ExplanationView* explanation_;
};

}  // namespace orin::screening
