#include <array>
#include <string>
#include <tuple>

#include "settings/chart_display/display_rows.h"
#include "settings/chart_display/expression_rows.h"

namespace orin::settings {

namespace {

using Display = ChartDisplaySettings;

struct OriginalDefault {
  const char* ending;  // of its keys
  const char* number;
  const char* title;
  const char* scale;
  size_t first_line;
  size_t last_line;
};

constexpr std::array kCharts = {
    OriginalDefault{"", "１", "サイコロジカルライン", "2", 1, 2},
    OriginalDefault{"2", "２", "ＭＡＣＤチャート", "0", 3, 4},
    OriginalDefault{"3", "３", "ＤＭＩチャート", "2", 5, 7},
};

struct LineDefaults {
  const char* check;
  const char* label;
  const char* expression;
  const char* color;
};

constexpr std::array kLines = {
    LineDefaults{"1", "サイコロ１２", kPsychologicalLine, kLightGreen},
    LineDefaults{"0", "", "", kYellow},
    LineDefaults{"1", "ＭＡＣＤ", "ＭＡＣＤ(5,20,0)", kLightGreen},
    LineDefaults{"1", "シグナル",
                 "{ ＭＡＣＤ(5,20,0) +  ＭＡＣＤ(5,20,-1) +  ＭＡＣＤ(5,20,-2) +  "
                 "ＭＡＣＤ(5,20,-3) +  ＭＡＣＤ(5,20,-4) +  ＭＡＣＤ(5,20,-5) +  "
                 "ＭＡＣＤ(5,20,-6) +  ＭＡＣＤ(5,20,-7) +  ＭＡＣＤ(5,20,-8) } / 9",
                 kYellow},
    LineDefaults{"1", "＋ＤＩ", "ＰＤＩ(14,0) ", kLightGreen},
    LineDefaults{"1", "－ＤＩ", "ＭＤＩ(14,0)", kYellow},
    LineDefaults{"1", "ＡＤＸ", "ＡＤＸ(14,14,0)", kLightRed},
};
static_assert(kLines.size() == std::tuple_size_v<decltype(OriginalCharts::lines)>);

void AddLine(size_t number, DisplayHeading& heading) {
  const std::string stem = "original" + std::to_string(number);
  const size_t i = number - 1;
  AddExpressionRows(
      {stem, "線" + std::to_string(number), kLines[i].check, kLines[i].label, kLines[i].expression,
       kLines[i].color},
      [i](auto& settings) -> auto& { return settings.original.lines[i]; }, heading);
}

DisplayHeading ChartRows(size_t i) {
  using Chart = OriginalCharts::Chart;
  const OriginalDefault& chart = kCharts[i];
  const std::string ending = chart.ending;
  const auto place = [i](auto& settings) -> auto& { return settings.original.charts[i]; };
  DisplayHeading heading{
      std::string("オリジナルチャート") + chart.number,
      {{"original_daychart_check" + ending, PartOf(place, &Chart::daychart_check), "1", Check(),
        "日足での表示", "日足のチャートでこのチャートを表示します。"},
       {"original_title" + ending, PartOf(place, &Chart::title), chart.title, Text(), "題名",
        "チャートの題名です。"},
       {"originalmaxminid" + ending, PartOf(place, &Chart::scale), chart.scale,
        Choice(kScaleChoices), "目盛", "縦の目盛の決め方です。"}}};
  for (size_t number = chart.first_line; number <= chart.last_line; ++number) {
    AddLine(number, heading);
  }
  return heading;
}

}  // namespace

DisplayPage OriginalChartPage() {
  DisplayPage page{"オリジナルチャート", {}};
  for (size_t i = 0; i < kCharts.size(); ++i) page.headings.push_back(ChartRows(i));
  return page;
}

}  // namespace orin::settings
