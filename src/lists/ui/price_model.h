#pragma once

#include <QAbstractTableModel>

#include "lists/price_listing.h"

namespace orin::lists {

/// A price listing for a view; sorts it. A selection stays with its bars.
class PriceModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(PriceListing listing);
  [[nodiscard]] const PriceListing& Listing() const { return listing_; }
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  void sort(int column, Qt::SortOrder order) override;
  /// The longest text of the column, as an estimate of its width.
  [[nodiscard]] QString LongestText(int column) const;

 private:
  [[nodiscard]] base::Date DateAt(int row) const;

  PriceListing listing_;
};

/// The colour of a rise (above 0) or a fall, legible on the palette's base.
QColor ColorOfChange(base::Currency change, const QPalette& palette);

}  // namespace orin::lists
