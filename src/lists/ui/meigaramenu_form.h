#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QWidget>
#include <vector>

#include "lists/stock_menus.h"
#include "lists/stock_search.h"
#include "shell/program_state.h"
#include "shell/store_window.h"
#include "widgets/table_view.h"

namespace orin::lists {

/// The stock menus: by code, in syllabary order, by sector, or by what the user types.
class meigaramenu_Form final : public QWidget, public shell::StoreWindow {
  Q_OBJECT

 public:
  /// `state` outlives the window.
  explicit meigaramenu_Form(const shell::ProgramState& state);

  /// The menu of that caption, as "証券コードメニュー（ＮＹ市場：Ａ）".
  void ShowMenu(const QString& caption);
  void StartSearch();
  void Reload() override;
  [[nodiscard]] bool DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const override;

 Q_SIGNALS:
  /// The record of a stock in the master.
  void StockChosen(int record);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeTable();
  void MakeActions();
  [[nodiscard]] QTreeWidgetItem* ItemOf(const QString& caption) const;
  [[nodiscard]] const StockMenu* MenuOf(const QTreeWidgetItem* item) const;
  void Search_Changed();
  void Menu_Chosen(const QTreeWidgetItem* item);
  void mnu_open_Click();
  void ShowChosen(widgets::CurrentRow current);
  void ShowStocks(const QString& caption, const std::vector<base::MasterRecord>& stocks,
                  widgets::CurrentRow current = widgets::CurrentRow::kFirst);
  void ShowCount(size_t count);
  void FillTree();
  void AddMenus(QTreeWidgetItem* parent, const std::vector<StockMenu>& menus);
  void PaintAsSet();
  bool SearchKey(QKeyEvent& event);
  bool TreeKey(QKeyEvent& event);
  bool TableKey(QKeyEvent& event);
  bool TypeInSearch(QKeyEvent& event);

  const shell::ProgramState& state_;
  std::vector<StockMenu> menus_;
  std::vector<const StockMenu*> leaves_;  // those that hold stocks, by their number in the tree
  const StockMenu* menu_ = nullptr;       // the one shown where nothing is searched for
  StockSearch search_;
  std::vector<std::string> companies_;  // by record
  QLineEdit* search_box_;
  QLabel* count_;
  QTreeWidget* tree_;
  widgets::TableView* view_;
};

}  // namespace orin::lists
