#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "indicators/bar_table.h"
#include "indicators/indicator.h"

namespace orin::indicators {
namespace {

using base::BarColumns;
using base::BarsView;
using base::Currency;

/// `bars` with every price and volume that exists multiplied.
BarColumns Scaled(BarColumns bars, int64_t price_factor, int64_t volume_factor) {
  const auto scale = [](std::vector<Currency>& column, int64_t factor) {
    for (Currency& value : column) {
      if (value != base::kNoDataVolume) value = Currency::FromRaw(value.Raw() * factor);
    }
  };
  for (auto* column : {&bars.open, &bars.high, &bars.low, &bars.close}) {
    scale(*column, price_factor);
  }
  scale(bars.volume, volume_factor);
  return bars;
}

/// The days without data keep coming in RandomBars; here is a stretch that has none.
BarColumns WithoutGaps(BarColumns bars) {
  for (size_t i = 1; i < bars.Size(); ++i) {
    if (bars.At(i).HasData()) continue;
    base::Bar bar = bars.At(i - 1);
    bar.date = bars.dates[i];
    if (bar.HasData()) bars.Put(i, bar);
  }
  return bars;
}

std::vector<Currency> Compute(const Indicator& indicator, const BarsView& bars,
                              const Parameters& parameters, int32_t first,
                              const kernels::Kernels* kernels) {
  std::vector<Currency> values(static_cast<size_t>(bars.Count() - first + 1), base::kNoValue);
  indicator.compute(
      {bars, parameters, first, bars.Count(), ColumnSink(values.data(), first), kernels});
  return values;
}

class KernelAgreement : public testing::TestWithParam<kernels::Level> {};

// The plain routines are exact by construction and slow; the fast ones must give their digits on
// whatever bars there are, whether they take them on or not.
TEST_P(KernelAgreement, FastAndPlainRoutinesGiveTheSame) {
  int values = 0;
  for (uint32_t seed = 1; seed <= 12; ++seed) {
    std::mt19937 random(seed);
    const int32_t count = seed % 3 == 0 ? 700 : 90;
    const BarColumns drawn = support::RandomBars(seed, count);
    const BarColumns markets[] = {drawn, WithoutGaps(drawn), Scaled(drawn, 3, 1'000'000),
                                  Scaled(drawn, 900'000'000, 1), Scaled(WithoutGaps(drawn), -7, 1)};
    for (const BarColumns& columns : markets) {
      const BarsView bars(columns);
      for (const Indicator& indicator : Indicators()) {
        Parameters parameters = {};
        for (size_t i = 0; i < indicator.ParameterCount(); ++i) {
          const Parameter& limits = indicator.parameters[i];
          const int32_t least = std::max(limits.minimum, -3);
          const int32_t most = std::min(limits.maximum, seed % 2 == 0 ? 5 : 40);
          parameters[i] =
              std::uniform_int_distribution<int32_t>(least, std::max(least, most))(random);
        }
        const int64_t history = indicator.history(parameters);
        const bool shortens = indicator.span == Span::kShortens || history == Indicator::kUnbounded;
        const int64_t first = shortens ? 1 : history + 1;
        if (first > count) continue;
        const auto start = static_cast<int32_t>(first);
        SCOPED_TRACE(std::string(indicator.name) + ", seed " + std::to_string(seed));
        const auto plain = Compute(indicator, bars, parameters, start, nullptr);
        const auto fast = Compute(indicator, bars, parameters, start, GetParam().kernels);
        for (size_t i = 0; i < plain.size(); ++i) {
          ASSERT_EQ(fast[i].Raw(), plain[i].Raw()) << "bar " << start + static_cast<int32_t>(i);
          values += plain[i] != base::kNoValue ? 1 : 0;
        }
      }
    }
  }
  EXPECT_GT(values, 300'000);
}

INSTANTIATE_TEST_SUITE_P(Levels, KernelAgreement,
                         testing::ValuesIn(kernels::Levels().begin(), kernels::Levels().end()),
                         [](const auto& level) { return "Level" + std::to_string(level.index); });

}  // namespace
}  // namespace orin::indicators
