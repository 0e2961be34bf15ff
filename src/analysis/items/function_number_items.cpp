#include "analysis/items/item_families.h"

namespace orin::analysis {

History FunctionNumberNeeds(const BoundItem&) { return {}; }

void EvaluateFunctionNumber(const BoundItem& item, StockContext&, base::DayIndex, base::DayIndex,
                            base::ValueColumn& out) {
  for (size_t place = 0; place < out.values.size(); ++place) {
    out.Set(place, base::Currency::FromInt(item.entry->number));
  }
}

}  // namespace orin::analysis
