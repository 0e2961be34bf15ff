#include "app/orin_cli/needed_bars_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "analysis/items/item_span.h"
#include "indicators/indicator.h"

namespace orin::app {

using analysis::BoundItem;
using analysis::ItemEntry;
using analysis::SeriesForm;

namespace {

using Slopes = std::array<int64_t, analysis::kMaximumItemArguments>;

int64_t Bars(const BoundItem& item) {
  return int64_t{analysis::BarsNeeded(item).count} + item.Lead();
}

/// The number of bars as constant + Σ slope × argument. Two arguments may count as one, the
/// larger of them, whose slope is the first one's.
struct Sum {
  int64_t constant = 0;
  Slopes slopes = {};
  std::optional<std::pair<size_t, size_t>> larger = {};

  [[nodiscard]] int64_t At(const BoundItem& item) const {
    int64_t bars = constant;
    for (size_t i = 0; i < slopes.size(); ++i) bars += slopes[i] * ArgumentOf(item, i);
    return bars;
  }

 private:
  [[nodiscard]] int32_t ArgumentOf(const BoundItem& item, size_t i) const {
    const bool is_pair = larger && larger->first == i;
    return is_pair ? std::max(item.arguments[i], item.arguments[larger->second])
                   : item.arguments[i];
  }
};

/// Every argument `step` above its least value, as far as its limits allow.
BoundItem Stepped(BoundItem item, const Slopes& steps) {
  for (size_t i = 0; i < item.entry->ParameterCount(); ++i) {
    const auto [minimum, maximum] = item.LimitsOf(i);
    item.arguments[i] = static_cast<int32_t>(std::min<int64_t>(minimum + steps[i], maximum));
  }
  return item;
}

Sum Fit(const BoundItem& least, std::optional<std::pair<size_t, size_t>> larger) {
  Sum sum;
  sum.larger = larger;
  for (size_t i = 0; i < least.entry->ParameterCount(); ++i) {
    if (larger && larger->second == i) continue;
    Slopes step = {};
    step[i] = 1;
    sum.slopes[i] = Bars(Stepped(least, step)) - Bars(least);
  }
  sum.constant = Bars(least) - sum.At(least);
  return sum;
}

/// Whether the sum gives the number for other arguments too, in whatever order of size.
bool Holds(const Sum& sum, const BoundItem& item) {
  const std::array<Slopes, 4> trials = {
      {{5, 9, 17, 3}, {17, 3, 5, 9}, {3, 17, 9, 5}, {9, 9, 9, 9}}};
  return std::all_of(trials.begin(), trials.end(), [&](const Slopes& steps) {
    const BoundItem other = Stepped(item, steps);
    return sum.At(other) == Bars(other);
  });
}

std::string Text(const Sum& sum, const BoundItem& item) {
  std::string text;
  for (size_t i = 0; i < sum.slopes.size(); ++i) {
    if (sum.slopes[i] == 0) continue;
    const std::string factor = sum.slopes[i] == 1 ? "" : std::to_string(sum.slopes[i]);
    const bool is_pair = sum.larger && sum.larger->first == i;
    const std::string letter =
        is_pair ? "max(" + LetterOf(item, i) + ", " + LetterOf(item, sum.larger->second) + ")"
                : LetterOf(item, i);
    if (!text.empty()) text += " + ";
    text += factor;
    text += letter;
  }
  if (text.empty()) return std::to_string(sum.constant);
  if (sum.constant > 0) text += " + " + std::to_string(sum.constant);
  if (sum.constant < 0) text += " - " + std::to_string(-sum.constant);
  return text;
}

}  // namespace

BoundItem BoundItemOf(const ItemEntry& entry, SeriesForm form) {
  BoundItem item;
  item.entry = &entry;
  item.indicator = indicators::FindIndicator(entry.indicator);
  item.form = form;
  return Stepped(item, {});
}

std::string LetterOf(const BoundItem& item, size_t parameter) {
  if (item.indicator == nullptr) return item.entry->ParameterCount() == 1 ? "n" : "";
  return std::string(item.indicator->parameters[parameter].name);
}

std::string NeededBarsText(const ItemEntry& entry) {
  const auto form = std::find_if(analysis::kAllForms.begin(), analysis::kAllForms.end(),
                                 [&entry](SeriesForm each) { return entry.HasForm(each); });
  const BoundItem item = BoundItemOf(entry, *form);
  const int64_t bars = Bars(item);
  if (bars == 0) return "";
  if (bars == analysis::History::kAll) return "すべて";
  if (const Sum sum = Fit(item, std::nullopt); Holds(sum, item)) return Text(sum, item);
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    for (size_t j = i + 1; j < entry.ParameterCount(); ++j) {
      const Sum sum = Fit(item, std::pair(i, j));
      if (Holds(sum, item)) return Text(sum, item);
    }
  }
  return "引数による";
}

}  // namespace orin::app
