#include "analysis/items/item_families.h"

namespace orin::analysis {

namespace {

// A price beyond the range of values, which only single precision can have made of one at its
// very end, is no value either.
void PutPrice(std::optional<float> price, base::ValueColumn& out) {
  const auto value = price ? base::Currency::FromDouble(double{*price}) : std::nullopt;
  if (!value) return;
  for (size_t place = 0; place < out.values.size(); ++place) out.Set(place, *value);
}

}  // namespace

History TradePriceNeeds(const BoundItem&) { return {}; }

void EvaluateBuyPrice(const BoundItem&, StockContext& context, base::DayIndex, base::DayIndex,
                      base::ValueColumn& out) {
  PutPrice(context.Trade().buy, out);
}

void EvaluateSellPrice(const BoundItem&, StockContext& context, base::DayIndex, base::DayIndex,
                       base::ValueColumn& out) {
  PutPrice(context.Trade().sell, out);
}

}  // namespace orin::analysis
