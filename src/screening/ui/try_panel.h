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
  /// Whether something was tried, which a changed condition would make out of date.
  [[nodiscard]] bool HasTried() const { return has_tried_; }
  void ShowDay(base::Date day) { date_->ShowDay(day); }
  /// After a change of the store.
  void Reload();

 Q_SIGNALS:
  void Wanted();
  void DayChanged();

 private:
  const shell::ProgramState& state_;
  bool has_tried_ = false;
  QLineEdit* code_;
  TradingDayEdit* date_;
  ExplanationView* explanation_;
};

}  // namespace orin::screening
