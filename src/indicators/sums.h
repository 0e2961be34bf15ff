#pragma once

#include <cstdint>

#include "base/bars.h"
#include "base/currency.h"
#include "indicators/rolling_sum.h"

namespace orin::indicators {

/// An exact sum of raw currency integers and how many there were.
struct CountedSum {
  base::Int128 raw = 0;
  int32_t count = 0;

  CountedSum& operator+=(const CountedSum& other) {
    raw += other.raw;
    count += other.count;
    return *this;
  }
  CountedSum& operator-=(const CountedSum& other) {
    raw -= other.raw;
    count -= other.count;
    return *this;
  }
};

// A field of a bar, as a type so that sums over it are compiled for it.
struct OpenField {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Open(t); }
};
struct HighField {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.High(t); }
};
struct LowField {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Low(t); }
};
struct CloseField {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Close(t); }
};
struct VolumeField {
  static base::Currency Of(const base::BarsView& bars, int32_t t) { return bars.Volume(t); }
};

/// The field of a bar as a sum of one; a bar without data adds nothing.
template <typename Field>
struct FieldTerm {
  base::BarsView bars;

  CountedSum operator()(int32_t t) const {
    if (!bars.HasData(t)) return {};
    return {Field::Of(bars, t).Raw(), 1};
  }
};

template <typename Field>
using FieldSum = RollingSum<CountedSum, FieldTerm<Field>>;

}  // namespace orin::indicators
