#include "analysis/run_days.h"

namespace orin::analysis {

namespace {

size_t RowOf(NumberedKeyword keyword) { return static_cast<size_t>(keyword.keyword); }

}  // namespace

std::optional<base::DayIndex> RunDays::Of(NumberedKeyword keyword) const {
  return days_[RowOf(keyword)][static_cast<size_t>(keyword.number - 1)];
}

void RunDays::Set(NumberedKeyword keyword, base::DayIndex day) {
  days_[RowOf(keyword)][static_cast<size_t>(keyword.number - 1)] = day;
}

}  // namespace orin::analysis
