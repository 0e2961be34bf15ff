#include "lists/ui/price_model.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::lists {

using widgets::Text;

QColor ColorOfChange(base::Currency change, const QPalette& palette) {
  if (change == base::Currency()) return palette.color(QPalette::Text);
  const widgets::Colors& colors = widgets::ColorsOf(palette);
  return widgets::TextColorOnRows(change > base::Currency() ? colors.up : colors.down, palette);
}

void PriceModel::Show(PriceListing listing) {
  beginResetModel();
  listing_ = std::move(listing);
  endResetModel();
}

int PriceModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(listing_.Rows().size());
}

int PriceModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kPriceColumns);
}

QVariant PriceModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto row = static_cast<size_t>(index.row());
  const auto column = static_cast<PriceColumn>(index.column());
  if (role == Qt::DisplayRole) return Text(listing_.Text(row, column));
  if (role == Qt::TextAlignmentRole) {
    const bool is_date = column == PriceColumn::kDate;
    return QVariant((is_date ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  const bool is_change = column == PriceColumn::kChange || column == PriceColumn::kChangePercent;
  if (role == Qt::ForegroundRole && is_change && listing_.Rows()[row].change) {
    return ColorOfChange(*listing_.Rows()[row].change, QGuiApplication::palette());
  }
  return {};
}

QVariant PriceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const auto column = static_cast<PriceColumn>(section);
  if (role == Qt::DisplayRole) return Text(PriceColumnTitle(column, listing_.Period()));
  if (role == Qt::TextAlignmentRole) {
    return QVariant((section == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }
  return {};
}

QString PriceModel::LongestText(int column) const {
  std::string longest;
  for (size_t row = 0; row < listing_.Rows().size(); ++row) {
    std::string text = listing_.Text(row, static_cast<PriceColumn>(column));
    if (text.size() > longest.size()) longest = std::move(text);
  }
  return Text(longest);
}

base::Date PriceModel::DateAt(int row) const {
  return listing_.Rows()[static_cast<size_t>(row)].bar.date;
}

void PriceModel::sort(int column, Qt::SortOrder order) {
  if (column < 0) return;
  Q_EMIT layoutAboutToBeChanged();
  // The user's selection stays with its days.
  const QModelIndexList marked = persistentIndexList();
  std::vector<base::Date> dates;
  for (const QModelIndex& index : marked) dates.push_back(DateAt(index.row()));
  listing_.Sort(static_cast<PriceColumn>(column), order == Qt::DescendingOrder);
  std::map<base::Date, int> row_of;
  for (int row = 0; row < rowCount(); ++row) row_of[DateAt(row)] = row;
  QModelIndexList moved;
  for (qsizetype i = 0; i < marked.size(); ++i) {
    moved.push_back(index(row_of[dates[static_cast<size_t>(i)]], marked[i].column()));
  }
  changePersistentIndexList(marked, moved);
  Q_EMIT layoutChanged();
}

}  // namespace orin::lists
