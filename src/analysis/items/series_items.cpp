#include <algorithm>

#include "analysis/items/item_families.h"
#include "indicators/indicator.h"

namespace orin::analysis {

using base::BarsView;
using base::DayIndex;
using indicators::ColumnSink;

int32_t BarsRead(int64_t history, int32_t offset) {
  constexpr int64_t kAll = History::kAll;
  return static_cast<int32_t>(std::min(kAll, std::min(kAll, history) + 1 - offset));
}

int32_t& BarsOfForm(History& needs, SeriesForm form) {
  switch (form) {
    case SeriesForm::kWeekly:
      return needs.weekly;
    case SeriesForm::kMonthly:
      return needs.monthly;
    case SeriesForm::kSecond:
      return needs.second;
    default:
      return needs.daily;
  }
}

History SeriesNeeds(const BoundItem& item) {
  History needs;
  if (!item.indicator->Accepts(item.arguments)) return needs;
  needs.fields = item.indicator->reads;
  BarsOfForm(needs, item.form) = BarsRead(item.indicator->history(item.arguments), item.offset);
  return needs;
}

namespace {

/// One column over all days: bar d + offset is the one examined on day d.
void EvaluateDays(const BoundItem& item, BarsView bars, DayIndex first, DayIndex last,
                  base::ValueColumn& out) {
  const int64_t from = int64_t{first.Value()} + item.offset;
  const int64_t to = int64_t{last.Value()} + item.offset;
  indicators::ComputeInto(*item.indicator, bars, item.arguments, from, to, indicators::Span::kWhole,
                          ColumnSink(out.Data(), from));
}

/// The running period changes from day to day, so each day has a series of its own; one column over
/// finished weeks would know the rest of the week on its first day.
template <typename BarsAsOf>
void EvaluatePeriods(const BoundItem& item, const StockContext& context, DayIndex first,
                     DayIndex last, base::ValueColumn& out, BarsAsOf bars_as_of) {
  const int32_t from = std::max(first.Value(), context.Daily().First());
  const int32_t to = std::min(last.Value(), context.Daily().Count());
  for (int32_t day = from; day <= to; ++day) {
    const BarsView bars = bars_as_of(DayIndex(day));
    const int64_t t = int64_t{bars.Count()} + item.offset;
    const auto place = static_cast<size_t>(day - first.Value());
    indicators::ComputeInto(*item.indicator, bars, item.arguments, t, t, indicators::Span::kWhole,
                            ColumnSink(out.Data() + place, t));
  }
}

}  // namespace

void EvaluateSeries(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                    base::ValueColumn& out) {
  // Nothing is loaded for parameters that never give a value.
  if (!item.indicator->Accepts(item.arguments)) return;
  switch (item.form) {
    case SeriesForm::kDaily:
      return EvaluateDays(item, context.Daily(), first, last, out);
    case SeriesForm::kSecond:
      return EvaluateDays(item, context.Second(), first, last, out);
    case SeriesForm::kWeekly:
      return EvaluatePeriods(item, context, first, last, out,
                             [&context](DayIndex day) { return context.WeeklyAsOf(day); });
    case SeriesForm::kMonthly:
      return EvaluatePeriods(item, context, first, last, out,
                             [&context](DayIndex day) { return context.MonthlyAsOf(day); });
  }
}

}  // namespace orin::analysis
