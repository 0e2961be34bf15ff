#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <optional>
#include <string>

#include "screening/ui/explanation_view.h"
#include "screening/ui/trading_day_edit.h"
#include "shell/program_state.h"

namespace orin::screening {

/// Tries a condition, or a value, on one stock and date and explains it.
class TryPanel final : public QWidget {
  Q_OBJECT

 public:
  /// `state` outlives the panel.
  explicit TryPanel(const shell::ProgramState& state, QWidget* owner = nullptr);

  void Try(const std::string& condition, const std::string& second_stock);
  /// After a change: what was tried is tried anew, unless that would keep the writer waiting; then
  /// it is taken away.
  void TryAgain(const std::string& condition, const std::string& second_stock);
  void ShowDay(base::Date day) { date_->ShowDay(day); }
  /// After a change of the store.
  void Reload();

 Q_SIGNALS:
  void Wanted();
  void DayChanged();

 private:
  void Explain(const std::string& condition, const std::string& second_stock);

  const shell::ProgramState& state_;
  bool has_tried_ = false;
  bool is_slow_ = false;  // what was tried last
  QLineEdit* code_;
  TradingDayEdit* date_;
  ExplanationView* explanation_;
};

}  // namespace orin::screening
