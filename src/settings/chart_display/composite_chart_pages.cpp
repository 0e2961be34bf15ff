#include <array>

#include "settings/chart_display/display_rows.h"
#include "settings/chart_display/expression_rows.h"

namespace orin::settings {

namespace {

struct CompositeDefault {
  const char* label;
  const char* expression;
  const char* title;
  const char* scale;
};

/// The composite charts of a bar period.
struct CompositePeriod {
  const char* title;
  const char* check_key;
  const char* chart_name;  // of the bars, as "週足"
  int first_number;        // of the keys
  CompositeCharts ChartDisplaySettings::*charts;
  std::array<CompositeDefault, 6> defaults;
};

constexpr CompositePeriod kDay = {
    "複合チャート（日足）",
    "complex_daychart_check",
    "日足",
    1,
    &ChartDisplaySettings::day_composites,
    {{{"２５日移動平均", "移動平均(25,0)", "２５日移動平均チャート", "1"},
      {"７５日移動平均", "移動平均(75,0)", "７５日移動平均チャート", "1"},
      {"２００日移動平均", "移動平均(200,0)", "２００日移動平均チャート", "1"},
      {"１４日ＲＣＩ", "ＲＣＩ(14,0)", "１４日ＲＣＩチャート", "3"},
      {"１４日ＲＳＩ", "ＲＳＩ(14,0)", "１４日ＲＳＩチャート", "2"},
      {"１２日サイコロジカル", kPsychologicalLine, "１２日サイコロジカルチャート", "2"}}}};

constexpr CompositePeriod kWeek = {
    "複合チャート（週足）",
    "complex_weekchart_check",
    "週足",
    21,
    &ChartDisplaySettings::week_composites,
    {{{"６週移動平均", "週間移動平均(6,0)", "６週移動平均チャート", "1"},
      {"２６週移動平均", "週間移動平均(26,0)", "２６週移動平均チャート", "1"},
      {"５２週移動平均", "週間移動平均(52,0)", "５２週移動平均チャート", "1"},
      {"１４週＋ＤＩ", "週間ＰＤＩ(14,0)", "１４週＋ＤＩチャート", "2"},
      {"１４週－ＤＩ", "週間ＭＤＩ(14,0)", "１４週－ＤＩチャート", "2"},
      {"１４週ＡＤＸ", "週間ＡＤＸ(14,14,0)", "１４週ＡＤＸチャート", "2"}}}};

constexpr CompositePeriod kMonth = {
    "複合チャート（月足）",
    "complex_monthchart_check",
    "月足",
    31,
    &ChartDisplaySettings::month_composites,
    {{{"６月移動平均", "月間移動平均(6,0)", "６月移動平均チャート", "1"},
      {"１３月移動平均", "月間移動平均(13,0)", "１３月移動平均チャート", "1"},
      {"２６月移動平均", "月間移動平均(26,0)", "２６月移動平均チャート", "1"},
      {"", "", "", "0"},
      {"", "", "", "0"},
      {"", "", "", "0"}}}};

constexpr std::array kCompositeNumbers = {"１", "２", "３", "４", "５", "６"};

DisplayHeading ChartRows(const CompositePeriod& period, size_t i) {
  using Chart = CompositeCharts::Chart;
  const CompositeDefault& chart = period.defaults[i];
  const std::string number = std::to_string(period.first_number + static_cast<int>(i));
  const auto place = PartOf(
      PartOf(period.charts, &CompositeCharts::charts), [i](auto& charts) -> auto& {
        return charts[i];
      });
  DisplayHeading heading{std::string("複合チャート") + kCompositeNumbers[i], {}};
  heading.rows.push_back({"complex_title" + number, PartOf(place, &Chart::title), chart.title,
                          Text(), "題名", "チャートの題名です。"});
  AddExpressionRows({"complex" + number, "", "1", chart.label, chart.expression, kLightGreen},
                    PartOf(place, &Chart::line), heading);
  heading.rows.push_back({"complex" + number + "_maxminid", PartOf(place, &Chart::scale),
                          chart.scale, Choice(kScaleChoices), "目盛", "縦の目盛の決め方です。"});
  return heading;
}

DisplayPage PeriodPage(const CompositePeriod& period) {
  DisplayPage page{period.title, {}};
  page.headings.push_back(
      {"全体",
       {{period.check_key, PartOf(period.charts, &CompositeCharts::check), "1", Check(),
         "複合チャートの表示", std::string(period.chart_name) + "で複合チャートを表示します。"}}});
  for (size_t i = 0; i < kCompositeNumbers.size(); ++i)
    page.headings.push_back(ChartRows(period, i));
  return page;
}

}  // namespace

DisplayPage DayCompositePage() { return PeriodPage(kDay); }

DisplayPage WeekCompositePage() { return PeriodPage(kWeek); }

DisplayPage MonthCompositePage() { return PeriodPage(kMonth); }

}  // namespace orin::settings
