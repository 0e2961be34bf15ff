#include <algorithm>
#include <optional>

#include "analysis/items/item_families.h"
#include "indicators/rolling_sum.h"
#include "indicators/window_extreme.h"

namespace orin::analysis {

using base::BarsView;
using base::Currency;
using base::DayIndex;
using indicators::Highest;
using indicators::Lowest;

namespace {

struct SpreadSource {
  BarsView stock;
  BarsView second;

  std::optional<Currency> operator()(int32_t t) const {
    if (!stock.HasData(t) || !second.HasData(t)) return std::nullopt;
    return stock.Close(t).Minus(second.Close(t));
  }
};

// Counted beside the extreme, which only passes over days without a spread.
struct MissingSpread {
  SpreadSource spread;
  int32_t operator()(int32_t t) const { return spread(t) ? 0 : 1; }
};

History BothNeed(const BoundItem& item, int32_t period) {
  History needs;
  if (period < 1) return needs;
  needs.fields = base::PriceFields::kClose;
  needs.daily = BarsRead(int64_t{period} - 1, item.offset);
  needs.second = needs.daily;
  return needs;
}

template <typename Order>
void EvaluateExtreme(const BoundItem& item, int32_t period, const StockContext& context,
                     DayIndex first, DayIndex last, base::ValueColumn& out) {
  const SpreadSource spread{context.Daily(), context.Second()};
  if (period < 1 || !context.HasSecond()) return;
  // Both series are numbered by the store's days, but one may have been loaded from a later day on.
  const int32_t oldest_loaded = std::max(spread.stock.First(), spread.second.First());
  const int64_t origin = int64_t{first.Value()} + item.offset;
  const int64_t from = std::max(origin, int64_t{oldest_loaded} + period - 1);
  const int64_t to = std::min<int64_t>(int64_t{last.Value()} + item.offset,
                                       std::min(spread.stock.Count(), spread.second.Count()));
  indicators::RollingSum<int32_t, MissingSpread> missing(period, oldest_loaded, {spread});
  indicators::WindowExtreme<Order, SpreadSource> window(spread);
  for (int64_t at = from; at <= to; ++at) {
    const auto t = static_cast<int32_t>(at);
    const indicators::Extreme found = window.At(t - period + 1, t);
    if (missing.At(t) == 0) out.Set(static_cast<size_t>(at - origin), found.value);
  }
}

History SpreadNeeds(const BoundItem& item) { return BothNeed(item, 1); }

History ExtremeSpreadNeeds(const BoundItem& item) { return BothNeed(item, item.arguments[0]); }

void EvaluateSpread(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                    base::ValueColumn& out) {
  EvaluateExtreme<Highest>(item, 1, context, first, last, out);
}

void EvaluateHighestSpread(const BoundItem& item, StockContext& context, DayIndex first,
                           DayIndex last, base::ValueColumn& out) {
  EvaluateExtreme<Highest>(item, item.arguments[0], context, first, last, out);
}

void EvaluateLowestSpread(const BoundItem& item, StockContext& context, DayIndex first,
                          DayIndex last, base::ValueColumn& out) {
  EvaluateExtreme<Lowest>(item, item.arguments[0], context, first, last, out);
}

// 終値 - 第二銘柄終値 of one day, and its extremes over a period of days.
constexpr ItemFamily kSpreadItem = {ItemFamily::Ending::kOffset, SpreadNeeds, EvaluateSpread, true};
constexpr ItemFamily kHighestSpreadItem = {ItemFamily::Ending::kOffset, ExtremeSpreadNeeds,
                                           EvaluateHighestSpread, true};
constexpr ItemFamily kLowestSpreadItem = {ItemFamily::Ending::kOffset, ExtremeSpreadNeeds,
                                          EvaluateLowestSpread, true};

constexpr ItemEntry kSpreadRows[] = {
    {"さや", &kSpreadItem, {}, {}, 0, NameRule::kDailyOnly},
    {"さや最大値", &kHighestSpreadItem, {"さや最大値チェック期間"}, {}, 0, NameRule::kDailyOnly},
    {"さや最小値", &kLowestSpreadItem, {"さや最小値チェック期間"}, {}, 0, NameRule::kDailyOnly},
};

}  // namespace

std::span<const ItemEntry> SpreadItems() { return kSpreadRows; }

}  // namespace orin::analysis
