#include "chart/ticks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/shown_number.h"

namespace orin::chart {

using base::Currency;

namespace {

constexpr std::array kSteps = {1.0, 2.0, 2.5, 5.0, 10.0};
// More lines than this are never wanted, whatever the numbers are.
constexpr int64_t kMostTicks = 200;
// The finest value there is.
constexpr double kFinest = 1.0 / Currency::kScale;

constexpr double kTrillion = 1e12;

struct BigUnit {
  double size;
  const char* name;
};
constexpr std::array kBigUnits = {BigUnit{kTrillion, "兆"}, BigUnit{1e8, "億"}, BigUnit{1e4, "万"}};

/// Decimals, up to four, that a multiple of `step` needs.
int32_t DecimalsOf(double step) {
  int32_t decimals = 0;
  for (double scaled = step; decimals < 4; ++decimals, scaled *= 10) {
    if (std::abs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, scaled)) break;
  }
  return decimals;
}

/// Axes may reach a little beyond the largest value there is.
std::string Written(double value, int32_t decimals) {
  const auto number = Currency::FromDouble(value);
  if (number) return base::Grouped(*number, decimals, false);
  return base::Grouped(Currency::FromDouble(value / kTrillion).value_or(Currency()), 0, false) +
         "兆";
}

/// All texts of an axis in the unit of its largest value.
std::string VolumeText(double value, double step, double largest) {
  for (const BigUnit& unit : kBigUnits) {
    if (largest < unit.size || value == 0) continue;
    return Written(value / unit.size, std::min(2, DecimalsOf(step / unit.size))) + unit.name;
  }
  return Written(value, DecimalsOf(step));
}

std::string TextOf(double value, double step, double largest, NumberForm form) {
  if (form == NumberForm::kVolume) return VolumeText(value, step, largest);
  const int32_t decimals = DecimalsOf(step);
  return Written(value, decimals);
}

std::vector<Tick> RoundTicks(const ValueScale& scale, double spacing, NumberForm form) {
  const ValueRange& range = scale.Range();
  const double height = std::abs(scale.Y(range.low) - scale.Y(range.high));
  if (height < 1) return {};
  const double step =
      RoundStep(std::max((range.high - range.low) / std::max(1.0, height / spacing), kFinest));
  const double largest = std::max(std::abs(range.low), std::abs(range.high));
  std::vector<Tick> ticks;
  const double first = std::ceil(range.low / step - 1e-9);
  for (int64_t i = 0; i < kMostTicks; ++i) {
    // Zero has no sign.
    const double value = (first + static_cast<double>(i)) * step + 0.0;
    if (value > range.high + step * 1e-9) break;
    ticks.push_back({value, TextOf(value, step, largest, form)});
  }
  return ticks;
}

/// 1, 2, 5, 10 ... as far as they are apart enough; empty where that gives fewer than three.
std::vector<Tick> DecadeTicks(const ValueScale& scale, double spacing, NumberForm form) {
  std::vector<Tick> ticks;
  const ValueRange& range = scale.Range();
  double last_y = scale.Y(range.low) + spacing;
  for (auto power = static_cast<int>(std::floor(std::log10(range.low)));; ++power) {
    for (const double digit : {1.0, 2.0, 5.0}) {
      const double value = digit * std::pow(10.0, power);
      if (value > range.high) return ticks.size() < 3 ? std::vector<Tick>() : ticks;
      if (value < std::max(range.low, kFinest)) continue;
      const double y = scale.Y(value);
      if (last_y - y < spacing) continue;
      ticks.push_back({value, TextOf(value, std::min(value, 1.0), value, form)});
      last_y = y;
    }
  }
}

std::vector<Tick> PercentTicks(const ValueScale& scale, double spacing, double base) {
  const ValueRange& range = scale.Range();
  const double low = (range.low / base - 1) * 100;
  const double high = (range.high / base - 1) * 100;
  const double height = std::abs(scale.Y(range.low) - scale.Y(range.high));
  if (height < 1 || !(low < high)) return {};
  const double step = RoundStep(std::max((high - low) / std::max(1.0, height / spacing), kFinest));
  std::vector<Tick> ticks;
  for (double at = std::ceil(low / step - 1e-9);
       at * step <= high + step * 1e-9 && static_cast<int64_t>(ticks.size()) < kMostTicks; ++at) {
    const double percent = at * step + 0.0;
    const std::string sign = percent > 0 ? "+" : "";
    ticks.push_back({base * (1 + percent / 100), sign + Written(percent, DecimalsOf(step)) + "％"});
  }
  return ticks;
}

/// What stretches of bars an axis of dates can be parted into.
enum class Stretch { kDay, kMonth, kYear };
struct DateStep {
  Stretch stretch;
  int32_t count;
};
constexpr std::array kDateSteps = {
    DateStep{Stretch::kMonth, 1}, DateStep{Stretch::kMonth, 2},  DateStep{Stretch::kMonth, 3},
    DateStep{Stretch::kMonth, 6}, DateStep{Stretch::kYear, 1},   DateStep{Stretch::kYear, 2},
    DateStep{Stretch::kYear, 5},  DateStep{Stretch::kYear, 10},  DateStep{Stretch::kYear, 20},
    DateStep{Stretch::kYear, 50}, DateStep{Stretch::kYear, 100},
};
constexpr double kDaysOfMonth = 30.44;
// Over fewer days than this, months say too little.
constexpr int32_t kFewDays = 75;

int32_t StretchOf(base::Date date, const DateStep& step) {
  const int32_t number =
      step.stretch == Stretch::kYear ? date.Year() : date.Year() * 12 + date.Month() - 1;
  return number / step.count;
}

std::vector<DateTick> DayTicks(const base::BarsView& bars, const BarScale& scale, double spacing) {
  std::vector<DateTick> ticks;
  const BarRange& range = scale.Range();
  const auto step = std::max(1, static_cast<int32_t>(std::ceil(spacing / scale.Pitch())));
  for (int32_t t = range.last; t >= range.first; t -= step) {
    ticks.push_back({t, ShortDate(bars.DateOf(t))});
  }
  std::ranges::reverse(ticks);
  return ticks;
}

}  // namespace

double RoundStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double step : kSteps) {
    // A step of four decimals at most can be written.
    const bool is_written = step != 2.5 || power >= 10 * kFinest;
    if (is_written && step * power >= least * (1 - 1e-9)) return step * power;
  }
  return power * 10;
}

std::vector<Tick> ValueTicks(const ValueScale& scale, double spacing, NumberForm form,
                             double base) {
  if (scale.Form() == ScaleForm::kPercent && base != 0) return PercentTicks(scale, spacing, base);
  if (scale.Form() == ScaleForm::kLogarithmic) {
    std::vector<Tick> ticks = DecadeTicks(scale, spacing, form);
    if (!ticks.empty()) return ticks;
    // Values that are equally far apart lie closer towards the top.
    ticks = RoundTicks(scale, spacing, form);
    std::vector<Tick> apart;
    for (Tick& tick : ticks) {
      if (!apart.empty() && scale.Y(apart.back().value) - scale.Y(tick.value) < spacing) continue;
      apart.push_back(std::move(tick));
    }
    return apart;
  }
  return RoundTicks(scale, spacing, form);
}

std::vector<Tick> LabelledTicks(std::span<const double> values, NumberForm form) {
  double largest = 0;
  int32_t decimals = 0;
  for (const double value : values) {
    largest = std::max(largest, std::abs(value));
    decimals = std::max(decimals, DecimalsOf(std::abs(value)));
  }
  std::vector<Tick> ticks;
  for (const double value : values) {
    ticks.push_back({value, TextOf(value, std::pow(10.0, -decimals), largest, form)});
  }
  return ticks;
}

std::vector<DateTick> DateTicks(const base::BarsView& bars, const BarScale& scale,
                                store::BarPeriod period, double spacing) {
  BarRange range = scale.Range();
  range.first = std::max(range.first, bars.First());
  range.last = std::min(range.last, bars.Count());
  if (range.Count() < 1 || scale.Pitch() <= 0) return {};
  const int32_t days = bars.DateOf(range.last).Serial() - bars.DateOf(range.first).Serial() + 1;
  if (period != store::BarPeriod::kMonth && days < kFewDays) return DayTicks(bars, scale, spacing);
  const double pixels_of_day = scale.Pitch() * range.Count() / days;
  const DateStep* chosen = &kDateSteps.back();
  for (const DateStep& step : kDateSteps) {
    if (period == store::BarPeriod::kMonth && step.stretch != Stretch::kYear) continue;
    const double months = step.stretch == Stretch::kYear ? 12 : 1;
    if (pixels_of_day * kDaysOfMonth * months * step.count < spacing) continue;
    chosen = &step;
    break;
  }
  std::vector<DateTick> ticks;
  double last_x = scale.X(range.first) - spacing;
  // The bar before shows whether the first one begins a month.
  int32_t before = StretchOf(bars.DateOf(std::max(bars.First(), range.first - 1)), *chosen);
  for (int32_t t = range.first; t <= range.last; ++t) {
    const base::Date date = bars.DateOf(t);
    const int32_t stretch = StretchOf(date, *chosen);
    if (stretch == before) continue;
    before = stretch;
    if (scale.X(t) - last_x < spacing * 0.9) continue;
    last_x = scale.X(t);
    ticks.push_back({t, period == store::BarPeriod::kMonth ? Year(date) : YearMonth(date)});
  }
  return ticks;
}

std::string TimeText(int32_t seconds) {
  const auto two = [](int32_t number) { return std::to_string(100 + number).substr(1); };
  return two(seconds / 3600) + ":" + two(seconds / 60 % 60);
}

std::string YearMonth(base::Date date) { return date.ToCompact().substr(2, 4); }

std::string Year(base::Date date) { return date.ToText().substr(0, 4); }

std::string ShortDate(base::Date date) { return date.ToText().substr(2); }

}  // namespace orin::chart
