#include "analysis/run_days.h"

namespace orin::analysis {

RunDays RunDays::OfOneFile() {
  RunDays days;
  days.SetExaminedDay({DayKeyword::kAnalysisDate, 1});
  return days;
}

std::optional<base::DayIndex> RunDays::Of(NumberedKeyword keyword, base::DayIndex examined) const {
  const Day& day = At(keyword);
  if (day.kind == Day::Kind::kNotSet) return std::nullopt;
  return day.kind == Day::Kind::kExamined ? examined : day.fixed;
}

bool RunDays::IsExaminedDay(NumberedKeyword keyword) const {
  return At(keyword).kind == Day::Kind::kExamined;
}

void RunDays::Set(NumberedKeyword keyword, base::DayIndex day) {
  At(keyword) = {Day::Kind::kFixed, day};
}

void RunDays::SetExaminedDay(NumberedKeyword keyword) { At(keyword) = {Day::Kind::kExamined, {}}; }

const RunDays::Day& RunDays::At(NumberedKeyword keyword) const {
  return days_[static_cast<size_t>(keyword.keyword)][static_cast<size_t>(keyword.number - 1)];
}

RunDays::Day& RunDays::At(NumberedKeyword keyword) {
  return days_[static_cast<size_t>(keyword.keyword)][static_cast<size_t>(keyword.number - 1)];
}

}  // namespace orin::analysis
