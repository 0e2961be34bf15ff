#include "analysis/items/item_families.h"

namespace orin::analysis {

History FunctionNumberNeeds(const BoundItem&) { return {}; }

void EvaluateFunctionNumber(const BoundItem& item, StockContext&, base::DayIndex, base::DayIndex,
                            base::ValueColumn& out) {
  for (size_t place = 0; place < out.Size(); ++place) {
    out.Set(place, base::Currency::FromInt(item.entry->number));
  }
}

namespace {

constexpr ItemEntry Number(std::string_view name, int32_t number) {
  return {name, &kFunctionNumberItems, {}, {}, number, NameRule::kDailyOnly};
}

constexpr ItemEntry kFunctionNumberRows[] = {
    Number("Ａｂｓ", 1), Number("Ａｔｎ", 2),  Number("Ｃｏｓ", 3),  Number("Ｅｘｐ", 4),
    Number("Ｆｉｘ", 5), Number("Ｉｎｔ", 6),  Number("Ｌｏｇ", 7),  Number("Ｓｇｎ", 8),
    Number("Ｓｉｎ", 9), Number("Ｓｑｒ", 10), Number("Ｔａｎ", 11),
};

}  // namespace

std::span<const ItemEntry> FunctionNumberItems() { return kFunctionNumberRows; }

}  // namespace orin::analysis
