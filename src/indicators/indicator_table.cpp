#include "indicators/columns.h"

namespace orin::indicators {

namespace {

// Bars before the examined one; p[0] is the first parameter.
int64_t Nothing(const Parameters&) { return 0; }
int64_t OneBar(const Parameters&) { return 1; }
int64_t RestOfSpan(const Parameters& p) { return int64_t{p[0]} - 1; }
int64_t SpanAndBarBefore(const Parameters& p) { return p[0]; }
int64_t SpanOfSpans(const Parameters& p) { return int64_t{p[0]} + p[1] - 2; }
int64_t SpanOfSpansAndBarBefore(const Parameters& p) { return int64_t{p[0]} + p[1] - 1; }
int64_t Unbounded(const Parameters&) { return Indicator::kUnbounded; }

constexpr std::array<Parameter, kMaximumParameters> kNone = {};
constexpr std::array<Parameter, kMaximumParameters> kPeriod = {{{"n"}}};
constexpr std::array<Parameter, kMaximumParameters> kSumThenPeriod = {{{"s"}, {"n"}}};
constexpr std::array<Parameter, kMaximumParameters> kStochasticD = {{{"k"}, {"d"}}};
constexpr std::array<Parameter, kMaximumParameters> kAdx = {{{"m"}, {"n"}}};

constexpr Indicator kIndicators[] = {
    {"open", kNone, Unit::kPrice, Nothing, Open},
    {"high", kNone, Unit::kPrice, Nothing, High},
    {"low", kNone, Unit::kPrice, Nothing, Low},
    {"close", kNone, Unit::kPrice, Nothing, Close},
    {"volume", kNone, Unit::kVolume, Nothing, Volume},
    {"date", kNone, Unit::kDate, Nothing, SerialDate},
    {"close_change", kNone, Unit::kPrice, OneBar, CloseChange},

    {"open_sum", kPeriod, Unit::kPrice, RestOfSpan, OpenSum},
    {"high_sum", kPeriod, Unit::kPrice, RestOfSpan, HighSum},
    {"low_sum", kPeriod, Unit::kPrice, RestOfSpan, LowSum},
    {"close_sum", kPeriod, Unit::kPrice, RestOfSpan, CloseSum},
    {"volume_sum", kPeriod, Unit::kVolume, RestOfSpan, VolumeSum},
    {"moving_average", kPeriod, Unit::kPrice, RestOfSpan, MovingAverage},
    {"volume_moving_average", kPeriod, Unit::kVolume, RestOfSpan, VolumeMovingAverage},
    {"deviation_rate", kPeriod, Unit::kPercent, RestOfSpan, DeviationRate},

    {"highest_high", kPeriod, Unit::kPrice, RestOfSpan, HighestHighValue, Span::kShortens},
    {"highest_high_volume", kPeriod, Unit::kVolume, RestOfSpan, HighestHighVolume, Span::kShortens},
    {"highest_high_age", kPeriod, Unit::kBars, RestOfSpan, HighestHighAge, Span::kShortens},
    {"lowest_low", kPeriod, Unit::kPrice, RestOfSpan, LowestLowValue, Span::kShortens},
    {"lowest_low_volume", kPeriod, Unit::kVolume, RestOfSpan, LowestLowVolume, Span::kShortens},
    {"lowest_low_age", kPeriod, Unit::kBars, RestOfSpan, LowestLowAge, Span::kShortens},
    {"highest_close", kPeriod, Unit::kPrice, RestOfSpan, HighestCloseValue, Span::kShortens},
    {"lowest_close", kPeriod, Unit::kPrice, RestOfSpan, LowestCloseValue, Span::kShortens},

    {"highest_volume", kPeriod, Unit::kVolume, RestOfSpan, HighestVolume},
    {"lowest_volume", kPeriod, Unit::kVolume, RestOfSpan, LowestVolume},
    {"highest_volume_sum", kSumThenPeriod, Unit::kVolume, SpanOfSpans, HighestVolumeSum},
    {"lowest_volume_sum", kSumThenPeriod, Unit::kVolume, SpanOfSpans, LowestVolumeSum},

    {"volume_of_rises", kPeriod, Unit::kVolume, SpanAndBarBefore, VolumeOfRises},
    {"volume_of_falls", kPeriod, Unit::kVolume, SpanAndBarBefore, VolumeOfFalls},
    {"sum_of_rises", kPeriod, Unit::kPrice, SpanAndBarBefore, SumOfRises},
    {"sum_of_falls", kPeriod, Unit::kPrice, SpanAndBarBefore, SumOfFalls},
    {"count_of_rises", kPeriod, Unit::kBars, SpanAndBarBefore, CountOfRises},
    {"count_of_falls", kPeriod, Unit::kBars, SpanAndBarBefore, CountOfFalls},

    {"rsi", kPeriod, Unit::kPercent, SpanAndBarBefore, Rsi},
    {"volume_ratio", kPeriod, Unit::kPercent, Unbounded, VolumeRatio},
    {"stochastic_k", kPeriod, Unit::kPercent, RestOfSpan, StochasticK},
    {"stochastic_d", kStochasticD, Unit::kPercent, SpanOfSpansAndBarBefore, StochasticD},
    {"plus_di", kPeriod, Unit::kPercent, SpanAndBarBefore, PlusDi},
    {"minus_di", kPeriod, Unit::kPercent, SpanAndBarBefore, MinusDi},
    {"adx", kAdx, Unit::kPercent, SpanOfSpansAndBarBefore, Adx},
};

}  // namespace

std::span<const Indicator> Indicators() { return kIndicators; }

}  // namespace orin::indicators
