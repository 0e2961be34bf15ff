#include "widgets/table_model.h"

#include <QColor>
#include <QGuiApplication>
#include <utility>
#include <vector>

#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::widgets {

namespace {

QVariant AlignmentOf(const base::Column& column) {
  return QVariant((column.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace

void TableModel::Show(base::Table table) {
  beginResetModel();
  table_ = std::move(table);
  endResetModel();
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.rows.size());
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.columns.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto row = static_cast<size_t>(index.row());
  const auto column = static_cast<size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return Text(table_.Text(row, column));
    case Qt::TextAlignmentRole:
      return AlignmentOf(table_.columns[column]);
    case Qt::ForegroundRole:
      return ColorOf(row, column);
    default:
      return {};
  }
}

QVariant TableModel::ColorOf(size_t row, size_t column) const {
  const base::Column& shown = table_.columns[column];
  if (shown.ink) {
    const auto* color = std::get_if<base::Color>(&table_.rows[row][*shown.ink]);
    return color == nullptr ? QVariant() : QColor(color->red, color->green, color->blue);
  }
  const int sign = shown.is_tinted ? table_.Sign(row, column) : 0;
  if (sign == 0) return {};
  const QPalette palette = QGuiApplication::palette();
  const Colors& colors = ColorsOf(palette);
  return TextColorOnRows(sign > 0 ? colors.up : colors.down, palette);
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const base::Column& column = table_.columns[static_cast<size_t>(section)];
  if (role == Qt::DisplayRole) return Text(column.heading);
  if (role == Qt::TextAlignmentRole) return AlignmentOf(column);
  return {};
}

void TableModel::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columnCount()) return;
  Q_EMIT layoutAboutToBeChanged();
  const std::vector<size_t> places =
      table_.Sort(static_cast<size_t>(column), order == Qt::DescendingOrder);
  std::vector<int> rows(places.size());
  for (size_t row = 0; row < places.size(); ++row) rows[places[row]] = static_cast<int>(row);
  for (const QModelIndex& was : persistentIndexList()) {
    changePersistentIndex(was, index(rows[static_cast<size_t>(was.row())], was.column()));
  }
  Q_EMIT layoutChanged();
}

}  // namespace orin::widgets
