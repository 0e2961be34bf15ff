#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>
#include <vector>

#include "indicators/change_rate_correlation.h"
#include "indicators/close_bars.h"
#include "indicators/index_deviation.h"
#include "indicators/inverse_watch.h"
#include "indicators/kagi.h"
#include "indicators/parabolic.h"
#include "indicators/point_and_figure.h"
#include "indicators/volume_by_price.h"

namespace orin::indicators {
namespace {

using base::BarColumns;
using base::BarsView;
using base::Currency;
using support::BarsOf;
using support::kHole;
using support::Value;

TEST(ChartComparisons, InverseWatchLeavesOutBarsThatLackAnAverage) {
  const BarColumns columns = BarsOf({10, 12, kHole, 14, 16}, {100, 200, 0, 300, 500});
  const std::vector<InverseWatchPoint> expected = {
      {2, Value(150), Value(11)}, {3, Value(200), Value(12)}, {5, Value(400), Value(15)}};
  EXPECT_EQ(InverseWatchPoints(BarsView(columns), 2, 1, 9), expected);
  EXPECT_TRUE(InverseWatchPoints(BarsView(columns), 0, 1, 5).empty());
}

TEST(ChartComparisons, ChangeRatesAreCorrelatedBarByBar) {
  const BarColumns index = BarsOf({100, 110, 99, 108.9});
  const BarColumns stock = BarsOf({50, 60, 54, 54});
  const auto plain = CorrelateChangeRates(BarsView(stock), BarsView(index), 1, 100);
  const std::vector<ChangeRatePoint> expected = {
      {2, Value(10), Value(20)}, {3, Value(-10), Value(-10)}, {4, Value(10), Value(0)}};
  EXPECT_EQ(plain.points, expected);
  // Σxx = Σxy = 800 / 3, Σyy = 1400 / 3, both means 10 / 3; the root of 4 / 7
  EXPECT_EQ(plain.coefficient, Value(0.7559));
  ASSERT_TRUE(plain.line);
  EXPECT_EQ(plain.line->slope, Value(1));
  EXPECT_EQ(plain.line->intercept, Value(0));

  // averages of 105, 104.5, 103.95 and 55, 57, 54
  const auto smoothed = CorrelateChangeRates(BarsView(stock), BarsView(index), 2, 3);
  const std::vector<ChangeRatePoint> smooth = {{3, Value(-0.4762), Value(3.6364)},
                                               {4, Value(-0.5263), Value(-5.2632)}};
  EXPECT_EQ(smoothed.points, smooth);
  EXPECT_EQ(smoothed.coefficient, Value(1));
  const auto newest = CorrelateChangeRates(BarsView(stock), BarsView(index), 1, 1);
  EXPECT_EQ(newest.points, std::vector<ChangeRatePoint>{expected[2]});
  EXPECT_FALSE(newest.coefficient || newest.line);
}

TEST(ChartComparisons, EqualChangeRatesHaveNoCoefficient) {
  const BarColumns still = BarsOf({100, 100, 100, 100});
  const BarColumns stock = BarsOf({50, 60, kHole, 54});
  const auto upright = CorrelateChangeRates(BarsView(stock), BarsView(still), 1, 100);
  EXPECT_EQ(upright.points, (std::vector<ChangeRatePoint>{{2, Value(0), Value(20)}}));
  EXPECT_FALSE(upright.coefficient || upright.line);
  const BarColumns index = BarsOf({100, 110, 99, 108.9});
  const auto level = CorrelateChangeRates(BarsView(still), BarsView(index), 1, 100);
  EXPECT_EQ(level.points.size(), 3U);
  EXPECT_FALSE(level.coefficient);
  ASSERT_TRUE(level.line);
  EXPECT_EQ(level.line->slope, Value(0));
  EXPECT_EQ(CorrelationPeriodOf(2), CorrelationPeriod::kWeekly);
  EXPECT_FALSE(CorrelationPeriodOf(0) || CorrelationPeriodOf(4));
}

TEST(ChartComparisons, DeviationCountsFromTheFirstBarWithBothPrices) {
  const BarColumns stock = BarsOf({40, kHole, 50, 60, kHole, 55});
  const BarColumns index = BarsOf({900, 1000, 1000, 1100, 1100, 1000});
  const IndexDeviation deviation = DeviationFromIndex(BarsView(stock), BarsView(index), 2, 7);
  EXPECT_EQ(deviation.base_bar, 3);
  const std::vector<std::optional<double>> expected = {std::nullopt, 0,  9.0909,
                                                       std::nullopt, 10, std::nullopt};
  ASSERT_EQ(deviation.values.Size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    const Currency value = expected[i] ? Value(*expected[i]) : base::kNoValue;
    EXPECT_EQ(deviation.values.Data()[i], value) << i;
  }
  EXPECT_EQ(DeviationFromIndex(BarsView(stock), BarsView(index), 5, 5).base_bar, 0);
}

TEST(ChartComparisons, VolumeGoesToTheBandOfTheClose) {
  const BarColumns columns =
      BarsOf({99, 10, 12, kHole, 14, 15, 30, 20}, {900, 100, 200, 0, 300, 1000, 0, 400});
  // 15 is the edge of both; the 30 without volume widens nothing.
  const std::vector<PriceBand> expected = {{Value(10), Value(15), Value(600), Value(30)},
                                           {Value(15), Value(20), Value(1400), Value(70)}};
  EXPECT_EQ(VolumeByPrice(BarsView(columns), 2, 100, 2), expected);
  const std::vector<PriceBand> one = {{Value(12), Value(12), Value(200), Value(100)}};
  EXPECT_EQ(VolumeByPrice(BarsView(columns), 3, 4, 50), one);
  EXPECT_TRUE(VolumeByPrice(BarsView(columns), 4, 4, 2).empty());
  EXPECT_TRUE(VolumeByPrice(BarsView(columns), 2, 8, 0).empty());
  // Thirds of 10 to four decimals, and bands narrower than the last decimal.
  const auto thirds = VolumeByPrice(BarsView(columns), 2, 8, 3);
  ASSERT_EQ(thirds.size(), 3U);
  EXPECT_EQ(thirds[0].high, Value(13.3333));
  EXPECT_EQ(thirds[1].volume, Value(1300));
  const BarColumns narrow = BarsOf({1, 1.0001}, {1, 3});
  const auto bands = VolumeByPrice(BarsView(narrow), 1, 2, 4);
  EXPECT_EQ(bands.back().volume, Value(3));
}

TEST(ChartComparisons, GarbagePricesOverflowNothing) {
  constexpr int64_t kLowest = std::numeric_limits<int64_t>::min();
  constexpr int64_t kHighest = std::numeric_limits<int64_t>::max();
  std::mt19937 random(11);
  const auto any = [&random] {
    const int64_t choices[] = {kLowest, kHighest, 0, -10000, 10000, kHighest - 1};
    return Currency::FromRaw(choices[random() % 6]);
  };
  for (int market = 0; market < 50; ++market) {
    BarColumns columns;
    for (int i = 0; i < 30; ++i) columns.Append({{}, any(), any(), any(), any(), any()});
    const BarsView bars(columns);
    const KagiLine line = BuildKagi(bars, 7);
    EXPECT_EQ(line.points.size(), line.points.empty() ? 0U : static_cast<size_t>(line.turns) + 2);
    EXPECT_LE(BuildParabolic(bars, {}).stops.size(), 28U);
    const auto figure = BuildPointAndFigure(bars, 30, 1, 3);
    EXPECT_TRUE(!figure || figure->points >= 0);
    const auto rates = CorrelateChangeRates(bars, bars, 2, 30);
    EXPECT_TRUE(!rates.coefficient || *rates.coefficient <= Value(1));
    EXPECT_EQ(DeviationFromIndex(bars, bars, -3, 40).values.Size(), 44U);
    EXPECT_LE(VolumeByPrice(bars, -3, 40, 7).size(), 7U);
    EXPECT_LE(InverseWatchPoints(bars, 3, -3, 40).size(), 28U);
  }
}

}  // namespace
}  // namespace orin::indicators
