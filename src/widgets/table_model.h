#pragma once

#include <QAbstractTableModel>

#include "base/table.h"

namespace orin::widgets {

/// The rows of a table for a view; sorts them. Only the cells asked for are made into texts.
class TableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(base::Table table);
  [[nodiscard]] const base::Table& Content() const { return table_; }
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  /// Selections stay with their rows.
  void sort(int column, Qt::SortOrder order) override;

 private:
  [[nodiscard]] QVariant ColorOf(size_t row, size_t column) const;

  base::Table table_;
};

}  // namespace orin::widgets
