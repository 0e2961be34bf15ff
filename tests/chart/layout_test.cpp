#include "chart/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>
#include <set>

#include "base/file_system.h"
#include "chart/chart_colors.h"
#include "chart/ink_mode.h"
#include "chart/readout.h"
#include "chart_fixture.h"
#include "store/trend_lines.h"

namespace orin::chart {
namespace {

using store::BarPeriod;

constexpr base::MasterRecord kApple(3);

class LayoutOfRealQuotes : public testing::Test {
 protected:
  Chart Build(const ChartOptions& options) {
    const int32_t last = source_.Bars().Count();
    return BuildChart(source_, settings_, options, {last - 99, last, 3});
  }

  store::StockStore store_ = RealMarket("layout", 300);
  settings::Settings settings_ = DefaultSettings();
  ChartSource source_{
      store_,          store_.Master().Stock(kApple), &store_.Master().Stock(kApple), true,
      BarPeriod::kDay, store_.Days().Last()};
};

TEST(PaneHeights, FillTheHeightAndKeepTheMainChartLargest) {
  EXPECT_THAT(PaneHeights(1000, 65, 1), testing::ElementsAre(1000));
  EXPECT_THAT(PaneHeights(1000, 65, 2), testing::ElementsAre(650, 350));
  EXPECT_THAT(PaneHeights(1000, 65, 3), testing::ElementsAre(650, 175, 175));
  EXPECT_THAT(PaneHeights(1000, 99, 2), testing::ElementsAre(800, 200));
  for (const int32_t height : {0, 1, 7, 333, 6000}) {
    for (size_t panes = 1; panes < 30; ++panes) {
      const auto heights = PaneHeights(height, 65, panes);
      EXPECT_EQ(std::accumulate(heights.begin(), heights.end(), 0), height);
      for (const int32_t one : heights) EXPECT_GE(one, 0);
    }
  }
}

TEST_F(LayoutOfRealQuotes, PointsLeadToBarsAndValuesAndBack) {
  ChartOptions options;
  options.sub_charts = {FindSubChart("rsi", BarPeriod::kDay),
                        FindSubChart("kagi", BarPeriod::kDay)};
  const Chart chart = Build(options);
  const ChartLayout layout = LayOut(chart, {1000, 800, 1});
  ASSERT_EQ(layout.panes.size(), 4U);
  for (size_t i = 0; i < layout.panes.size(); ++i) {
    const PaneLayout& pane = layout.panes[i];
    const double x = pane.plot.left + pane.plot.width / 3.0;
    const double y = pane.plot.top + pane.plot.height / 3.0;
    EXPECT_EQ(layout.PaneAt(x, y), i);
    EXPECT_NEAR(pane.values.Y(pane.values.ValueAt(y)), y, 1e-6);
    // The panes lie below each other, their plots within them.
    EXPECT_GE(pane.plot.top, pane.pane.top);
    EXPECT_LE(pane.plot.Bottom(), pane.pane.Bottom());
    EXPECT_GE(pane.pane.top, i > 0 ? layout.panes[i - 1].pane.Bottom() : 0);
  }
  for (int32_t t = chart.view.first; t <= chart.view.last; ++t) {
    EXPECT_EQ(layout.BarAt(layout.panes[0].bars.X(t)), t);
  }
  // The dates stand under the RSI, the last pane of bars.
  EXPECT_EQ(layout.dates.top, layout.panes[2].pane.Bottom());
  EXPECT_FALSE(layout.PaneAt(999, 5));
}

TEST_F(LayoutOfRealQuotes, ReadoutIsOfTheBarUnderThePointer) {
  ChartOptions options;
  options.sub_charts = {FindSubChart("rsi", BarPeriod::kDay), FindSubChart("pf", BarPeriod::kDay)};
  const Chart chart = Build(options);
  const ChartLayout layout = LayOut(chart, {1000, 800, 1});
  const int32_t bar = chart.view.last - 10;
  const double x = layout.panes[0].bars.X(bar);
  const auto texts = [&](size_t pane) {
    std::string text;
    const Rect& plot = layout.panes[pane].plot;
    for (const auto& entry : ReadoutAt(chart, layout, x, plot.top + plot.height / 2.0)) {
      text += entry.label + entry.value + "|";
    }
    return text;
  };
  const std::string date = chart.bars.DateOf(bar).ToText();
  EXPECT_THAT(texts(0), testing::StartsWith("日付 " + date + "|始値 "));
  EXPECT_THAT(texts(0), testing::HasSubstr("|25日移動平均 "));
  EXPECT_THAT(texts(2), testing::HasSubstr("|RSI14:"));
  EXPECT_THAT(texts(3), testing::StartsWith("P&F値幅率：1%|  総ﾎﾟｲﾝﾄ数："));
  EXPECT_TRUE(ReadoutAt(chart, layout, x, 3).empty());
}

TEST_F(LayoutOfRealQuotes, ReadoutWithinADayHasItsTimes) {
  ChartOptions options;
  options.sub_charts = {FindSubChart("intraday", BarPeriod::kDay)};
  const Chart chart = Build(options);
  const ChartLayout layout = LayOut(chart, {1000, 800, 1});
  const PaneLayout& pane = layout.panes[2];
  std::string text;
  for (const auto& entry :
       ReadoutAt(chart, layout, pane.bars.X(2), pane.plot.top + pane.plot.height / 2.0)) {
    text += entry.label + entry.value + "|";
  }
  EXPECT_EQ(text,
            "日付 2020/01/10|取引時刻　　09:35|始値 311.00|高値 313.00|安値 310.00|終値 311.00|"
            "時刻比 0.00| 出来高1,000|");
}

TEST_F(LayoutOfRealQuotes, CrossHairMarksDateAndValue) {
  const Chart chart = Build({});
  const PictureSize size{1000, 800, 1};
  const ChartLayout layout = LayOut(chart, size);
  const int32_t bar = chart.view.first + 5;
  const Rect& plot = layout.panes[0].plot;
  const DrawList cross{
      1000,
      800,
      {},
      CrossHair(chart, layout, size, {}, layout.panes[0].bars.X(bar), plot.top + 40)};
  const std::string text = Described(cross);
  EXPECT_THAT(text, testing::HasSubstr(chart.bars.DateOf(bar).ToText().substr(2)));
  EXPECT_TRUE(CrossHair(chart, layout, size, {}, 2, 2).empty());
}

TEST_F(LayoutOfRealQuotes, TrendLinesAndSplitsAreDrawnWhereTheSettingsSaySo) {
  store::TrendLines lines;
  lines[0] = {source_.Bars().DateOf(250), base::Currency::FromInt(200), source_.Bars().DateOf(290),
              base::Currency::FromInt(300)};
  // Drawn at noon, and one without an end.
  lines[3] = lines[0];
  lines[3].first_date = store::StoredDate(lines[0].first_date.Days() + 0.5);
  lines[6] = lines[0];
  lines[6].second_date = store::StoredDate(1e9);
  ASSERT_TRUE(store::SaveTrendLines(store_.Location(), source_.Stock().slot, lines,
                                    base::NativeFileSystem()));
  const auto segments = [&] {
    return std::get<TimePlot>(Build({}).panes[0].content).segments.size();
  };
  settings_.common.shows_trend_lines = false;
  EXPECT_EQ(segments(), 0U);
  settings_.common.shows_trend_lines = true;
  ASSERT_EQ(segments(), 2U);
  const Chart chart = Build({});
  for (const auto& segment : std::get<TimePlot>(chart.panes[0].content).segments) {
    EXPECT_EQ(segment.first_bar, 250);
    EXPECT_EQ(segment.second_bar, 290);
  }
}

TEST_F(LayoutOfRealQuotes, TrendLinesOfACopyAreThoseOfTheStoreItself) {
  const std::filesystem::path& system = store_.Location().system_directory;
  const std::filesystem::path directory = system.parent_path() / "copy";
  for (const auto& from : {system, store_.Location().data_directory}) {
    std::filesystem::copy(from, directory);
  }
  const auto copy = store::StockStore::Open(
      {directory, directory}, {store::Access::kRead, {}, &store_}, base::NativeFileSystem());
  ASSERT_TRUE(copy) << copy.error().message;
  store::TrendLines lines;
  lines[0] = {source_.Bars().DateOf(250), base::Currency::FromInt(200), source_.Bars().DateOf(290),
              base::Currency::FromInt(300)};
  ASSERT_TRUE(store::SaveTrendLines(store_.Location(), source_.Stock().slot, lines,
                                    base::NativeFileSystem()));
  const ChartSource of_copy(*copy, copy->Master().Stock(kApple), nullptr, true, BarPeriod::kDay,
                            copy->Days().Last());
  EXPECT_EQ(of_copy.TrendLines(), lines);
}

TEST(SplitMarks, StandAtTheFirstBarWithNewShares) {
  support::StoreBuilder builder("splits");
  builder.Days(support::Weekdays("2020/01/06", 20));
  builder.Stock("^DJI", std::vector<base::Bar>(20, support::FlatBar(1)));
  builder.Stock("X", std::vector<base::Bar>(20, support::FlatBar(10)));
  builder.Split("X", 2, "2020/01/10");
  const store::StockStore store = builder.Open();
  settings::Settings settings = DefaultSettings();
  ChartSource source(store, store.Master().Stock(base::MasterRecord(3)), nullptr, true,
                     BarPeriod::kDay, store.Days().Last());
  const Chart chart = BuildChart(source, settings, {}, {1, 20, 0});
  const auto& marks = std::get<TimePlot>(chart.panes[0].content).bar_marks;
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(chart.bars.DateOf(marks[0].bar), support::Day("2020/01/13"));
  EXPECT_EQ(marks[0].text, "分割 2");
  settings.chart_action.marks_splits = false;
  EXPECT_TRUE(std::get<TimePlot>(BuildChart(source, settings, {}, {1, 20, 0}).panes[0].content)
                  .bar_marks.empty());
}

TEST_F(LayoutOfRealQuotes, FixedPricesAreTheScale) {
  settings_.common.has_fixed_scale = true;
  settings_.common.fixes_main_chart = true;
  settings_.common.fixed_low = base::Currency::FromInt(100);
  settings_.common.fixed_high = base::Currency::FromInt(400);
  const Chart chart = Build({});
  EXPECT_EQ(LayOut(chart, {500, 400, 1}).panes[0].values.Range(), (ValueRange{100, 400}));
}

TEST_F(LayoutOfRealQuotes, ExpressionsHaveTheScaleThatIsChosen) {
  const auto range = [&](settings::ScaleChoice choice, int32_t first) {
    settings_.chart_display.day_composites.charts[0].scale = choice;
    ChartOptions options;
    options.main.volume = VolumePlace::kNone;
    options.sub_charts = {FindSubChart("composite1", BarPeriod::kDay)};
    const Chart chart = BuildChart(source_, settings_, options, {first, source_.Bars().Count(), 3});
    return LayOut(chart, {500, 400, 1}).panes[1].values.Range();
  };
  // As it is, it stays whatever is in view; fitted, it follows.
  EXPECT_EQ(range(0, 200), range(0, 280));
  EXPECT_LT(range(1, 200).low, range(1, 280).low);
  EXPECT_LT(range(0, 280).low, range(1, 280).low);
  EXPECT_EQ(range(2, 200), (ValueRange{0, 100}));
  EXPECT_EQ(range(3, 200), (ValueRange{-100, 100}));
}

TEST(ChartColors, LinesCanBeToldFromEveryGround) {
  const settings::Settings settings = DefaultSettings();
  const auto& display = settings.chart_display;
  const ChartColors light(settings.chart_common_color, ChartTheme::kLight);
  for (const base::Color color : {display.rsi[0].color, display.rsi[1].color, display.volume.color,
                                  display.ichimoku.lagging.color, base::Color{255, 255, 255}}) {
    EXPECT_GE(base::Contrast(light.Of(color), light.Ground()), 3);
  }
  EXPECT_GE(base::Contrast(light.Text(), light.Ground()), 7);
  // On the ground they were chosen for they are as chosen.
  const ChartColors dark(settings.chart_common_color, ChartTheme::kDark);
  EXPECT_EQ(dark.Of(display.rsi[0].color), display.rsi[0].color);
  EXPECT_EQ(base::Contrast({0, 0, 0}, {255, 255, 255}), 21);
}

TEST_F(LayoutOfRealQuotes, PrintHasNoColorsAndTellsLinesApart) {
  ChartOptions options;
  options.theme = ChartTheme::kLight;
  options.sub_charts = {FindSubChart("ichimoku", BarPeriod::kDay)};
  const DrawList picture = LayOut(Build(options), {800, 600, 1}).picture;
  for (const InkMode mode : {InkMode::kGrey, InkMode::kPattern}) {
    std::set<std::pair<int32_t, int>> looks;
    const DrawList printed = InMode(picture, mode);
    for (const DrawItem& item : printed.items) {
      std::visit(
          [&](const auto& drawn) {
            if constexpr (requires { drawn.ink; }) {
              const base::Color& color = drawn.ink.color;
              EXPECT_TRUE(color.red == color.green && color.green == color.blue);
            }
          },
          item);
      if (const auto* line = std::get_if<Line>(&item)) {
        looks.insert({line->ink.color.Number(), static_cast<int>(line->ink.dash)});
      }
    }
    EXPECT_EQ(looks.size(), 5U);
    EXPECT_EQ(printed.ground.color, (base::Color{255, 255, 255}));
  }
}

}  // namespace
}  // namespace orin::chart
