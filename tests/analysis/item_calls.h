#pragma once

#include <random>
#include <string>
#include <vector>

#include "analysis/items/item_catalogue.h"

namespace orin::analysis {

/// One call of every form of every item with random small arguments.
inline std::vector<std::string> RandomCalls(std::mt19937& random) {
  const auto pick = [&random](int32_t low, int32_t high) {
    return std::to_string(std::uniform_int_distribution<int32_t>(low, high)(random));
  };
  std::vector<std::string> calls;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      std::string text = ItemName(entry, form) + "(";
      for (size_t i = 0; i < entry.ParameterCount(); ++i) text += pick(1, 6) + ",";
      if (entry.family->ending == ItemFamily::Ending::kOffset) text += pick(-4, 0);
      if (entry.family->ending == ItemFamily::Ending::kOptionalZero) text += "0";
      calls.push_back(text + ")");
    }
  }
  return calls;
}

}  // namespace orin::analysis
