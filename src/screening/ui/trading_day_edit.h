#pragma once

#include <QDateEdit>
#include <optional>
#include <vector>

#include "base/date.h"
#include "store/calendar.h"

namespace orin::screening {

/// A date to type or to pick from a calendar, which is always a trading day: of another date the
/// trading day before it is taken, in the calendar days without trade are grey.
class TradingDayEdit final : public QDateEdit {
  Q_OBJECT

 public:
  explicit TradingDayEdit(QWidget* owner = nullptr);

  /// The days to choose from; the date shown stays where it is one of them, else it becomes the
  /// newest one. Disabled where there are none.
  void SetDays(const store::Calendar& days);
  /// The trading day; none without days.
  [[nodiscard]] std::optional<base::Date> Day() const;
  /// That day or the trading day before it.
  void ShowDay(base::Date day);
  /// Days by trading days.
  void stepBy(int steps) override;

 Q_SIGNALS:
  void DayChanged();

 private:
  void Settle();
  void MarkMonth();

  std::vector<base::Date> days_;
  std::optional<base::Date> told_;  // by the last DayChanged
};

}  // namespace orin::screening
