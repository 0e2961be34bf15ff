#pragma once

#include <cstdint>

#include "base/bars.h"
#include "base/ordinal.h"
#include "store/calendar.h"

namespace orin::store {

/// Weekly or monthly bars derived from daily bars: open of the first day with data, highest
/// high, lowest low, close of the last day with data, volumes added, dated by the last day of
/// the period. A period without data is a no-data bar, and so is one whose volumes add up to more
/// than a Currency holds.
class PeriodBars {
 public:
  /// `daily` and `periods` must outlive the object and not change. The bar of the period that
  /// holds daily.First() covers its loaded days only.
  void Build(base::BarsView daily, const PeriodIndex& periods);

  /// The bars as they stood at the close of `day` (daily.First() <= day <= daily.Count()): the
  /// running period ends there and later ones do not exist. The view holds until the next call.
  [[nodiscard]] base::BarsView AsOf(base::DayIndex day);

 private:
  [[nodiscard]] int32_t LastDay(int32_t period) const;
  [[nodiscard]] base::Bar PeriodUntil(int32_t period, int32_t last_day) const;
  void PutPeriod(int32_t period, int32_t last_day);

  base::BarsView daily_;
  const PeriodIndex* periods_ = nullptr;
  int32_t first_period_ = 1;
  base::BarColumns columns_;    // complete periods
  int32_t running_period_ = 0;  // the one columns_ holds cut short; 0 where none is
};

}  // namespace orin::store
