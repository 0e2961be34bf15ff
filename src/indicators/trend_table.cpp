#include "indicators/indicator_tables.h"
#include "indicators/trend_columns.h"

namespace orin::indicators {

using base::PriceFields;

namespace {

// A factor of 1 puts the stop onto the extreme at once; a step of 0 keeps the factor as it is.
constexpr std::array<Parameter, kMaximumParameters> kParabolic = {
    {{"initial", 1, 100}, {"step", 0, 100}, {"maximum", 1, 100}}};

// No close falls by more than the whole of its price.
constexpr Parameter kRate = {"rate", 1, 100};
constexpr std::array<Parameter, kMaximumParameters> kKagiTurns = {{{"n"}, kRate}};
constexpr std::array<Parameter, kMaximumParameters> kKagiValue = {
    {{"n"}, kRate, {"turn", -1000, 0}}};

constexpr Indicator kTrendIndicators[] = {
    {"parabolic_sar", kParabolic, Unit::kPrice, PriceFields::kRange, WholeHistory, ParabolicSar},
    {"kagi_value", kKagiValue, Unit::kPrice, PriceFields::kClose, RestOfSpan, KagiValue},
    {"kagi_turns", kKagiTurns, Unit::kBars, PriceFields::kClose, RestOfSpan, KagiTurns},
};

}  // namespace

std::span<const Indicator> TrendIndicators() { return kTrendIndicators; }

}  // namespace orin::indicators
