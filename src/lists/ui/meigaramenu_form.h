#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTreeWidget>
#include <QWidget>
#include <vector>

#include "lists/stock_menus.h"
#include "lists/stock_search.h"
#include "lists/ui/stock_model.h"
#include "shell/program_state.h"

namespace orin::lists {

/// The stock menus: by code, in syllabary order, by sector, or by what the user types.
class meigaramenu_Form final : public QWidget {
  Q_OBJECT

 public:
  /// `state` outlives the window.
  explicit meigaramenu_Form(const shell::ProgramState& state);

  /// The menu of that caption, as "証券コードメニュー（ＮＹ市場：Ａ）".
  void ShowMenu(const QString& caption);
  void StartSearch();
  /// After a change of the store or the settings.
  void Reload();

 Q_SIGNALS:
  /// The record of a stock in the master.
  void StockChosen(int record);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakeTable();
  void MakeActions();
  [[nodiscard]] QTreeWidgetItem* ItemOf(const QString& caption) const;
  [[nodiscard]] const StockMenu* MenuOf(const QTreeWidgetItem* item) const;
  void Search_Changed(const QString& text);
  void Menu_Chosen(const QTreeWidgetItem* item);
  void mnu_open_Click();
  void mnu_copy_Click();
  void ShowStocks(const QString& caption, std::vector<base::MasterRecord> stocks);
  void ShowCount(size_t count);
  void FillTree();
  void AddMenus(QTreeWidgetItem* parent, const std::vector<StockMenu>& menus);
  void PaintAsSet();
  void SizeColumns();
  bool SearchKey(QKeyEvent& event);
  bool TreeKey(QKeyEvent& event);
  bool TableKey(QKeyEvent& event);
  bool TypeInSearch(QKeyEvent& event);

  const shell::ProgramState& state_;
  std::vector<StockMenu> menus_;
  std::vector<const StockMenu*> leaves_;  // those that hold stocks, by their number in the tree
  const StockMenu* menu_ = nullptr;       // the one shown where nothing is searched for
  StockSearch search_;
  QLineEdit* search_box_;
  QLabel* count_;
  QTreeWidget* tree_;
  StockModel* model_;
  QTableView* view_;
};

}  // namespace orin::lists
