#include "chart/sample_chart.h"

#include <gtest/gtest.h>

#include "chart/draw_list_bytes.h"
#include "chart_fixture.h"

namespace orin::chart {
namespace {

using settings::ChartCommonColorSettings;
using store::BarPeriod;

constexpr PictureSize kSize{720, 240, 1};

TEST(SampleChart, EveryCommonColourIsSeen) {
  constexpr base::Color kOdd = {12, 34, 56};
  const std::string before = DrawListBytes(DrawSample(DefaultSettings(), {}, kSize));
  int number = 0;
  for (base::Color ChartCommonColorSettings::*color :
       {&ChartCommonColorSettings::ground, &ChartCommonColorSettings::text,
        &ChartCommonColorSettings::lines, &ChartCommonColorSettings::rise,
        &ChartCommonColorSettings::fall, &ChartCommonColorSettings::cross_hair,
        &ChartCommonColorSettings::trend_lines, &ChartCommonColorSettings::sub_chart_text,
        &ChartCommonColorSettings::sub_chart_lines, &ChartCommonColorSettings::credit_sales,
        &ChartCommonColorSettings::credit_purchases, &ChartCommonColorSettings::heading_ground,
        &ChartCommonColorSettings::heading_text}) {
    ++number;
    settings::Settings settings = DefaultSettings();
    settings.chart_common_color.*color = kOdd;
    EXPECT_NE(DrawListBytes(DrawSample(settings, {}, kSize)), before) << "colour " << number;
  }
}

TEST(SampleChart, ShowsTheSubChartOnItsBarsInEverySize) {
  settings::Settings settings = DefaultSettings();
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    for (const SubChart* sub_chart : SubChartsOf(period)) {
      for (const PictureSize& size : {kSize, PictureSize{1, 1, 1}, PictureSize{1440, 480, 2}}) {
        const DrawList picture = DrawSample(settings, {period, sub_chart->key}, size);
        EXPECT_EQ(picture.width, size.width);
        EXPECT_EQ(ProblemOf(picture), "") << sub_chart->name;
      }
      const std::string seen = Described(DrawSample(settings, {period, sub_chart->key}, kSize));
      EXPECT_NE(seen.find(sub_chart->Title()), std::string::npos) << sub_chart->name;
      EXPECT_NE(seen.find(store::PeriodName(period)), std::string::npos) << sub_chart->name;
    }
  }
}

}  // namespace
}  // namespace orin::chart
