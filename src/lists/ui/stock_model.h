#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "base/ordinal.h"
#include "lists/stock_menus.h"
#include "shell/program_state.h"

namespace orin::lists {

/// Stocks of a menu or of a search, in the columns and colours of the settings.
class StockModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit StockModel(const shell::ProgramState& state, QObject* owner = nullptr);

  void Show(std::vector<base::MasterRecord> stocks);
  /// The registered names anew, after a change of the store; no stocks are shown.
  void Reload();
  [[nodiscard]] base::MasterRecord StockAt(int row) const;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  [[nodiscard]] QString CellText(const store::StockRecord& stock, base::MasterRecord record,
                                 int column) const;

  const shell::ProgramState& state_;
  std::vector<base::MasterRecord> stocks_;
  std::vector<std::string> companies_;  // by record
};

}  // namespace orin::lists
