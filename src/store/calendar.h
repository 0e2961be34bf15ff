#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/date.h"
#include "base/ordinal.h"

namespace orin::store {

/// Consecutive days grouped into weeks or months, numbered from 1.
class PeriodIndex {
 public:
  enum class Kind { kWeek, kMonth };

  PeriodIndex() = default;
  /// A new week starts where the weekday is not greater than that of the day before it, a new
  /// month where the month changes.
  PeriodIndex(std::span<const base::Date> days, Kind kind);

  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(first_days_.size()); }
  [[nodiscard]] int32_t PeriodOf(base::DayIndex day) const {
    return period_of_day_[static_cast<size_t>(day.Value() - 1)];
  }
  [[nodiscard]] base::DayIndex FirstDay(int32_t period) const {
    return base::DayIndex(first_days_[static_cast<size_t>(period - 1)]);
  }

 private:
  std::vector<int32_t> period_of_day_;
  std::vector<int32_t> first_days_;
};

/// The trading days that all stocks share, ascending, numbered from 1.
class Calendar {
 public:
  Calendar() = default;
  explicit Calendar(std::vector<base::Date> days);

  [[nodiscard]] int32_t Count() const { return static_cast<int32_t>(days_.size()); }
  [[nodiscard]] base::DayIndex Last() const { return base::DayIndex(Count()); }
  [[nodiscard]] std::span<const base::Date> Days() const { return days_; }
  [[nodiscard]] base::Date DateOf(base::DayIndex day) const {
    return days_[static_cast<size_t>(day.Value() - 1)];
  }
  /// None where the date is no trading day.
  [[nodiscard]] base::DayIndex Find(base::Date date) const;

  [[nodiscard]] const PeriodIndex& Weeks() const { return weeks_; }
  [[nodiscard]] const PeriodIndex& Months() const { return months_; }

 private:
  std::vector<base::Date> days_;
  PeriodIndex weeks_;
  PeriodIndex months_;
};

}  // namespace orin::store
