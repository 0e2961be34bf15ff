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

namespace orin::indicators {

inline constexpr size_t kMaximumParameters = 4;
/// Parameter values in the order of the table, the unused ones 0. Periods count bars.
using Parameters = std::array<int32_t, kMaximumParameters>;

/// Where values of bars go: bar `origin` to the first of the places, whose owner keeps them.
class ColumnSink {
 public:
  ColumnSink(base::Currency* values, uint8_t* valid, int64_t origin)
      : values_(values), valid_(valid), origin_(origin) {}

  void Put(int32_t t, base::Currency value) const {
    values_[t - origin_] = value;
    valid_[t - origin_] = 1;
  }
  /// Leaves the place without a value for nullopt.
  void Put(int32_t t, std::optional<base::Currency> value) const {
    if (value) Put(t, *value);
  }

 private:
  base::Currency* values_;
  uint8_t* valid_;
  int64_t origin_;
};

/// What an indicator routine is to compute: the values at the bars first..last, at least one.
/// Every parameter is at least its minimum and bars.First() <= first - history (not for
/// indicators that shorten), so a routine reads bars without further checks.
struct ColumnTask {
  base::BarsView bars;
  Parameters parameters;
  int32_t first;
  int32_t last;
  ColumnSink sink;
};

struct Parameter {
  std::string_view name;
  int32_t minimum = 1;
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
  /// How many bars before the examined one its value depends on, tested ones included.
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
