#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <array>

#include "settings/analysis_group.h"

namespace orin::screening {

/// The user's columns of result tables: a heading and an expression each.
class columns_Form final : public QDialog {
  Q_OBJECT

 public:
  using Columns = decltype(settings::AnalysisGroup::columns);

  explicit columns_Form(const Columns& columns, QWidget* owner = nullptr);

  [[nodiscard]] Columns Chosen() const;

 private:
  struct Row {
    QLineEdit* title = nullptr;
    QLineEdit* expression = nullptr;
    QLabel* note = nullptr;
  };
  static void Check(const Row& row);

  std::array<Row, std::tuple_size_v<Columns>> rows_;
};

}  // namespace orin::screening
