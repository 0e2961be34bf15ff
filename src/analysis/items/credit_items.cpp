#include <algorithm>
#include <optional>

#include "analysis/items/item_families.h"

namespace orin::analysis {

using base::Currency;
using base::DayIndex;
using store::CreditBalance;

namespace {

using Side = Currency CreditBalance::*;

History CreditNeeds(const BoundItem& item) {
  History needs;
  needs.credit = true;
  (item.form == SeriesForm::kWeekly ? needs.weekly : needs.monthly) = BarsRead(0, item.offset);
  return needs;
}

/// The newest balances from `first` to `last` of days that have any.
std::optional<CreditBalance> NewestBalance(const StockContext& context, int32_t first,
                                           int32_t last) {
  const int32_t oldest = context.Daily().First();
  const auto balances = context.Credit();
  for (int32_t day = last; day >= std::max(first, oldest); --day) {
    const auto place = static_cast<size_t>(day - oldest);
    if (place < balances.size() && balances[place] != CreditBalance()) return balances[place];
  }
  return std::nullopt;
}

void EvaluateCredit(const BoundItem& item, const StockContext& context, DayIndex first,
                    DayIndex last, base::ValueColumn& out, Side side) {
  const store::Calendar& days = context.Days();
  const bool is_weekly = item.form == SeriesForm::kWeekly;
  const store::PeriodIndex& periods = is_weekly ? days.Weeks() : days.Months();
  for (int32_t day = std::max(first.Value(), context.Daily().First()); day <= last.Value(); ++day) {
    const int64_t period = int64_t{periods.PeriodOf(DayIndex(day))} + item.offset;
    if (period < 1) continue;
    const auto examined = static_cast<int32_t>(period);
    // The running week or month ends on the day.
    const int32_t end = item.offset == 0 ? day : periods.FirstDay(examined + 1).Value() - 1;
    const auto balance = NewestBalance(context, periods.FirstDay(examined).Value(), end);
    if (balance) out.Set(static_cast<size_t>(day - first.Value()), (*balance).*side);
  }
}

template <Side side>
void EvaluateSide(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                  base::ValueColumn& out) {
  EvaluateCredit(item, context, first, last, out, side);
}

constexpr ItemFamily kSellItem = {ItemFamily::Ending::kOffset, CreditNeeds,
                                  EvaluateSide<&CreditBalance::sell>};
constexpr ItemFamily kBuyItem = {ItemFamily::Ending::kOffset, CreditNeeds,
                                 EvaluateSide<&CreditBalance::buy>};

constexpr ItemEntry kCreditTable[] = {
    {"売り残", &kSellItem, {}, {}, 0, NameRule::kPeriodsOnly},
    {"買い残", &kBuyItem, {}, {}, 0, NameRule::kPeriodsOnly},
};

}  // namespace

std::span<const ItemEntry> CreditItems() { return kCreditTable; }

}  // namespace orin::analysis
