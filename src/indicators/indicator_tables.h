#pragma once

#include <array>
#include <span>

#include "indicators/indicator.h"

namespace orin::indicators {

// The rows of the table of indicators, a group a file.
std::span<const Indicator> BarIndicators();  // prices, sums, averages, extremes, oscillators
std::span<const Indicator>
AverageIndicators();  // rank correlation, bands, lines of balance, energies
std::span<const Indicator> TrendIndicators();  // reversals: parabolic, kagi

// Bars before the examined one that a value depends on; p[0] is the first parameter.
inline int64_t NoHistory(const Parameters&) { return 0; }
inline int64_t OneBar(const Parameters&) { return 1; }
inline int64_t RestOfSpan(const Parameters& p) { return int64_t{p[0]} - 1; }
inline int64_t SpanAndBarBefore(const Parameters& p) { return p[0]; }
inline int64_t SpanOfSpans(const Parameters& p) { return int64_t{p[0]} + p[1] - 2; }
inline int64_t SpanOfSpansAndBarBefore(const Parameters& p) { return int64_t{p[0]} + p[1] - 1; }
inline int64_t WholeHistory(const Parameters&) { return Indicator::kUnbounded; }

inline constexpr std::array<Parameter, kMaximumParameters> kNoParameters = {};
inline constexpr std::array<Parameter, kMaximumParameters> kPeriod = {{{"n"}}};

}  // namespace orin::indicators
