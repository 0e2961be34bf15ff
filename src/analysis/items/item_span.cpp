#include "analysis/items/item_span.h"

#include <algorithm>

#include "analysis/items/day_keywords.h"

namespace orin::analysis {

using base::DayIndex;

namespace {

BarDates DatesOfBar(SeriesForm form, int64_t number, const store::Calendar& days, DayIndex day) {
  const auto bar = static_cast<int32_t>(number);
  const store::PeriodIndex* periods = PeriodsOf(form, days);
  if (periods == nullptr) return {days.DateOf(DayIndex(bar)), days.DateOf(DayIndex(bar))};
  const bool is_running = bar == periods->PeriodOf(day);
  const DayIndex last = is_running ? day : DayIndex(periods->FirstDay(bar + 1).Value() - 1);
  return {days.DateOf(periods->FirstDay(bar)), days.DateOf(last)};
}

}  // namespace

NeededBars BarsNeeded(const BoundItem& bound) {
  BoundItem item = bound;
  item.keyword.reset();
  item.offset = 0;
  const History needs = item.entry->family->needs(item);
  if (needs.weekly > 0) return {SeriesForm::kWeekly, needs.weekly};
  if (needs.monthly > 0) return {SeriesForm::kMonthly, needs.monthly};
  if (item.form == SeriesForm::kSecond) return {SeriesForm::kSecond, needs.second};
  // Every context has the bar of the day, whether an item reads it or not.
  const bool reads_bars = item.indicator != nullptr || needs.fields != base::PriceFields::kNone;
  return {SeriesForm::kDaily, reads_bars ? needs.daily : 0};
}

std::optional<ItemSpan> SpanOf(const ItemCall& call, const StockContext& context, DayIndex day) {
  const BoundItem& item = call.Bound();
  const NeededBars needed = BarsNeeded(item);
  const auto counted_from = item.keyword ? context.KeywordDays().Of(*item.keyword, day) : day;
  const bool is_known =
      counted_from && *counted_from >= DayIndex(1) && *counted_from <= context.Days().Last();
  if (needed.count == 0 || !is_known) return std::nullopt;
  const store::PeriodIndex* periods = PeriodsOf(needed.form, context.Days());
  const auto bar_of = [periods](DayIndex of) {
    return periods == nullptr ? of.Value() : periods->PeriodOf(of);
  };
  const int64_t named = int64_t{bar_of(*counted_from)} + item.offset;
  ItemSpan span;
  span.form = needed.form;
  span.newest = bar_of(day);
  span.examined = named + item.Lead();
  span.from_first = needed.count == History::kAll;
  span.oldest = span.from_first ? std::min<int64_t>(1, named) : named - needed.count + 1;
  return span;
}

DatedSpan DatesOf(const ItemSpan& span, const StockContext& context, DayIndex day) {
  const store::Calendar& days = context.Days();
  return {span.form, span.Count(), DatesOfBar(span.form, span.oldest, days, day),
          DatesOfBar(span.form, span.examined, days, day), span.from_first};
}

}  // namespace orin::analysis
