#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chart/ink_mode.h"
#include "chart/plotted_data.h"
#include "chart/readout.h"
#include "chart_fixture.h"

// Charts of stocks as no market has them.

namespace orin::chart {
namespace {

using store::BarPeriod;
using support::BarOf;
using support::FlatBar;
using support::NoBar;
using testing::HasSubstr;

constexpr base::MasterRecord kSecond(3);
constexpr base::MasterRecord kStock(4);

/// Draws everything there is in sizes from a pixel on and asks every pane for its readout.
void DrawEverything(const store::StockStore& store, const settings::Settings& settings) {
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    ChartSource source(store, store.Master().Stock(kStock), &store.Master().Stock(kSecond), true,
                       period, store.Days().Last());
    for (const ScaleForm scale :
         {ScaleForm::kLinear, ScaleForm::kLogarithmic, ScaleForm::kPercent}) {
      ChartOptions options;
      options.main = {PriceStyle::kCandles, scale, VolumePlace::kOverlay, true};
      options.sub_charts = SubChartsOf(period);
      const BarRange view =
          NewestBars(source, settings.chart_action, FutureBars(options, settings.chart_display));
      const Chart chart = BuildChart(source, settings, options, view);
      for (const PictureSize& size :
           {PictureSize{1, 1, 1}, PictureSize{30, 900, 1}, PictureSize{900, 30, 1},
            PictureSize{1000, 4000, 1.25}, PictureSize{8000, 6000, 2}}) {
        const ChartLayout layout = LayOut(chart, size);
        EXPECT_EQ(ProblemOf(layout.picture), "") << size.width << 'x' << size.height;
        for (const PaneLayout& pane : layout.panes) {
          for (const double share : {0.0, 0.5, 0.999}) {
            const double x = pane.plot.left + pane.plot.width * share;
            const double y = pane.plot.top + pane.plot.height * share;
            ReadoutAt(chart, layout, x, y);
            DrawList cross{size.width, size.height, {}, CrossHair(chart, layout, size, {}, x, y)};
            EXPECT_EQ(ProblemOf(cross), "");
          }
        }
        InMode(layout.picture, InkMode::kPattern);
      }
      PlottedCsv(chart);
    }
  }
}

struct Oddity {
  const char* name;
  std::vector<base::Bar> stock;
  std::vector<base::Bar> second;
};

void PrintTo(const Oddity& oddity, std::ostream* out) { *out << oddity.name; }

class OddStocks : public testing::TestWithParam<Oddity> {};

TEST_P(OddStocks, AreDrawnInEverySize) {
  const store::StockStore store = MadeMarket(GetParam().name, GetParam().stock, GetParam().second);
  DrawEverything(store, DefaultSettings());
}

std::vector<base::Bar> Swings(double low, double high, double volume) {
  std::vector<base::Bar> bars;
  for (int i = 0; i < 150; ++i) {
    const double close = i % 7 < 3 ? low : high;
    bars.push_back(BarOf(i % 2 == 0 ? low : high, high, low, close, i % 5 == 0 ? 0 : volume));
  }
  return bars;
}

INSTANTIATE_TEST_SUITE_P(
    Withstand, OddStocks,
    testing::Values(Oddity{"none", {}, {}}, Oddity{"one", {FlatBar(10)}, {FlatBar(5)}},
                    Oddity{"two", {FlatBar(10), FlatBar(11)}, {FlatBar(5)}},
                    Oddity{"dataless", std::vector<base::Bar>(90, NoBar()), {FlatBar(5)}},
                    Oddity{"constant", std::vector<base::Bar>(90, FlatBar(10)),
                           std::vector<base::Bar>(90, FlatBar(10))},
                    Oddity{"smallest", std::vector<base::Bar>(90, FlatBar(0.0001, 1)), {}},
                    Oddity{"zero", std::vector<base::Bar>(90, FlatBar(0, 0)), {}},
                    Oddity{"widest", Swings(0.0001, 900e9, 1e13), Swings(1, 2, 1)},
                    Oddity{"largest", Swings(899e9, 900e9, 1e13), Swings(0.0001, 900e9, 1e13)},
                    Oddity{"apart",
                           {FlatBar(1), FlatBar(2), NoBar(), NoBar()},
                           {NoBar(), NoBar(), FlatBar(3), FlatBar(4)}}),
    [](const testing::TestParamInfo<Oddity>& oddity) { return std::string(oddity.param.name); });

TEST(OddExpressions, AreToldInTheirPaneAndTheOthersDrawn) {
  const store::StockStore store =
      MadeMarket("expressions", std::vector<base::Bar>(60, BarOf(10, 12, 9, 11, 100)));
  settings::Settings settings = DefaultSettings();
  auto& lines = settings.chart_display.original.lines;
  lines[2].expression = "終値(0) / 0";       // fails everywhere
  lines[3].expression = "移動平均(25,0) +";  // no expression
  lines[4].expression = "知らない項目(1,0)";
  lines[5].expression = "終値(0) > 10";  // a condition
  lines[6].expression = std::string(300, '(');
  ChartSource source(store, store.Master().Stock(kStock), nullptr, true, BarPeriod::kDay,
                     store.Days().Last());
  ChartOptions options;
  for (const char* key : {"original2", "original3", "spread"}) {
    options.sub_charts.push_back(FindSubChart(key, BarPeriod::kDay));
  }
  options.main.volume = VolumePlace::kNone;
  const Chart chart = BuildChart(source, settings, options, {1, 60, 0});
  ASSERT_EQ(chart.panes.size(), 4U);
  EXPECT_THAT(chart.panes[1].notes, testing::SizeIs(1));
  EXPECT_THAT(chart.panes[1].notes[0], HasSubstr("「シグナル」の式："));
  EXPECT_EQ(LineReadout(chart.panes[1], chart, 60)[0].value, "");
  EXPECT_THAT(chart.panes[2].notes, testing::SizeIs(2));
  EXPECT_THAT(chart.panes[2].notes[0], HasSubstr("「＋ＤＩ」の式："));
  EXPECT_EQ(LineReadout(chart.panes[2], chart, 60)[1].value, "1.00");
  EXPECT_THAT(chart.panes[3].notes, testing::ElementsAre("比較銘柄が指定されていません。"));
  for (const PictureSize& size : {PictureSize{60, 400, 1}, PictureSize{800, 600, 1}}) {
    EXPECT_EQ(ProblemOf(LayOut(chart, size).picture), "");
  }
}

TEST(OddComparison, WithoutOverlapIsTold) {
  const store::StockStore store =
      MadeMarket("overlap", {FlatBar(1), FlatBar(2), NoBar()}, {NoBar(), NoBar(), FlatBar(3)});
  const settings::Settings settings = DefaultSettings();
  ChartSource source(store, store.Master().Stock(kStock), &store.Master().Stock(kSecond), true,
                     BarPeriod::kDay, store.Days().Last());
  ChartOptions options;
  options.main.shows_comparison = true;
  const Chart chart = BuildChart(source, settings, options, {1, 3, 0});
  EXPECT_THAT(chart.panes[0].notes,
              testing::ElementsAre("比較銘柄（SECOND）と重なる期間がありません。"));
}

}  // namespace
}  // namespace orin::chart
