#include "indicators/change_rate_correlation.h"

#include <algorithm>
#include <cmath>

#include "indicators/indicator.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::ValueColumn;

namespace {

/// Place i is the bar first + i; the place before the first is needed for its change.
ValueColumn ChangeRates(const BarsView& bars, int32_t n, int32_t first, int32_t last) {
  ValueColumn averages;
  ComputeColumn(*FindIndicator("moving_average"), bars, {n}, first - 1, last, averages);
  ValueColumn rates;
  rates.Reset(averages.Size() - 1);
  for (size_t i = 0; i < rates.Size(); ++i) {
    if (!averages.Has(i) || !averages.Has(i + 1) || averages.At(i) <= Currency()) continue;
    const base::Int128 before = averages.At(i).Raw();
    rates.Set(i, Percentage(averages.At(i + 1).Raw() - before, before));
  }
  return rates;
}

/// Sums of squares and products about the means: raw moments would lose the digits that matter
/// where the rates are close together.
struct Moments {
  double mean_x = 0;
  double mean_y = 0;
  double xx = 0;
  double yy = 0;
  double xy = 0;
};

Moments MomentsOf(const std::vector<ChangeRatePoint>& points) {
  Moments m;
  for (const ChangeRatePoint& point : points) {
    m.mean_x += point.comparison.ToDouble();
    m.mean_y += point.stock.ToDouble();
  }
  m.mean_x /= static_cast<double>(points.size());
  m.mean_y /= static_cast<double>(points.size());
  for (const ChangeRatePoint& point : points) {
    const double x = point.comparison.ToDouble() - m.mean_x;
    const double y = point.stock.ToDouble() - m.mean_y;
    m.xx += x * x;
    m.yy += y * y;
    m.xy += x * y;
  }
  return m;
}

template <Currency ChangeRatePoint::*kRate>
bool AllEqual(const std::vector<ChangeRatePoint>& points) {
  return std::all_of(points.begin(), points.end(), [&points](const ChangeRatePoint& point) {
    return point.*kRate == points.front().*kRate;
  });
}

std::optional<RegressionLine> LineOf(const Moments& m) {
  const double slope = m.xy / m.xx;
  const std::optional<Currency> rounded = Currency::FromDouble(slope);
  const std::optional<Currency> intercept = Currency::FromDouble(m.mean_y - slope * m.mean_x);
  if (!rounded || !intercept) return std::nullopt;
  return RegressionLine{*rounded, *intercept};
}

// Equality is asked of the rates themselves: about a mean that was rounded, equal rates need not
// have the sum 0.
void Correlate(ChangeRateCorrelation& result) {
  if (AllEqual<&ChangeRatePoint::comparison>(result.points)) return;
  const Moments m = MomentsOf(result.points);
  result.line = LineOf(m);
  if (AllEqual<&ChangeRatePoint::stock>(result.points)) return;
  const double coefficient = m.xy / (std::sqrt(m.xx) * std::sqrt(m.yy));
  result.coefficient = Currency::FromDouble(std::clamp(coefficient, -1.0, 1.0));
}

}  // namespace

std::optional<CorrelationPeriod> CorrelationPeriodOf(int32_t setting) {
  if (setting < 1 || setting > 3) return std::nullopt;
  return static_cast<CorrelationPeriod>(setting);
}

ChangeRateCorrelation CorrelateChangeRates(const BarsView& stock, const BarsView& comparison,
                                           int32_t n, int32_t count) {
  ChangeRateCorrelation result;
  const int32_t last = std::min(stock.Count(), comparison.Count());
  const int32_t oldest = std::max(stock.First(), comparison.First());
  // The very first bar has none before it to have changed from.
  const int32_t first = std::max<int32_t>(oldest + 1, last - std::max(count, 0) + 1);
  if (first > last) return result;
  const ValueColumn across = ChangeRates(comparison, n, first, last);
  const ValueColumn up = ChangeRates(stock, n, first, last);
  for (size_t i = 0; i < across.Size(); ++i) {
    if (!across.Has(i) || !up.Has(i)) continue;
    result.points.push_back({first + static_cast<int32_t>(i), across.At(i), up.At(i)});
  }
  Correlate(result);
  return result;
}

}  // namespace orin::indicators
