#include "store/period_bars.h"

#include <algorithm>
#include <optional>

namespace orin::store {

namespace {

/// The daily bars first..last as one.
base::Bar Combine(const base::BarsView& daily, int32_t first, int32_t last) {
  base::Bar bar;
  std::optional<base::Currency> volume;
  for (int32_t t = first; t <= last; ++t) {
    if (!daily.HasData(t)) continue;
    if (!volume) {
      bar.open = daily.Open(t);
      bar.high = daily.High(t);
      bar.low = daily.Low(t);
      volume = base::Currency();
    }
    bar.high = std::max(bar.high, daily.High(t));
    bar.low = std::min(bar.low, daily.Low(t));
    bar.close = daily.Close(t);
    volume = volume->Plus(daily.Volume(t));
    // A sum out of range leaves no bar that could be trusted.
    if (!volume) {
      bar = base::Bar();
      break;
    }
  }
  bar.volume = volume.value_or(base::kNoDataVolume);
  bar.date = daily.DateOf(last);
  return bar;
}

}  // namespace

base::Bar PeriodBars::PeriodUntil(int32_t period, int32_t last_day) const {
  const int32_t first_day = std::max(periods_->FirstDay(period).Value(), daily_.First());
  return Combine(daily_, first_day, last_day);
}

int32_t PeriodBars::LastDay(int32_t period) const {
  if (period == periods_->Count()) return daily_.Count();
  return std::min(periods_->FirstDay(period + 1).Value() - 1, daily_.Count());
}

void PeriodBars::Build(base::BarsView daily, const PeriodIndex& periods) {
  daily_ = daily;
  periods_ = &periods;
  running_period_ = 0;
  first_period_ = 1;
  columns_.Resize(0);
  if (daily.Count() < daily.First()) return;
  first_period_ = periods.PeriodOf(base::DayIndex(daily.First()));
  const int32_t last_period = periods.PeriodOf(base::DayIndex(daily.Count()));
  columns_.Resize(static_cast<size_t>(last_period - first_period_ + 1));
  for (int32_t period = first_period_; period <= last_period; ++period) {
    PutPeriod(period, LastDay(period));
  }
}

void PeriodBars::PutPeriod(int32_t period, int32_t last_day) {
  columns_.Put(static_cast<size_t>(period - first_period_), PeriodUntil(period, last_day));
}

base::BarsView PeriodBars::AsOf(base::DayIndex day) {
  const int32_t period = periods_->PeriodOf(day);
  if (running_period_ != 0 && running_period_ != period) {
    PutPeriod(running_period_, LastDay(running_period_));
    running_period_ = 0;
  }
  // The last day of a period needs the whole bar, which is there unless it was cut before.
  const bool is_cut = day.Value() != LastDay(period);
  if (is_cut || running_period_ == period) PutPeriod(period, day.Value());
  running_period_ = is_cut ? period : 0;
  return base::BarsView(columns_, first_period_).Until(period);
}

}  // namespace orin::store
