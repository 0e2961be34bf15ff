#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "base/bars.h"
#include "base/currency.h"
#include "base/value_column.h"
#include "kernels/kernels.h"

namespace orin::indicators {

inline constexpr size_t kMaximumParameters = 4;
/// Parameter values in the order of the table, the unused ones 0. Periods count bars.
using Parameters = std::array<int32_t, kMaximumParameters>;

/// Where values of bars go: bar `origin` to the first of the places, whose owner keeps them and
/// has filled them with kNoValue.
class ColumnSink {
 public:
  ColumnSink(base::Currency* values, int64_t origin) : values_(values), origin_(origin) {}

  void Put(int32_t t, base::Currency value) const { values_[t - origin_] = value; }
  /// Leaves the place without a value for nullopt.
  void Put(int32_t t, std::optional<base::Currency> value) const {
    if (value) Put(t, *value);
  }
  /// The place of bar t, behind which those of the later bars follow.
  [[nodiscard]] base::Currency* PlaceOf(int32_t t) const { return values_ + (t - origin_); }

 private:
  base::Currency* values_;
  int64_t origin_;
};

/// What an indicator routine is to compute: the values at the bars first..last, at least one.
/// Every parameter is within its limits and bars.First() <= first - history (not for indicators
/// that shorten), so a routine reads bars without further checks.
struct ColumnTask {
  base::BarsView bars;
  Parameters parameters;
  int32_t first;
  int32_t last;
  ColumnSink sink;
  /// The fast loops for what they can do; null: the plain ones alone. Both give the same.
  const kernels::Kernels* kernels = nullptr;
};

struct Parameter {
  std::string_view name;
  int32_t minimum = 1;
  int32_t maximum = std::numeric_limits<int32_t>::max();
};

enum class Unit : uint8_t { kPrice, kVolume, kPercent, kBars, kDate };

/// What an indicator does where its span reaches before the first bar.
enum class Span : uint8_t { kWhole, kShortens };

/// One row of the table of indicators.
struct Indicator {
  static constexpr int64_t kUnbounded = std::numeric_limits<int64_t>::max();

  std::string_view name;
  std::array<Parameter, kMaximumParameters> parameters;  // those with a name
  Unit output;
  /// The prices the routine reads. Volume and date are always there.
  base::PriceFields reads;
  /// How many bars before the examined one its value depends on, tested ones included: the
  /// first usable bar is history + 1. kUnbounded: on all bars before it, and the routine
  /// itself finds the first usable one.
  int64_t (*history)(const Parameters&);
  void (*compute)(const ColumnTask&);
  Span span = Span::kWhole;

  [[nodiscard]] size_t ParameterCount() const;
  [[nodiscard]] bool Accepts(const Parameters& values) const;
};

/// All indicators.
std::span<const Indicator> Indicators();
/// nullptr for an unknown name.
const Indicator* FindIndicator(std::string_view name);

/// The values at the bars first..last into `sink`. Bars that do not exist, and bars that have too
/// little history before them, get none; `span` kWhole also refuses spans that would be shortened.
void ComputeInto(const Indicator& indicator, base::BarsView bars, const Parameters& parameters,
                 int64_t first, int64_t last, Span span, const ColumnSink& sink);

/// The same into `out`, which is reset to the places first..last.
void ComputeColumn(const Indicator& indicator, base::BarsView bars, const Parameters& parameters,
                   int32_t first, int32_t last, base::ValueColumn& out);

/// The value at the bar Count() + offset (offset <= 0); `fallback` where there is none.
base::Currency ComputeValue(const Indicator& indicator, base::BarsView bars,
                            const Parameters& parameters, int32_t offset, base::Currency fallback);

}  // namespace orin::indicators
