#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "base/messages.h"
#include "screening/analysis_document.h"
#include "shell/program_state.h"

namespace orin::screening {

/// The fields of an analysis file but its condition, as they stand in it. What the run would not
/// take is told beside the field.
class AnalysisFieldsPanel final : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the panel.
  AnalysisFieldsPanel(const shell::ProgramState& state, base::Messages& messages,
                      QWidget* owner = nullptr);

  void Show(const AnalysisFields& fields);
  /// The condition is empty.
  [[nodiscard]] AnalysisFields Fields() const;
  /// After a change of the store.
  void Check();

 public Q_SLOTS:
  void Directory_Click();
  void Calendar_Click();

 Q_SIGNALS:
  void Changed();

 private:
  const shell::ProgramState& state_;
  base::Messages& messages_;
  AnalysisFields shown_;
  QLineEdit* title_;
  QLineEdit* directory_;
  QLineEdit* date_;
  QComboBox* market_;
  QLineEdit* second_;
  QLabel* faults_;
};

}  // namespace orin::screening
