#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "indicators/close_bars.h"
#include "indicators/kagi.h"
#include "indicators/parabolic.h"
#include "indicators/point_and_figure.h"

namespace orin::indicators {
namespace {

using base::BarColumns;
using base::BarsView;
using base::Currency;
using support::BarsOf;
using support::kHole;
using support::Value;

/// Real closes: a fall, a rise of 19 % and another fall.
const std::vector<double> kSwings = {68.26, 67.79, 67.27, 64.50, 64.34, 63.47, 64.72, 64.99, 62.61,
                                     67.52, 67.72, 68.21, 69.25, 69.36, 71.48, 71.57, 72.35, 74.67,
                                     72.91, 71.91, 70.25, 70.59, 71.05, 71.75, 71.14, 69.36, 67.85,
                                     67.99, 66.83, 65.19, 63.29, 62.67, 65.54};

TEST(ChartStructures, KagiLineTurnsAtTheExtremesAndEndsAtTheNewestOne) {
  std::vector<double> closes = kSwings;
  closes.insert(closes.begin(), kHole);
  closes.insert(closes.begin() + 11, kHole);  // after the close that turns the line at 62.61
  const BarColumns columns = BarsOf(closes);
  const KagiLine line = BuildKagi(BarsView(columns), 7);
  // 63.47 is 7.02 % below 68.26, 67.52 7.84 % above 62.61, 69.36 7.11 % below 74.67, and 65.54
  // only 4.58 % above 62.67.
  const std::vector<KagiPoint> expected = {
      {2, Value(68.26)}, {10, Value(62.61)}, {20, Value(74.67)}, {34, Value(62.67)}};
  EXPECT_EQ(line.points, expected);
  EXPECT_EQ(line.turns, 2);
  EXPECT_FALSE(line.rising);

  const KagiLine before_any_move = BuildKagi(BarsView(columns).Until(6), 7);
  EXPECT_TRUE(before_any_move.points.empty());
  EXPECT_EQ(before_any_move.turns, 0);
  EXPECT_TRUE(BuildKagi(BarsView(columns), 0).points.empty());
}

TEST(ChartStructures, KagiTakesNoStartValueForAClose) {
  // Beyond the value the lowest close starts from, and prices there is no percentage of.
  for (const double close : {1999999999.0, 0.0, -5.0}) {
    const BarColumns columns = BarsOf({close, close, close});
    EXPECT_TRUE(BuildKagi(BarsView(columns), 7).points.empty()) << close;
  }
}

TEST(ChartStructures, ParabolicPathBeginsAtTheThirdBarWithDataAndShowsTheSide) {
  const BarColumns columns = BarsOf({10, kHole, 12, 11, 10, kHole, 13, 14, 15});
  const ParabolicFactors factors = {Value(0.025), Value(0.01), Value(0.2)};
  const ParabolicPath path = BuildParabolic(BarsView(columns), factors);
  EXPECT_EQ(path.first_bar, 4);
  // 12 + 0.025 (10 - 12) = 11.95 lies within bar 3; touched at 13, the low 10 begins the rise,
  // at first held by the low of bar 5; then 10 + 0.035 (14 - 10).
  const std::vector<ParabolicStop> expected = {
      {Value(12), StopSide::kSell}, {Value(12), StopSide::kSell}, {Value(12), StopSide::kSell},
      {Value(10), StopSide::kBuy},  {Value(10), StopSide::kBuy},  {Value(10.14), StopSide::kBuy}};
  EXPECT_EQ(path.stops, expected);

  EXPECT_TRUE(BuildParabolic(BarsView(columns).Until(3), factors).stops.empty());
  for (const ParabolicFactors& wrong : {ParabolicFactors{Value(0), Value(0.01), Value(0.2)},
                                        ParabolicFactors{Value(0.02), Value(-0.01), Value(0.2)},
                                        ParabolicFactors{Value(0.02), Value(0.01), Value(1.01)}}) {
    EXPECT_TRUE(BuildParabolic(BarsView(columns), wrong).stops.empty());
  }
}

TEST(ChartStructures, BoxIsTheRateOfTheCloseButNeverBelowOneHundredth) {
  struct Case {
    double close;
    int32_t rate;
    std::optional<Currency> expected;
  };
  const Case kCases[] = {
      {100, 1, Value(1)},          {65.54, 3, Value(1.9662)}, {12.3450, 1, Value(0.1234)},
      {12.3550, 1, Value(0.1236)}, {0.99, 1, Value(0.01)},    {1.01, 1, Value(0.0101)},
      {1, 1, Value(0.01)},         {0, 5, Value(0.01)},       {100, 250, Value(250)},
      {100, 0, std::nullopt},      {100, -1, std::nullopt},   {900000000000000, 200, std::nullopt},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(BoxSize(Value(c.close), c.rate), c.expected) << c.close << " " << c.rate;
  }
}

TEST(ChartStructures, PointAndFigureTurnsOnlyByTheCountOfBoxes) {
  const BarColumns columns = BarsOf(kSwings);
  const auto figure = BuildPointAndFigure(BarsView(columns), 100, 3, 3);
  ASSERT_TRUE(figure);
  // In boxes of 1.9662: 34.7 first, 32.8 at bar 4, 31.8 at bar 9; 35.2 at bar 13 is the third box
  // up and 38.0 (37.98) at bar 18 not yet the 38th; 33.99 at bar 29 the third down.
  const std::vector<PointAndFigureColumn> expected = {
      {false, 32, 34, 4, 9}, {true, 33, 37, 13, 18}, {false, 32, 36, 29, 32}};
  EXPECT_EQ(figure->columns, expected);
  EXPECT_EQ(figure->points, 3 + 5 + 5);
  EXPECT_EQ(figure->box, Value(1.9662));
  EXPECT_EQ(figure->highest_close, Value(74.67));
  EXPECT_EQ(figure->lowest_close, Value(62.61));

  // Four boxes: 35 is not enough, 36 at bar 15 is; nor is 34 then on the way down.
  const auto slower = BuildPointAndFigure(BarsView(columns), 100, 3, 4);
  const std::vector<PointAndFigureColumn> later = {
      {false, 32, 34, 4, 9}, {true, 33, 37, 15, 18}, {false, 32, 36, 31, 32}};
  EXPECT_EQ(slower->columns, later);
}

TEST(ChartStructures, PointAndFigureFillsABoxAtItsVeryPrice) {
  // A box of 1: the closes are at the prices themselves, and the newest close is one without data
  // before the end.
  const BarColumns columns = BarsOf({50, 99.5, 100, 101, kHole, 103.9, 101, 100, kHole});
  const auto figure = BuildPointAndFigure(BarsView(columns), 8, 1, 3);
  ASSERT_TRUE(figure);
  EXPECT_EQ(figure->box, Value(1));
  const std::vector<PointAndFigureColumn> expected = {{true, 100, 103, 3, 6},
                                                      {false, 100, 102, 8, 8}};
  EXPECT_EQ(figure->columns, expected);
  EXPECT_FALSE(BuildPointAndFigure(BarsView(columns), 1, 1, 3));
  EXPECT_FALSE(BuildPointAndFigure(BarsView(columns), 8, 1, 0));
}

TEST(ChartStructures, PointAndFigureKeepsTheNewestThousandColumns) {
  std::vector<double> closes;
  for (int i = 0; i < 1250; ++i) closes.insert(closes.end(), {104, 100});
  const BarColumns columns = BarsOf(closes);
  const auto figure = BuildPointAndFigure(BarsView(columns), 2500, 1, 3);
  ASSERT_TRUE(figure);
  ASSERT_EQ(figure->columns.size(), 1000U);
  EXPECT_EQ(figure->columns.front(), (PointAndFigureColumn{true, 101, 104, 1501, 1501}));
  EXPECT_EQ(figure->columns.back(), (PointAndFigureColumn{false, 100, 103, 2500, 2500}));
  EXPECT_EQ(figure->points, 4000);
}

}  // namespace
}  // namespace orin::indicators
