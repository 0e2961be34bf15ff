#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "analysis/items/item_catalogue.h"
#include "indicators/indicator.h"

namespace orin::analysis {

/// One call of every form of every item with random small arguments within their limits.
inline std::vector<std::string> RandomCalls(std::mt19937& random) {
  const auto pick = [&random](int32_t low, int32_t high) {
    return std::to_string(std::uniform_int_distribution<int32_t>(low, high)(random));
  };
  std::vector<std::string> calls;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      std::string text = ItemName(entry, form) + "(";
      BoundItem item;
      item.entry = &entry;
      item.indicator = indicators::FindIndicator(entry.indicator);
      for (size_t i = 0; i < entry.ParameterCount(); ++i) {
        const ArgumentLimits limits = item.LimitsOf(i);
        const int32_t low = std::max(limits.minimum, -3);
        text += pick(low, std::min(limits.maximum, std::max(6, low + 2))) + ",";
      }
      if (entry.family->ending == ItemFamily::Ending::kOffset) text += pick(-4, 0);
      if (entry.family->ending == ItemFamily::Ending::kOptionalZero) text += "0";
      calls.push_back(text + ")");
    }
  }
  return calls;
}

}  // namespace orin::analysis
