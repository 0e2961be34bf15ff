#include <array>

#include "settings/chart_display/display_rows.h"

namespace orin::settings {

namespace {

struct MainChartPeriod {
  const char* prefix;
  const char* name;
  MainChartLines ChartDisplaySettings::*lines;
  std::array<const char*, 3> averages;
};

constexpr std::array kPeriods = {
    MainChartPeriod{"day", "日足", &ChartDisplaySettings::day, {"25", "75", "200"}},
    MainChartPeriod{"week", "週足", &ChartDisplaySettings::week, {"6", "26", "52"}},
    MainChartPeriod{"month", "月足", &ChartDisplaySettings::month, {"6", "13", "26"}},
};
constexpr std::array kAverageNumbers = {"１", "２", "３"};
constexpr std::array kChecks = {"1", "1", "0"};
constexpr std::array kAverageColors = {kLightGreen, kYellow, kLightMagenta};

void AddBandRows(const MainChartPeriod& period, DisplayHeading& heading) {
  const std::string stem = std::string(period.prefix) + "kairi";
  const auto band = PartOf(period.lines, &MainChartLines::band);
  heading.rows.push_back({stem + "_check", PartOf(band, &DeviationBand::check), "0", Check(),
                          "乖離線の表示", "移動平均１から上下に離れた二本の線を表示します。"});
  heading.rows.push_back({stem + "_ritu", PartOf(band, &DeviationBand::rate), "10",
                          Rate(0.0001, 1000), "乖離線の率",
                          "移動平均１から乖離線までの隔たり（％、１０００まで）です。"});
  heading.rows.push_back({stem + "_color", PartOf(band, &DeviationBand::color), kLightCyan, Paint(),
                          "乖離線の色", "乖離線の色です。"});
}

DisplayHeading AverageRows(const MainChartPeriod& period) {
  DisplayHeading heading{std::string(period.name) + "の移動平均", {}};
  for (size_t i = 0; i < kAverageNumbers.size(); ++i) {
    const LineDefault line{std::string(period.prefix) + "idou" + std::to_string(i + 1),
                           std::string("移動平均") + kAverageNumbers[i], kChecks[i],
                           period.averages[i], kAverageColors[i]};
    const auto averages = PartOf(period.lines, &MainChartLines::averages);
    AddLineRows(line,
                PartOf(
                    averages, [i](auto& lines) -> auto& { return lines[i]; }),
                heading);
  }
  AddBandRows(period, heading);
  return heading;
}

DisplayHeading VolumeRows() {
  const auto average = [](size_t i) {
    return [i](auto& settings) -> auto& { return settings.volume.averages[i]; };
  };
  DisplayHeading heading{"出来高", {}};
  AddLineRows({"dekidakaidou1", "出来高移動平均１", "1", "25", kLightGreen}, average(0), heading);
  AddLineRows({"dekidakaidou2", "出来高移動平均２", "1", "75", kYellow}, average(1), heading);
  heading.rows.push_back({"dekidakachart_color",
                          [](auto& settings) -> auto& { return settings.volume.color;
}
, kLightCyan, Paint(), "出来高の色", "出来高の棒の色です。"
}  // namespace
);
return heading;
}  // namespace orin::settings

}  // namespace

DisplayPage MainChartPage() {
  DisplayPage page{"移動平均と出来高", {}};
  for (const MainChartPeriod& period : kPeriods) page.headings.push_back(AverageRows(period));
  page.headings.push_back(VolumeRows());
  return page;
}

}  // namespace orin::settings
