#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <QWidget>

#include "lists/table.h"
#include "shell/messages.h"

namespace orin::shell {

/// The rows of a lists::Table for a view; sorts them.
class TableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit TableModel(lists::Table table, QObject* owner = nullptr);

  [[nodiscard]] const lists::Table& Content() const { return table_; }
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  lists::Table table_;
  std::vector<bool> is_numeric_;
};

/// A window with a table: sorted by a click on a heading, copied, saved as CSV. Where it has a
/// column of stock codes, a row opens its stock.
class table_Form final : public QWidget {
  Q_OBJECT

 public:
  table_Form(const QString& caption, lists::Table table, Messages& messages);

 public Q_SLOTS:
  void mnu_copy_Click();
  void mnu_save_Click();

 Q_SIGNALS:
  void CodeChosen(const QString& code);

 private:
  void OpenRow(const QModelIndex& index);

  Messages& messages_;
  TableModel* model_;
  QTableView* view_;
};

}  // namespace orin::shell
