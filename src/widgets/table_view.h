#pragma once

#include <QAbstractTableModel>
#include <QTableView>

#include "base/file_system.h"
#include "base/messages.h"
#include "lists/table.h"

namespace orin::widgets {

/// What every table of the program has in common: whole rows, two grounds, no grid, no numbers at
/// the side, rows and columns as the size of texts wants them.
void PrepareTable(QTableView& view, const QString& name);

/// Asks where to and saves the text with a mark of UTF-8, which spreadsheets look for. What goes
/// wrong is told.
void SaveCsv(base::Messages& messages, base::FileSystem& files, const QString& proposed_name,
             const std::string& csv);

/// The rows of a lists::Table for a view; sorts them.
class TableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit TableModel(QObject* owner = nullptr);

  void Show(lists::Table table);
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

/// A table of texts: sorted by a click on a heading, copied, saved as CSV. Where it has a column
/// of stock codes, a row stands for its stock.
class TableView final : public QTableView {
  Q_OBJECT

 public:
  /// Both outlive the view.
  TableView(const QString& name, base::Messages& messages, base::FileSystem& files,
            QWidget* owner = nullptr);

  /// In the order of the heading chosen, else in its own. The row of the stock that was current
  /// stays so, else the first one becomes it.
  void Show(lists::Table table);
  [[nodiscard]] const lists::Table& Content() const { return model_->Content(); }
  /// Of the current row; empty where there is none.
  [[nodiscard]] QString CurrentCode() const;
  /// Of all rows as they are sorted.
  [[nodiscard]] std::vector<std::string> Codes() const;
  /// To the row of the stock, where there is one.
  void SelectCode(const QString& code);
  /// What a file of it is to be named, without an ending.
  void SetFileName(const QString& name) { file_name_ = name; }

 public Q_SLOTS:
  void mnu_copy_Click();
  void mnu_save_Click();

 Q_SIGNALS:
  /// The return key or a double click on a row with a code.
  void CodeChosen(const QString& code);
  /// Another row became current; empty where it has no code.
  void CurrentCodeChanged(const QString& code);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] QString CodeOf(int row) const;
  void FitColumns();

  base::Messages& messages_;
  base::FileSystem& files_;
  QString file_name_;
  TableModel* model_;
};

}  // namespace orin::widgets
