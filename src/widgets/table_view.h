#pragma once

#include <QTableView>

#include "base/file_system.h"
#include "base/messages.h"
#include "widgets/table_model.h"

namespace orin::widgets {

/// How wide the columns of a table are.
enum class ColumnFit {
  kContents,  // as headings and texts want them, the last one to the edge
  kRoomy,     // with room for the mark of the order beside each heading
  kExpected,  // as the longest texts to be expected; columns without one share the rest
};

/// Which row is current in the table that comes next.
enum class CurrentRow {
  kSame,  // the one with the key of the current row; the first one where it is gone
  kFirst,
};

/// A table of whole rows that can be copied and, where that is allowed, sorted by a click on a
/// heading and saved as CSV.
class TableView final : public QTableView {
  Q_OBJECT

 public:
  explicit TableView(const QString& name, ColumnFit fit, QWidget* owner = nullptr);

  /// From now on headings sort; until one is chosen rows stand as the column does, or in their own
  /// order where it is -1.
  void AllowSorting(int column = -1, Qt::SortOrder order = Qt::AscendingOrder);
  /// Both outlive the view.
  void AllowSaving(base::Messages& messages, base::FileSystem& files);
  /// What a file of the table is to be named, without an ending.
  void SetFileName(const QString& name) { file_name_ = name; }

  /// In the order of the heading chosen, where there is one.
  void Show(base::Table table, CurrentRow current = CurrentRow::kSame);
  [[nodiscard]] const base::Table& Content() const { return model_->Content(); }
  /// Of the current row; empty where there is none or it has none.
  [[nodiscard]] QString CurrentCode() const;
  /// In the key column of the current row; empty where there is none.
  [[nodiscard]] base::Cell CurrentKey() const;
  /// Of all rows as they are sorted.
  [[nodiscard]] std::vector<std::string> Codes() const;
  /// From top to bottom.
  [[nodiscard]] std::vector<size_t> SelectedRows() const;
  /// To the row of the stock, where there is one.
  void SelectCode(const QString& code);

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
  void AddAction(const QString& text, const QKeySequence& key, void (TableView::*handler)());
  void FitColumns();
  void FitRoomily();
  void FitToExpected();

  TableModel* model_;
  ColumnFit fit_;
  base::Messages* messages_ = nullptr;
  base::FileSystem* files_ = nullptr;
  QString file_name_;
};

}  // namespace orin::widgets
