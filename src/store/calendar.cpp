#include "store/calendar.h"

#include <algorithm>

namespace orin::store {

namespace {

bool StartsPeriod(base::Date before, base::Date day, PeriodIndex::Kind kind) {
  // Neither rule looks at the distance in days: a gap of weeks with rising weekdays is one week.
  if (kind == PeriodIndex::Kind::kWeek) return day.Weekday() <= before.Weekday();
  return day.Month() != before.Month();
}

}  // namespace

PeriodIndex::PeriodIndex(std::span<const base::Date> days, Kind kind) {
  period_of_day_.reserve(days.size());
  for (size_t i = 0; i < days.size(); ++i) {
    if (i == 0 || StartsPeriod(days[i - 1], days[i], kind)) {
      first_days_.push_back(static_cast<int32_t>(i) + 1);
    }
    period_of_day_.push_back(Count());
  }
}

Calendar::Calendar(std::vector<base::Date> days)
    : days_(std::move(days)),
      weeks_(days_, PeriodIndex::Kind::kWeek),
      months_(days_, PeriodIndex::Kind::kMonth) {}

base::DayIndex Calendar::Find(base::Date date) const {
  const auto found = std::ranges::lower_bound(days_, date);
  if (found == days_.end() || *found != date) return {};
  return base::DayIndex(static_cast<int32_t>(found - days_.begin()) + 1);
}

}  // namespace orin::store
