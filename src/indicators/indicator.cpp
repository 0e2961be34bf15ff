#include "indicators/indicator.h"

#include <algorithm>

namespace orin::indicators {

using base::BarsView;
using base::Currency;

namespace {

/// The oldest bar that has all the bars before it that its value depends on.
int64_t OldestUsable(const Indicator& indicator, const BarsView& bars, const Parameters& parameters,
                     Span span) {
  // A series loaded in part would shorten where the whole one does not.
  const bool all_bars_at_hand = bars.First() == 1;
  if (span == Span::kShortens && indicator.span == Span::kShortens && all_bars_at_hand) return 1;
  const int64_t history = indicator.history(parameters);
  if (history == Indicator::kUnbounded) return bars.First();
  return bars.First() + history;
}

}  // namespace

size_t Indicator::ParameterCount() const {
  size_t count = 0;
  while (count < parameters.size() && !parameters[count].name.empty()) ++count;
  return count;
}

bool Indicator::Accepts(const Parameters& values) const {
  for (size_t i = 0; i < parameters.size() && !parameters[i].name.empty(); ++i) {
    if (values[i] < parameters[i].minimum || values[i] > parameters[i].maximum) return false;
  }
  return true;
}

const Indicator* FindIndicator(std::string_view name) {
  const std::span<const Indicator> all = Indicators();
  const auto found = std::find_if(all.begin(), all.end(), [name](const Indicator& indicator) {
    return indicator.name == name;
  });
  return found == all.end() ? nullptr : &*found;
}

void ComputeInto(const Indicator& indicator, BarsView bars, const Parameters& parameters,
                 int64_t first, int64_t last, Span span, const ColumnSink& sink) {
  if (!indicator.Accepts(parameters)) return;
  first = std::max(first, OldestUsable(indicator, bars, parameters, span));
  last = std::min<int64_t>(last, bars.Count());
  if (first > last) return;
  indicator.compute(ColumnTask{bars, parameters, static_cast<int32_t>(first),
                               static_cast<int32_t>(last), sink, &kernels::Best()});
}

void ComputeColumn(const Indicator& indicator, BarsView bars, const Parameters& parameters,
                   int32_t first, int32_t last, base::ValueColumn& out) {
  const int64_t count = int64_t{last} - first + 1;
  out.Reset(count > 0 ? static_cast<size_t>(count) : 0);
  ComputeInto(indicator, bars, parameters, first, last, Span::kShortens,
              ColumnSink(out.Data(), first));
}

Currency ComputeValue(const Indicator& indicator, BarsView bars, const Parameters& parameters,
                      int32_t offset, Currency fallback) {
  const int64_t t = int64_t{bars.Count()} + offset;
  Currency value = base::kNoValue;
  ComputeInto(indicator, bars, parameters, t, t, Span::kShortens, ColumnSink(&value, t));
  return value != base::kNoValue ? value : fallback;
}

}  // namespace orin::indicators
