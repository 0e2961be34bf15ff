#include <optional>

#include "analysis/items/item_families.h"

namespace orin::analysis {

using base::Currency;
using base::DayIndex;

namespace {

void PutOnEveryDay(std::optional<Currency> value, base::ValueColumn& out) {
  for (size_t place = 0; place < out.Size(); ++place) out.Set(place, value);
}

// A price beyond the range of values, which only single precision can have made of one at its
// very end, is no value either.
std::optional<Currency> PriceOf(std::optional<float> price) {
  return price ? Currency::FromDouble(double{*price}) : std::nullopt;
}

std::optional<Currency> SerialOf(std::optional<base::Date> date) {
  if (!date) return std::nullopt;
  return Currency::FromInt(date->Serial());
}

void EvaluateBuyDate(const BoundItem&, StockContext& context, DayIndex, DayIndex,
                     base::ValueColumn& out) {
  PutOnEveryDay(SerialOf(context.Trade().buy_date), out);
}

void EvaluateSellDate(const BoundItem&, StockContext& context, DayIndex, DayIndex,
                      base::ValueColumn& out) {
  PutOnEveryDay(SerialOf(context.Trade().sell_date), out);
}

constexpr ItemFamily kBuyDateItem = {ItemFamily::Ending::kOptionalZero, TradeNeeds,
                                     EvaluateBuyDate};
constexpr ItemFamily kSellDateItem = {ItemFamily::Ending::kOptionalZero, TradeNeeds,
                                      EvaluateSellDate};

constexpr ItemEntry kTradeRows[] = {
    {"買い値", &kBuyPriceItem, {}, {}, 0, NameRule::kDailyOnly},
    {"売り値", &kSellPriceItem, {}, {}, 0, NameRule::kDailyOnly},
    {"買い日付", &kBuyDateItem, {}, {}, 0, NameRule::kDailyOnly},
    {"売り日付", &kSellDateItem, {}, {}, 0, NameRule::kDailyOnly},
};

}  // namespace

History TradeNeeds(const BoundItem&) { return {}; }

void EvaluateBuyPrice(const BoundItem&, StockContext& context, DayIndex, DayIndex,
                      base::ValueColumn& out) {
  PutOnEveryDay(PriceOf(context.Trade().buy), out);
}

void EvaluateSellPrice(const BoundItem&, StockContext& context, DayIndex, DayIndex,
                       base::ValueColumn& out) {
  PutOnEveryDay(PriceOf(context.Trade().sell), out);
}

std::span<const ItemEntry> TradeItems() { return kTradeRows; }

}  // namespace orin::analysis
