#include "lists/ui/stock_model.h"

#include <QColor>
#include <QFont>
#include <array>
#include <utility>

#include "widgets/qt_text.h"

namespace orin::lists {

using widgets::Text;

namespace {

constexpr std::array kHeadings = {"コード", "銘柄名", "業種", "市場"};

/// Code and name have the colour of their market, what is behind them that of the text.
constexpr int kLastOfEntry = 1;

QColor Painted(base::Color color) { return {color.red, color.green, color.blue}; }

}  // namespace

StockModel::StockModel(const shell::ProgramState& state, QObject* owner)
    : QAbstractTableModel(owner), state_(state) {
  Reload();
}

void StockModel::Show(std::vector<base::MasterRecord> stocks) {
  beginResetModel();
  stocks_ = std::move(stocks);
  endResetModel();
}

void StockModel::Reload() {
  beginResetModel();
  stocks_.clear();
  companies_.clear();
  const size_t count = state_.store ? state_.store->Master().Stocks().size() : 0;
  companies_.resize(count + 2);
  for (const store::IndexEntry& entry : state_.name_index) {
    const auto place = static_cast<size_t>(entry.record.Value());
    if (place >= 2 && place < companies_.size()) companies_[place] = entry.company;
  }
  endResetModel();
}

base::MasterRecord StockModel::StockAt(int row) const { return stocks_[static_cast<size_t>(row)]; }

int StockModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(stocks_.size());
}

int StockModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kHeadings.size());
}

QString StockModel::CellText(const store::StockRecord& stock, base::MasterRecord record,
                             int column) const {
  const MenuLine line =
      LineOf(stock, companies_[static_cast<size_t>(record.Value())], state_.settings.menu_display);
  const std::array<std::string, 4> cells = {line.code, line.name, line.sector,
                                            std::string(store::ListingName(stock.listing))};
  return Text(cells.at(static_cast<size_t>(column)));
}

QVariant StockModel::data(const QModelIndex& index, int role) const {
  // While the store is read anew, a message may be on the screen and this list behind it.
  if (!index.isValid() || !state_.store) return {};
  const base::MasterRecord record = StockAt(index.row());
  const store::StockRecord& stock = state_.store->Master().Stock(record);
  if (role == Qt::DisplayRole) return CellText(stock, record, index.column());
  if (role == Qt::ForegroundRole) {
    if (index.column() <= kLastOfEntry) return Painted(ColorOf(stock, state_.settings.menu_color));
    return Painted(state_.settings.menu_color.text);
  }
  return {};
}

QVariant StockModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return Text(kHeadings.at(static_cast<size_t>(section)));
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

}  // namespace orin::lists
