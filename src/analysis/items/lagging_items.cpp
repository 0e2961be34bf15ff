#include <algorithm>
#include <optional>

#include "analysis/items/item_families.h"

namespace orin::analysis {

using base::BarsView;
using base::DayIndex;

namespace {

/// The examined bar is the first of the n.
int32_t LaggingLead(const BoundItem& item) { return std::max(item.arguments[0], 1) - 1; }

History LaggingNeeds(const BoundItem& item) {
  History needs;
  if (!item.IsWithinLimits()) return needs;
  needs.fields = base::PriceFields::kClose;
  BarsOfForm(needs, item.form) = BarsRead(0, item.offset);
  return needs;
}

/// The close `lead` bars after the one the offset names, which has to be there itself.
std::optional<base::Currency> CloseAfter(BarsView bars, int32_t newest, const BoundItem& item) {
  const int64_t named = int64_t{newest} + item.offset;
  const int64_t t = named + item.Lead();
  if (named < 1 || t < bars.First() || t > newest || !bars.HasData(static_cast<int32_t>(t))) {
    return std::nullopt;
  }
  return bars.Close(static_cast<int32_t>(t));
}

void EvaluateLagging(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                     base::ValueColumn& out) {
  if (!item.IsWithinLimits()) return;
  if (item.form == SeriesForm::kSecond && !context.HasSecond()) return;
  const int32_t from = std::max(first.Value(), context.Daily().First());
  const BarsView days = item.form == SeriesForm::kSecond ? context.Second() : context.Daily();
  for (int32_t day = from; day <= std::min(last.Value(), days.Count()); ++day) {
    const auto place = static_cast<size_t>(day - first.Value());
    if (item.form == SeriesForm::kWeekly) {
      const BarsView weeks = context.WeeklyAsOf(DayIndex(day));
      out.Set(place, CloseAfter(weeks, weeks.Count(), item));
    } else if (item.form == SeriesForm::kMonthly) {
      const BarsView months = context.MonthlyAsOf(DayIndex(day));
      out.Set(place, CloseAfter(months, months.Count(), item));
    } else {
      out.Set(place, CloseAfter(days, day, item));
    }
  }
}

constexpr ItemFamily kLaggingItem = {ItemFamily::Ending::kOffset, LaggingNeeds, EvaluateLagging,
                                     false, LaggingLead};

constexpr ItemEntry kLaggingRows[] = {{"遅行スパン", &kLaggingItem, {"遅行日数"}}};

}  // namespace

std::span<const ItemEntry> LaggingItems() { return kLaggingRows; }

}  // namespace orin::analysis
