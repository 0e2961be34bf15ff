#include "screening/ui/trading_day_edit.h"

#include <QCalendarWidget>
#include <QTextCharFormat>
#include <algorithm>

namespace orin::screening {

namespace {

const QDate kFirstSerial(1899, 12, 30);

base::Date DateFrom(const QDate& date) {
  return base::Date::FromSerial(static_cast<int32_t>(kFirstSerial.daysTo(date)));
}

QDate QtDate(base::Date date) { return kFirstSerial.addDays(date.Serial()); }

}  // namespace

TradingDayEdit::TradingDayEdit(QWidget* owner) : QDateEdit(owner) {
  setDisplayFormat(QStringLiteral("yyyy/MM/dd"));
  setCalendarPopup(true);
  setKeyboardTracking(false);
  setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
  auto* calendar = new QCalendarWidget(this);
  calendar->setLocale(locale());
  calendar->setGridVisible(true);
  calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  setCalendarWidget(calendar);
  connect(calendar, &QCalendarWidget::currentPageChanged, this, &TradingDayEdit::MarkMonth);
  connect(this, &QDateEdit::dateChanged, this, &TradingDayEdit::Settle);
  setEnabled(false);
}

void TradingDayEdit::SetDays(const store::Calendar& days) {
  days_.assign(days.Days().begin(), days.Days().end());
  setEnabled(!days_.empty());
  if (days_.empty()) return;
  const QDate shown = date();
  {
    const QSignalBlocker silence(this);
    setDateRange(QtDate(days_.front()), QtDate(days_.back()));
    const bool is_day = shown.isValid() && told_ && std::ranges::binary_search(days_, *told_);
    setDate(is_day ? QtDate(*told_) : QtDate(days_.back()));
  }
  Settle();
  MarkMonth();
}

std::optional<base::Date> TradingDayEdit::Day() const {
  if (days_.empty()) return std::nullopt;
  return told_;
}

void TradingDayEdit::ShowDay(base::Date day) { setDate(QtDate(day)); }

void TradingDayEdit::stepBy(int steps) {
  if (currentSection() != DaySection || !told_) {
    QDateEdit::stepBy(steps);
    return;
  }
  const auto place = std::ranges::lower_bound(days_, *told_) - days_.begin();
  const auto last = static_cast<std::ptrdiff_t>(days_.size()) - 1;
  ShowDay(days_[static_cast<size_t>(std::clamp<std::ptrdiff_t>(place + steps, 0, last))]);
}

void TradingDayEdit::Settle() {
  if (days_.empty()) return;
  const base::Date wanted = DateFrom(date());
  const auto after = std::ranges::upper_bound(days_, wanted);
  const base::Date day = after == days_.begin() ? days_.front() : *(after - 1);
  if (day != wanted) {
    const QSignalBlocker silence(this);
    setDate(QtDate(day));
  }
  if (told_ == day) return;
  told_ = day;
  Q_EMIT DayChanged();
}

void TradingDayEdit::MarkMonth() {
  QCalendarWidget* calendar = calendarWidget();
  QTextCharFormat closed;
  closed.setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
  calendar->setDateTextFormat({}, {});
  // The sheet shows days of the months before and after too.
  const QDate first = QDate(calendar->yearShown(), calendar->monthShown(), 1).addDays(-14);
  for (int i = 0; i < 14 + 31 + 14; ++i) {
    const QDate day = first.addDays(i);
    if (!std::ranges::binary_search(days_, DateFrom(day))) calendar->setDateTextFormat(day, closed);
  }
}

}  // namespace orin::screening
