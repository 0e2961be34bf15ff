#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "analysis/program.h"
#include "chart/plotted_data.h"
#include "chart/readout.h"
#include "chart_fixture.h"
#include "support/credit_files.h"
#include "support/test_files.h"

namespace orin::chart {
namespace {

using store::BarPeriod;
using testing::ElementsAre;
using testing::StartsWith;

constexpr base::MasterRecord kIndex(2);
constexpr base::MasterRecord kAppleStock(3);

class SubChartsOfRealQuotes : public testing::Test {
 protected:
  ChartSource Source(BarPeriod period) {
    return {store_,
            store_.Master().Stock(kAppleStock),
            &store_.Master().Stock(kIndex),
            true,
            period,
            store_.Days().Last()};
  }

  store::StockStore store_ = RealMarket("sub_charts");
  settings::Settings settings_ = DefaultSettings();
};

/// As settings of a user who has everything drawn.
void SwitchOn(settings::ChartDisplaySettings& display) {
  for (auto* composites :
       {&display.day_composites, &display.week_composites, &display.month_composites}) {
    for (auto& chart : composites->charts) chart.line.check = true;
  }
  for (auto* lines : {&display.day, &display.week, &display.month}) {
    lines->band.check = true;
    for (auto& average : lines->averages) average.check = true;
  }
}

class SubChartsOfPeriods : public SubChartsOfRealQuotes,
                           public testing::WithParamInterface<BarPeriod> {};

TEST_P(SubChartsOfPeriods, PlottedValuesAreThoseOfTheirExpressions) {
  SwitchOn(settings_.chart_display);
  ChartSource source = Source(GetParam());
  ChartOptions options;
  options.sub_charts = SubChartsOf(GetParam());
  options.main.shows_comparison = true;
  const BarRange view{1, source.Bars().Count(), 30};
  const Chart chart = BuildChart(source, settings_, options, view);
  ASSERT_EQ(chart.panes.size(), options.sub_charts.size() + 1);
  int expressions = 0;
  for (const Plot& plot : chart.panes) {
    const auto* time = std::get_if<TimePlot>(&plot.content);
    if (time == nullptr) continue;
    for (const PlotLine& line : time->lines) {
      // Names that are no expressions belong to what no item gives.
      if (!analysis::BuildProgram(line.name) || !analysis::BuildProgram(line.name)->IsValue() ||
          !analysis::BuildProgram(line.name)->Notes().empty()) {
        continue;
      }
      const auto expected = source.Evaluate(line.name);
      ASSERT_TRUE(expected);
      ++expressions;
      int values = 0;
      for (int32_t t = 1; t <= source.Bars().Count(); ++t) {
        const auto place = static_cast<size_t>(t - 1);
        ASSERT_EQ(line.At(t).has_value(), expected->Has(place)) << line.name << " at " << t;
        if (!line.At(t)) continue;
        ++values;
        ASSERT_EQ(line.At(t)->ToText(), expected->At(place).ToText()) << line.name << " at " << t;
      }
      // 52 months are more than there are.
      EXPECT_TRUE(values > 0 || GetParam() == BarPeriod::kMonth) << line.name;
    }
  }
  EXPECT_GE(expressions, 30);
}

INSTANTIATE_TEST_SUITE_P(Periods, SubChartsOfPeriods,
                         testing::Values(BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth));

/// The first line that differs, and its counterpart; empty where all are equal.
std::string FirstDifference(const std::string& one, const std::string& other) {
  std::istringstream lines(one);
  std::istringstream other_lines(other);
  std::string line;
  std::string other_line;
  while (true) {
    const bool has_line = static_cast<bool>(std::getline(lines, line));
    const bool has_other = static_cast<bool>(std::getline(other_lines, other_line));
    if (!has_line && !has_other) return {};
    if (!has_line) line = "(end)";
    if (!has_other) other_line = "(end)";
    if (line != other_line) return line.substr(0, 500) + "\n" + other_line.substr(0, 500);
  }
}

/// Compares with tests/data/chart; ORIN_WRITE_EXPECTED in the environment writes them anew.
void ExpectAsStored(const std::string& name, const std::string& text) {
  const std::filesystem::path file = support::TestData("chart/" + name + ".txt");
  if (std::getenv("ORIN_WRITE_EXPECTED") != nullptr) std::ofstream(file) << text;
  std::ifstream in(file);
  std::stringstream stored;
  stored << in.rdbuf();
  EXPECT_EQ(FirstDifference(text, stored.str()), "") << file;
}

TEST_F(SubChartsOfRealQuotes, DrawListsAreTheOnesLookedAt) {
  constexpr std::array<const char*, 3> kPrefixes = {"", "week_", "month_"};
  SwitchOn(settings_.chart_display);
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    ChartSource source = Source(period);
    const int32_t last = source.Bars().Count();
    for (const SubChart* sub_chart : SubChartsOf(period)) {
      // Weeks and months differ from days in their composite charts alone.
      if (period != BarPeriod::kDay && !sub_chart->period) continue;
      ChartOptions options;
      options.main.volume = VolumePlace::kNone;
      options.sub_charts = {sub_chart};
      const Chart chart = BuildChart(source, settings_, options, {std::max(1, last - 11), last, 3});
      ChartLayout layout = LayOut(chart, {220, 200, 1});
      // The main chart has a picture of its own.
      auto& items = layout.picture.items;
      const auto begin = std::ranges::find_if(items, [&](const DrawItem& item) {
        const auto* clip = std::get_if<Clip>(&item);
        return clip != nullptr && clip->rect == layout.panes[1].pane;
      });
      items.erase(items.begin(), begin);
      ExpectAsStored(kPrefixes.at(static_cast<size_t>(period)) + std::string(sub_chart->key),
                     Described(layout.picture));
    }
  }
}

TEST_F(SubChartsOfRealQuotes, MainChartsAreTheOnesLookedAt) {
  settings_.common.shows_trend_lines = true;
  ChartSource source = Source(BarPeriod::kDay);
  const int32_t last = source.Bars().Count();
  const BarRange view{last - 11, last, 3};
  ChartOptions options;
  options.main = {PriceStyle::kBars, ScaleForm::kPercent, VolumePlace::kOverlay, true};
  ExpectAsStored(
      "main_bars",
      Described(LayOut(BuildChart(source, settings_, options, view), {220, 160, 1}).picture));
  options.main = {PriceStyle::kCandles, ScaleForm::kLogarithmic, VolumePlace::kNone, false};
  settings_.chart_action.has_daily_shadows = false;
  ExpectAsStored(
      "main_candles",
      Described(LayOut(BuildChart(source, settings_, options, view), {220, 160, 2}).picture));
  options.main.volume = VolumePlace::kPane;
  ExpectAsStored(
      "main_decades",
      Described(
          LayOut(BuildChart(source, settings_, options, {1, last, 3}), {90, 160, 1}).picture));
}

TEST_F(SubChartsOfRealQuotes, ReadoutsHaveTheLabelsOfTheirCharts) {
  ChartSource source = Source(BarPeriod::kDay);
  const int32_t last = source.Bars().Count();
  const auto labels = [&](std::string_view key) {
    ChartOptions options;
    options.main.volume = VolumePlace::kNone;
    options.sub_charts = {FindSubChart(key, BarPeriod::kDay)};
    const Chart chart = BuildChart(source, settings_, options, {last - 99, last, 3});
    const Plot& plot = chart.panes.at(1);
    std::vector<std::string> found = {plot.title};
    for (const ReadoutEntry& entry : plot.captions) found.push_back(entry.label);
    for (const ReadoutEntry& entry : LineReadout(plot, chart, last)) found.push_back(entry.label);
    return found;
  };
  EXPECT_THAT(labels("rsi"), ElementsAre("【ＲＳＩチャート】", "RSI14:", "RSI32:"));
  EXPECT_THAT(labels("vr"), ElementsAre("【ボリュームレシオ】", "VR14:", "VR32:"));
  EXPECT_THAT(labels("stochastics"), ElementsAre("【ストキャスティクス】", "%K:", "%D:"));
  EXPECT_THAT(labels("rci"), ElementsAre("【ＲＣＩチャート】", "RCI14:", "RCI32:"));
  EXPECT_THAT(labels("kagi"), ElementsAre("【かぎ足チャート】", "かぎ足：", "  転換数："));
  EXPECT_THAT(labels("pf"),
              ElementsAre("【ポイント＆フィギュア】", "P&F値幅率：", "  総ﾎﾟｲﾝﾄ数："));
  EXPECT_THAT(labels("inversewatch"), ElementsAre("【逆ウォッチチャート】", "KI:", "DI:"));
  EXPECT_THAT(labels("volume"), ElementsAre("【出来高チャート】", "V:", "V25:", "V75:"));
  EXPECT_THAT(labels("bollinger"), ElementsAre("【ボリンジャーバンド】", "25:", "+1 ", "-1 ", "+2 ",
                                               "-2 ", "+3 ", "-3 "));
  EXPECT_THAT(labels("parabolic"), ElementsAre("【パラボリック】", "SARB:", "SARS:"));
  EXPECT_THAT(labels("volumebyprice"), ElementsAre("【出来高対応チャート】", "出来高比率："));
  EXPECT_THAT(labels("deviation"), ElementsAre("【移動平均乖離チャート】", "乖離25:", "乖離75:"));
  EXPECT_THAT(labels("dowdeviation"), ElementsAre("【ダウ指数乖離チャート】", "乖離:"));
  EXPECT_THAT(labels("original2"),
              ElementsAre("【オリジナルチャート２】", "ＭＡＣＤ:", "シグナル:"));
  EXPECT_THAT(labels("composite4"), ElementsAre("【複合チャート４】", "１４日ＲＣＩ:"));
}

TEST_F(SubChartsOfRealQuotes, PriceReadoutHasTheWordsOfItsBars) {
  const auto texts = [&](BarPeriod period) {
    ChartSource source = Source(period);
    const int32_t last = source.Bars().Count();
    const Chart chart = BuildChart(source, settings_, {}, {1, last, 0});
    std::vector<std::string> found;
    for (const ReadoutEntry& entry : PriceReadout(chart, last)) {
      found.push_back(entry.label + entry.value);
    }
    return found;
  };
  EXPECT_THAT(texts(BarPeriod::kDay),
              ElementsAre("日付 2020/01/10", "始値 310.60", "高値 312.67", "安値 308.25",
                          "終値 310.33", "前日比 +0.70", "出来高 35,217,272"));
  EXPECT_THAT(texts(BarPeriod::kWeek)[5], StartsWith("前週比 +"));
  EXPECT_THAT(texts(BarPeriod::kMonth)[5], StartsWith("前月比 +"));
}

TEST_F(SubChartsOfRealQuotes, KeywordOfTheAnalysisDateIsTheDayOfEachBar) {
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek}) {
    ChartSource source = Source(period);
    const auto named = source.Evaluate("終値(analysisdate1-1)");
    const auto plain = source.Evaluate("終値(-1)");
    ASSERT_TRUE(named && plain);
    ASSERT_EQ(named->Size(), plain->Size());
    for (size_t i = 0; i < plain->Size(); ++i) {
      ASSERT_EQ(named->Has(i), plain->Has(i)) << i;
      if (plain->Has(i)) {
        EXPECT_EQ(named->At(i), plain->At(i)) << i;
      }
    }
    EXPECT_TRUE(plain->Has(plain->Size() - 1));
  }
}

TEST_F(SubChartsOfRealQuotes, ScrolledBackTheyAreAsTheyWereThen) {
  // Nothing drawn depends on later bars.
  SwitchOn(settings_.chart_display);
  ChartSource now = Source(BarPeriod::kDay);
  const int32_t then = now.Bars().Count() - 133;
  ChartSource source(store_, store_.Master().Stock(kAppleStock), &store_.Master().Stock(kIndex),
                     true, BarPeriod::kDay, base::DayIndex(then));
  ChartOptions options;
  options.main.shows_comparison = true;
  options.sub_charts = SubChartsOf(BarPeriod::kDay);
  const BarRange view{then - 119, then, 26};
  const Chart scrolled = BuildChart(now, settings_, options, view);
  const Chart chart = BuildChart(source, settings_, options, view);
  EXPECT_EQ(FirstDifference(Described(LayOut(scrolled, {800, 4000, 1}).picture),
                            Described(LayOut(chart, {800, 4000, 1}).picture)),
            "");
  EXPECT_EQ(FirstDifference(PlottedCsv(scrolled), PlottedCsv(chart)), "");
}

TEST(VolumeChart, CreditBalancesAreLinesOfDailyBarsWhereThereAreAny) {
  support::StoreBuilder builder("credit");
  const auto days = support::Weekdays("2020/01/06", 10);
  builder.Days(days).Stock("^DJI", std::vector<base::Bar>(10, support::FlatBar(1)));
  const store::StoreLocation& location = builder.Build();
  const std::vector<store::CreditBalance> balances(10, support::Balance(30, 50));
  support::WriteCreditFile(location, 1, days, {{base::SlotRecord(2), balances}});
  support::NameCreditFiles(location, 1, 1);
  const store::StockStore store = builder.Open();
  const settings::Settings settings = DefaultSettings();
  const auto labels = [&](BarPeriod period) {
    ChartSource source(store, store.Master().Stock(base::MasterRecord(2)), nullptr, true, period,
                       store.Days().Last());
    const int32_t last = source.Bars().Count();
    const Chart chart = BuildChart(source, settings, {}, {1, last, 0});
    std::string text;
    for (const auto& entry : LineReadout(chart.panes[1], chart, last)) {
      text += entry.label + entry.value + "|";
    }
    return text;
  };
  EXPECT_EQ(labels(BarPeriod::kDay), "V:100|V25:|V75:|売り残 30|買い残 50|");
  EXPECT_EQ(labels(BarPeriod::kWeek), "V:500|V25:|V75:|");
}

TEST(SubChartCatalogue, IsFoundByNumberNameAndKeyHoweverTyped) {
  const auto number = [](std::string_view typed, BarPeriod period) {
    const SubChart* chart = FindSubChart(typed, period);
    return chart == nullptr ? 0 : chart->number;
  };
  EXPECT_EQ(number("RSIチャート", BarPeriod::kDay), 1);
  EXPECT_EQ(number("１４", BarPeriod::kWeek), 14);
  EXPECT_EQ(number("Kagi", BarPeriod::kMonth), 5);
  EXPECT_EQ(number("ボリンジャ", BarPeriod::kDay), 0);
  EXPECT_EQ(number("", BarPeriod::kDay), 0);
  EXPECT_EQ(FindSubChart("composite2", BarPeriod::kWeek)->name, "週足複合チャート２");
  EXPECT_EQ(FindSubChart("月足複合チャート1", BarPeriod::kDay)->period, BarPeriod::kMonth);
  for (int32_t setting = 1; setting <= 27; ++setting) {
    for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
      ASSERT_NE(FindSubChart(setting, period), nullptr) << setting;
      EXPECT_EQ(FindSubChart(setting, period)->number, setting);
    }
  }
  EXPECT_EQ(FindSubChart(0, BarPeriod::kDay), nullptr);
}

}  // namespace
}  // namespace orin::chart
