#pragma once

#include <functional>
#include <string>

#include "settings/chart_display_settings.h"
#include "settings/key_table.h"
#include "settings/palette.h"

namespace orin::settings {

using DisplayRow = KeyRow<ChartDisplaySettings>;
using DisplayHeading = KeyHeading<ChartDisplaySettings>;
using DisplayPage = KeyPage<ChartDisplaySettings>;

/// Days, weeks or months of an indicator.
inline constexpr SettingForm kPeriod = Number(1, 1000);

/// The place of `member` in the part of the settings that `find` gives.
template <typename Find, typename Member>
auto PartOf(Find find, Member member) {
  return [ find, member ](auto& settings) -> auto& {
    return std::invoke(member, std::invoke(find, settings));
  };
}

/// What a line of a chart is in a table of a family.
struct LineDefault {
  std::string stem;  // of its keys, as "rsi1"
  std::string name;  // in labels, as "ＲＳＩ１"
  const char* check;
  const char* period;
  const char* color;
};

/// Adds the keys of a PeriodLine that `find` gives.
template <typename Find>
void AddLineRows(const LineDefault& line, Find find, DisplayHeading& heading) {
  heading.rows.push_back({line.stem + "_check", PartOf(find, &PeriodLine::check), line.check,
                          Check(), line.name + "の表示", line.name + "の線を表示します。"});
  heading.rows.push_back({line.stem + "_number", PartOf(find, &PeriodLine::period), line.period,
                          kPeriod, line.name + "の期間",
                          line.name + "を計算する足の数（１～１０００）です。"});
  heading.rows.push_back({line.stem + "_color", PartOf(find, &PeriodLine::color), line.color,
                          Paint(), line.name + "の色", line.name + "の線の色です。"});
}

// The pages of section ChartDisplay, a file each.
DisplayPage MainChartPage();
DisplayPage OscillatorPage();
DisplayPage PricePatternPage();
DisplayPage OriginalChartPage();
DisplayPage DayCompositePage();
DisplayPage WeekCompositePage();
DisplayPage MonthCompositePage();

}  // namespace orin::settings
