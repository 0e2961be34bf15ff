#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/bars.h"
#include "base/date.h"
#include "chart/scales.h"
#include "store/stock_series.h"

namespace orin::chart {

/// How the values of an axis and of a readout are written.
enum class NumberForm : uint8_t {
  kPrice,    // "310.33", with two to four decimals
  kPercent,  // "63.3"
  kVolume,   // "35,217,272"; on an axis "3,500万"
};

/// The smallest of 1, 2, 2.5 and 5 times a power of ten that is not below `least` (above 0).
double RoundStep(double least);

/// A value at which an axis has a line and a text.
struct Tick {
  double value = 0;
  std::string text;

  bool operator==(const Tick&) const = default;
};

/// Round values within the scale, ascending, at least `spacing` pixels apart. On a logarithmic
/// scale 1, 2 and 5 times powers of ten, or round ones where the range is narrow; kPercent takes
/// round distances from `base` in per cent of it (not 0).
std::vector<Tick> ValueTicks(const ValueScale& scale, double spacing, NumberForm form,
                             double base = 1);
/// The texts for given values, all with the same decimals.
std::vector<Tick> LabelledTicks(std::span<const double> values, NumberForm form);

/// A bar at which the axis of dates has a line and a text.
struct DateTick {
  int32_t bar = 0;
  std::string text;

  bool operator==(const DateTick&) const = default;
};

/// At least `spacing` pixels apart: the first bars of months or years as "yymm", on monthly bars as
/// "yyyy"; where there are but a few weeks to see, days as "yy/mm/dd".
std::vector<DateTick> DateTicks(const base::BarsView& bars, const BarScale& scale,
                                store::BarPeriod period, double spacing);

/// "09:35".
std::string TimeText(int32_t seconds);
/// "2001", "2020", "20/01/10".
std::string YearMonth(base::Date date);
std::string Year(base::Date date);
std::string ShortDate(base::Date date);

}  // namespace orin::chart
