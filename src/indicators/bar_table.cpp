#include "indicators/columns.h"
#include "indicators/indicator_tables.h"

namespace orin::indicators {

using base::PriceFields;

namespace {

constexpr std::array<Parameter, kMaximumParameters> kSumThenPeriod = {{{"s"}, {"n"}}};
constexpr std::array<Parameter, kMaximumParameters> kStochasticD = {{{"k"}, {"d"}}};
constexpr std::array<Parameter, kMaximumParameters> kAdx = {{{"m"}, {"n"}}};

constexpr Indicator kBarIndicators[] = {
    {"open", kNoParameters, Unit::kPrice, PriceFields::kOpen, NoHistory, Open},
    {"high", kNoParameters, Unit::kPrice, PriceFields::kHigh, NoHistory, High},
    {"low", kNoParameters, Unit::kPrice, PriceFields::kLow, NoHistory, Low},
    {"close", kNoParameters, Unit::kPrice, PriceFields::kClose, NoHistory, Close},
    {"volume", kNoParameters, Unit::kVolume, PriceFields::kNone, NoHistory, Volume},
    {"date", kNoParameters, Unit::kDate, PriceFields::kNone, NoHistory, SerialDate},
    {"close_change", kNoParameters, Unit::kPrice, PriceFields::kClose, OneBar, CloseChange},

    {"open_sum", kPeriod, Unit::kPrice, PriceFields::kOpen, RestOfSpan, OpenSum},
    {"high_sum", kPeriod, Unit::kPrice, PriceFields::kHigh, RestOfSpan, HighSum},
    {"low_sum", kPeriod, Unit::kPrice, PriceFields::kLow, RestOfSpan, LowSum},
    {"close_sum", kPeriod, Unit::kPrice, PriceFields::kClose, RestOfSpan, CloseSum},
    {"volume_sum", kPeriod, Unit::kVolume, PriceFields::kNone, RestOfSpan, VolumeSum},
    {"moving_average", kPeriod, Unit::kPrice, PriceFields::kClose, RestOfSpan, MovingAverage},
    {"volume_moving_average", kPeriod, Unit::kVolume, PriceFields::kNone, RestOfSpan,
     VolumeMovingAverage},
    {"deviation_rate", kPeriod, Unit::kPercent, PriceFields::kClose, RestOfSpan, DeviationRate},

    {"highest_high", kPeriod, Unit::kPrice, PriceFields::kHigh, RestOfSpan, HighestHighValue,
     Span::kShortens},
    {"highest_high_volume", kPeriod, Unit::kVolume, PriceFields::kHigh, RestOfSpan,
     HighestHighVolume, Span::kShortens},
    {"highest_high_age", kPeriod, Unit::kBars, PriceFields::kHigh, RestOfSpan, HighestHighAge,
     Span::kShortens},
    {"lowest_low", kPeriod, Unit::kPrice, PriceFields::kLow, RestOfSpan, LowestLowValue,
     Span::kShortens},
    {"lowest_low_volume", kPeriod, Unit::kVolume, PriceFields::kLow, RestOfSpan, LowestLowVolume,
     Span::kShortens},
    {"lowest_low_age", kPeriod, Unit::kBars, PriceFields::kLow, RestOfSpan, LowestLowAge,
     Span::kShortens},
    {"highest_close", kPeriod, Unit::kPrice, PriceFields::kClose, RestOfSpan, HighestCloseValue,
     Span::kShortens},
    {"lowest_close", kPeriod, Unit::kPrice, PriceFields::kClose, RestOfSpan, LowestCloseValue,
     Span::kShortens},

    {"highest_volume", kPeriod, Unit::kVolume, PriceFields::kNone, RestOfSpan, HighestVolume},
    {"lowest_volume", kPeriod, Unit::kVolume, PriceFields::kNone, RestOfSpan, LowestVolume},
    {"highest_volume_sum", kSumThenPeriod, Unit::kVolume, PriceFields::kNone, SpanOfSpans,
     HighestVolumeSum},
    {"lowest_volume_sum", kSumThenPeriod, Unit::kVolume, PriceFields::kNone, SpanOfSpans,
     LowestVolumeSum},

    {"volume_of_rises", kPeriod, Unit::kVolume, PriceFields::kClose, SpanAndBarBefore,
     VolumeOfRises},
    {"volume_of_falls", kPeriod, Unit::kVolume, PriceFields::kClose, SpanAndBarBefore,
     VolumeOfFalls},
    {"sum_of_rises", kPeriod, Unit::kPrice, PriceFields::kClose, SpanAndBarBefore, SumOfRises},
    {"sum_of_falls", kPeriod, Unit::kPrice, PriceFields::kClose, SpanAndBarBefore, SumOfFalls},
    {"count_of_rises", kPeriod, Unit::kBars, PriceFields::kClose, SpanAndBarBefore, CountOfRises},
    {"count_of_falls", kPeriod, Unit::kBars, PriceFields::kClose, SpanAndBarBefore, CountOfFalls},

    {"rsi", kPeriod, Unit::kPercent, PriceFields::kClose, SpanAndBarBefore, Rsi},
    {"volume_ratio", kPeriod, Unit::kPercent, PriceFields::kClose, WholeHistory, VolumeRatio},
    {"stochastic_k", kPeriod, Unit::kPercent, PriceFields::kRange | PriceFields::kClose, RestOfSpan,
     StochasticK},
    {"stochastic_d", kStochasticD, Unit::kPercent, PriceFields::kRange | PriceFields::kClose,
     SpanOfSpansAndBarBefore, StochasticD},
    {"plus_di", kPeriod, Unit::kPercent, PriceFields::kRange | PriceFields::kClose,
     SpanAndBarBefore, PlusDi},
    {"minus_di", kPeriod, Unit::kPercent, PriceFields::kRange | PriceFields::kClose,
     SpanAndBarBefore, MinusDi},
    {"adx", kAdx, Unit::kPercent, PriceFields::kRange | PriceFields::kClose,
     SpanOfSpansAndBarBefore, Adx},
};

}  // namespace

std::span<const Indicator> BarIndicators() { return kBarIndicators; }

}  // namespace orin::indicators
