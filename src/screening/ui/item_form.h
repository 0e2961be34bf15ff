#pragma once

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/items/item_catalogue.h"

namespace orin::screening {

/// Insertion of an item call by dialog: family, bars, item, then its parameters with their labels.
class koumoku_Form final : public QDialog {
  Q_OBJECT

 public:
  explicit koumoku_Form(QWidget* owner = nullptr);

  /// The call as it is to be inserted.
  [[nodiscard]] std::string Call() const;
  /// Shows the form of the item, as "週間移動平均"; nothing happens for a name that no item has.
  void ShowItem(const std::string& name);

 private:
  [[nodiscard]] const analysis::FoundItem* Chosen() const;
  [[nodiscard]] analysis::SeriesForm Form() const;
  /// Of the item chosen, the offset not among them.
  [[nodiscard]] std::array<int32_t, analysis::kMaximumItemArguments> Arguments() const;
  void FillItems();
  void ShowArguments();
  void ShowCall();

  QListWidget* families_;
  QComboBox* forms_;
  QLineEdit* search_;
  QListWidget* items_;
  QFormLayout* arguments_;
  QLabel* call_;
  QPushButton* insert_ = nullptr;
  std::vector<analysis::FoundItem> listed_;  // the rows of items_
  std::vector<QSpinBox*> boxes_;             // the parameters, then the offset
};

}  // namespace orin::screening
