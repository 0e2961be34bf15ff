#include "chart/scales.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orin::chart {
namespace {

TEST(BarScale, EveryPixelOfABarLeadsBackToIt) {
  for (const int32_t width : {1, 7, 99, 1600}) {
    for (const BarRange& range : {BarRange{1, 1, 0}, BarRange{5, 24, 3}, BarRange{1, 2500, 26}}) {
      const BarScale scale(range, 6, width);
      for (int32_t t = range.first; t < range.first + range.Places(); ++t) {
        EXPECT_EQ(scale.BarAt(scale.X(t)), t) << width;
      }
      EXPECT_EQ(scale.BarAt(6), range.first);
      EXPECT_FALSE(scale.BarAt(5.9));
      EXPECT_FALSE(scale.BarAt(6 + width));
    }
  }
  EXPECT_FALSE(BarScale({1, 0, 0}, 0, 100).BarAt(5));
  EXPECT_FALSE(BarScale({1, 10, 0}, 0, 0).BarAt(0));
}

TEST(ValueScale, ValuesComeBackFromTheirPlaces) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> part(0, 1);
  for (const ScaleForm form : {ScaleForm::kLinear, ScaleForm::kLogarithmic, ScaleForm::kPercent}) {
    for (const ValueRange& range : {ValueRange{0.0001, 0.0003}, ValueRange{190, 310},
                                    ValueRange{0.0001, 9e11}, ValueRange{1, 1e13}}) {
      const ValueScale scale(range, form, 20, 400);
      EXPECT_NEAR(scale.Y(range.high), 20.5, 1e-6);
      EXPECT_NEAR(scale.Y(range.low), 419.5, 1e-6);
      for (int i = 0; i < 50; ++i) {
        const double value = range.low + (range.high - range.low) * std::pow(part(random), 3);
        EXPECT_NEAR(scale.ValueAt(scale.Y(value)) / value, 1, 1e-6);
        const double y = 20.5 + part(random) * 399;
        EXPECT_NEAR(scale.Y(scale.ValueAt(y)), y, 1e-6);
      }
    }
  }
}

TEST(ValueScale, LiesOnItsSideFromLeftToRight) {
  const ValueScale scale = ValueScale::Across({-5, 5}, 10, 101);
  EXPECT_NEAR(scale.Y(-5), 10.5, 1e-9);
  EXPECT_NEAR(scale.Y(5), 110.5, 1e-9);
  EXPECT_NEAR(scale.ValueAt(scale.Y(1.25)), 1.25, 1e-9);
}

TEST(ValueScale, ImpossibleValuesAndSizesStayWithinWhatPaintersTake) {
  const ValueScale log({1, 10}, ScaleForm::kLogarithmic, 0, 100);
  EXPECT_GT(log.Y(0), 1e5);
  EXPECT_GT(log.Y(-3), 1e5);
  EXPECT_EQ(ValueScale({-1, 10}, ScaleForm::kLogarithmic, 0, 100).Form(), ScaleForm::kLinear);
  const ValueScale narrow({1, 1 + 1e-12}, ScaleForm::kLinear, 0, 6000);
  EXPECT_LE(std::abs(narrow.Y(9e11)), 1e6);
  for (const int32_t height : {0, 1}) {
    const ValueScale flat({1, 2}, ScaleForm::kLinear, 7, height);
    EXPECT_EQ(flat.Y(1), flat.Y(2));
    EXPECT_EQ(flat.ValueAt(3), 1);
  }
}

TEST(ValueExtent, AlwaysGivesARange) {
  EXPECT_EQ(ValueExtent().Range(0.1), (ValueRange{0, 1}));
  ValueExtent extent;
  extent.Add(std::nan(""));
  EXPECT_TRUE(extent.IsEmpty());
  extent.Add(100);
  const ValueRange one = extent.Range(0.1);
  EXPECT_LT(one.low, 100);
  EXPECT_GT(one.high, 100);
  extent.Add(200);
  EXPECT_EQ(extent.Range(0.1), (ValueRange{90, 210}));
  const ValueRange log = extent.Range(0.5, ScaleForm::kLogarithmic);
  EXPECT_NEAR(log.low, 100 / std::sqrt(2), 1e-9);
  ValueExtent smallest;
  smallest.Add(0.0001);
  EXPECT_GT(smallest.Range(0, ScaleForm::kLogarithmic).low, 0);
  ValueExtent zero;
  zero.Add(0);
  EXPECT_LT(zero.Range(0).low, zero.Range(0).high);
}

}  // namespace
}  // namespace orin::chart
