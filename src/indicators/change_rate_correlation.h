#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

/// The bars whose change rates are compared, as the settings number them.
enum class CorrelationPeriod : int32_t { kDaily = 1, kWeekly = 2, kMonthly = 3 };
/// nullopt for other numbers.
std::optional<CorrelationPeriod> CorrelationPeriodOf(int32_t setting);

/// Change rates of one bar in per cent, to four decimals.
struct ChangeRatePoint {
  int32_t bar = 0;
  base::Currency comparison;  // across
  base::Currency stock;       // up

  bool operator==(const ChangeRatePoint&) const = default;
};

/// stock = slope × comparison + intercept, by least squares over the distances upwards.
struct RegressionLine {
  base::Currency slope;
  base::Currency intercept;  // in per cent
};

struct ChangeRateCorrelation {
  std::vector<ChangeRatePoint> points;  // oldest first
  /// Pearson's coefficient, -1 to 1. None with fewer than two points or where all the change
  /// rates of one of the two are equal.
  std::optional<base::Currency> coefficient;
  /// None with fewer than two points or where all change rates of the comparison are equal.
  std::optional<RegressionLine> line;
};

/// Of the `count` newest bars up to the last one both have; bar t is the same day, week or month in
/// both. A change rate is (A - A') / A' × 100, A being the moving average over n closes (n = 1: the
/// close) and A' that of the bar before. Bars where it cannot be had for both are left out, also
/// for A' <= 0. Coefficient and line are taken from the rates to four decimals, in double
/// precision, and rounded to four decimals.
ChangeRateCorrelation CorrelateChangeRates(const base::BarsView& stock,
                                           const base::BarsView& comparison, int32_t n,
                                           int32_t count);

}  // namespace orin::indicators
