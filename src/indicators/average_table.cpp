#include "indicators/average_columns.h"
#include "indicators/indicator_tables.h"

namespace orin::indicators {

using base::PriceFields;

namespace {

using ParameterList = std::array<Parameter, kMaximumParameters>;

constexpr ParameterList kShortAndLong = {{{"s"}, {"l"}}};
constexpr ParameterList kRankedPeriod = {{{"n", 2}}};
constexpr ParameterList kPeriodAndDeviations = {{{"n"}, {"k", -3, 3}}};
constexpr ParameterList kPeriodAndPerCent = {{{"n"}, {"r", -999, 999}}};
constexpr ParameterList kBaseConversionShift = {{{"b"}, {"c"}, {"s"}}};
constexpr ParameterList kShiftAndPeriod = {{{"s"}, {"n"}}};
constexpr ParameterList kAverageAndSample = {{{"a", 2, 100}, {"m", 5, 200}}};

constexpr PriceFields kRangeAndClose = PriceFields::kRange | PriceFields::kClose;
constexpr PriceFields kOpenAndHigh = PriceFields::kOpen | PriceFields::kHigh;
constexpr PriceFields kOpenAndLow = PriceFields::kOpen | PriceFields::kLow;
constexpr PriceFields kHighAndClose = PriceFields::kHigh | PriceFields::kClose;
constexpr PriceFields kLowAndClose = PriceFields::kLow | PriceFields::kClose;

int64_t LongerSpanBeforeShift(const Parameters& p) {
  return int64_t{p[0] > p[1] ? p[0] : p[1]} + p[2] - 2;
}
int64_t SpanTwice(const Parameters& p) { return 2 * RestOfSpan(p); }

constexpr Indicator kAverageIndicators[] = {
    {"ema", kPeriod, Unit::kPrice, PriceFields::kClose, WholeHistory, ExponentialAverage},
    {"macd", kShortAndLong, Unit::kPrice, PriceFields::kClose, WholeHistory, AverageConvergence},
    {"rci", kRankedPeriod, Unit::kPercent, PriceFields::kClose, RestOfSpan, RankCorrelation},

    {"standard_deviation", kPeriod, Unit::kPrice, PriceFields::kClose, RestOfSpan,
     StandardDeviation},
    {"bollinger", kPeriodAndDeviations, Unit::kPrice, PriceFields::kClose, RestOfSpan,
     BollingerBand},
    {"deviation_band", kPeriodAndPerCent, Unit::kPrice, PriceFields::kClose, RestOfSpan,
     DeviationBand},

    {"base_line", kPeriod, Unit::kPrice, PriceFields::kRange, RestOfSpan, BalanceLine},
    {"conversion_line", kPeriod, Unit::kPrice, PriceFields::kRange, RestOfSpan, BalanceLine},
    {"leading_span_1", kBaseConversionShift, Unit::kPrice, PriceFields::kRange,
     LongerSpanBeforeShift, LeadingSpan1},
    {"leading_span_2", kShiftAndPeriod, Unit::kPrice, PriceFields::kRange, SpanOfSpans,
     LeadingSpan2},

    {"strong_energy", kPeriod, Unit::kPrice, kOpenAndHigh, RestOfSpan, StrongEnergy},
    {"weak_energy", kPeriod, Unit::kPrice, kOpenAndLow, RestOfSpan, WeakEnergy},
    {"strong_popularity", kPeriod, Unit::kPrice, kHighAndClose, SpanAndBarBefore, StrongPopularity},
    {"weak_popularity", kPeriod, Unit::kPrice, kLowAndClose, SpanAndBarBefore, WeakPopularity},
    {"plus_energy", kPeriod, Unit::kPrice, kRangeAndClose, SpanAndBarBefore, PlusEnergy},
    {"minus_energy", kPeriod, Unit::kPrice, kRangeAndClose, SpanAndBarBefore, MinusEnergy},

    {"volume_share", kPeriod, Unit::kPercent, PriceFields::kNone, RestOfSpan, VolumeShare},
    {"volume_share_sum", kPeriod, Unit::kPercent, PriceFields::kNone, SpanTwice, VolumeShareSum},
    {"mean_price", kAverageAndSample, Unit::kPrice, kRangeAndClose, SpanOfSpans, MeanPrice},
};

}  // namespace

std::span<const Indicator> AverageIndicators() { return kAverageIndicators; }

}  // namespace orin::indicators
