#include "chart/sample_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "chart/layout.h"

namespace orin::chart {

using base::Currency;
using base::Date;

namespace {

constexpr size_t kDays = 1300;  // five years, so that monthly averages have values
constexpr int32_t kShownBars = 80;

/// Between -1 and 1, always the same for the same number: the linear congruential step and its
/// upper bits.
double Noise(size_t number) {
  const auto mixed = static_cast<uint32_t>(number) * 1664525U + 1013904223U;
  const uint32_t again = (mixed ^ (mixed >> 13)) * 1664525U + 1013904223U;
  return static_cast<double>(again >> 8) / (1 << 23) - 1;
}

Currency Price(double value) { return Currency::FromRaw(std::llround(value * 100) * 100); }

Currency Shares(double count) { return Currency::FromRaw(std::llround(count) * Currency::kScale); }

std::vector<Date> Weekdays() {
  std::vector<Date> days;
  for (Date day = *Date::FromYmd(2020, 1, 6); days.size() < kDays;
       day = Date::FromSerial(day.Serial() + 1)) {
    if (day.Weekday() != 1 && day.Weekday() != 7) days.push_back(day);
  }
  return days;
}

/// Waves of a year, a quarter and three weeks around a price, a daily change on top of them.
base::BarColumns Waves(const std::vector<Date>& days, double price, size_t phase) {
  const auto close = [=](size_t day) {
    const auto t = static_cast<double>(day + phase);
    return price * (1 + 0.22 * std::sin(t * 0.024) + 0.07 * std::sin(t * 0.1) +
                    0.025 * std::sin(t * 0.42) + 0.012 * Noise(day + phase));
  };
  base::BarColumns bars;
  for (size_t i = 0; i < days.size(); ++i) {
    const double now = close(i);
    const double open = close(i == 0 ? 0 : i - 1) * (1 + 0.004 * Noise(i + phase + kDays));
    const double reach = price * 0.008;
    base::Bar bar;
    bar.date = days[i];
    bar.open = Price(open);
    bar.close = Price(now);
    bar.high = Price(std::max(open, now) + reach * (1 + Noise(i + phase + 2 * kDays)));
    bar.low = Price(std::min(open, now) - reach * (1 + Noise(i + phase + 3 * kDays)));
    bar.volume =
        Shares(1e6 * (2 + Noise(i + phase + 4 * kDays)) * (1 + 30 * std::abs(now / open - 1)));
    bars.Append(bar);
  }
  return bars;
}

store::StockRecord MadeStock(const char* code, const char* name, int32_t slot) {
  store::StockRecord stock;
  stock.code = *store::StockCode::Parse(code);
  stock.name = name;
  stock.slot = base::SlotRecord(slot);
  return stock;
}

MadeSeries MakeSeries() {
  const std::vector<Date> days = Weekdays();
  MadeSeries series{store::Calendar(days),
                    MadeStock("MIHON", "見本", 1),
                    Waves(days, 120, 40),
                    MadeStock("^MIHON", "見本の指数", 2),
                    Waves(days, 3000, 90),
                    {},
                    {}};
  for (size_t i = 0; i < kDays; ++i) {
    const auto t = static_cast<double>(i);
    series.balances.push_back(
        {Shares(1.2e6 * (1.5 + std::sin(t * 0.05))), Shares(1.2e6 * (1.7 + std::cos(t * 0.04)))});
  }
  const size_t from = kDays - 70;
  const size_t to = kDays - 12;
  series.trend_lines[0] = {days[from], series.bars.low[from], days[to], series.bars.low[to]};
  return series;
}

/// The data list of the newest bar: headings and prices in their own colours.
void AddDataList(const settings::ChartCommonColorSettings& colors, const base::Bar& bar,
                 const Rect& area, double letters, std::vector<DrawItem>& items) {
  struct Row {
    const char* heading;
    std::string value;
  };
  const std::array rows = {Row{"年月日", bar.date.ToText()}, Row{"始値", bar.open.ToText()},
                           Row{"高値", bar.high.ToText()}, Row{"安値", bar.low.ToText()},
                           Row{"終値", bar.close.ToText()}};
  const auto height = static_cast<int32_t>(std::lround(letters * 1.6));
  const int32_t heading = area.width * 2 / 5;
  items.emplace_back(Clip{area});
  for (size_t i = 0; i < rows.size(); ++i) {
    const int32_t top = area.top + static_cast<int32_t>(i) * height;
    const double middle = top + height / 2.0;
    items.emplace_back(
        Boxes{{colors.heading_ground, InkRole::kFaint}, {{area.left, top, heading, height}}});
    items.emplace_back(Label{{colors.heading_text},
                             {area.left + heading / 2.0, middle},
                             Align::kCenter,
                             letters,
                             rows.at(i).heading});
    items.emplace_back(Label{{colors.text},
                             {static_cast<double>(area.Right()), middle},
                             Align::kRight,
                             letters,
                             rows.at(i).value});
  }
}

}  // namespace

DrawList DrawSample(const settings::Settings& settings, const SampleChoice& choice,
                    const PictureSize& size) {
  static const MadeSeries series = MakeSeries();
  ChartSource source(series, choice.period);
  ChartOptions options;
  options.main.volume = VolumePlace::kNone;
  if (const SubChart* sub_chart = FindSubChart(choice.sub_chart, choice.period)) {
    options.sub_charts.push_back(sub_chart);
  }
  settings::ChartActionSettings action = settings.chart_action;
  action.shown_bars = kShownBars;
  const BarRange view = NewestBars(source, action, FutureBars(options, settings.chart_display));
  const Chart chart = BuildChart(source, settings, options, view);

  const double letters = 12 * size.scale;
  const auto list_width = static_cast<int32_t>(std::lround(letters * 12));
  const bool has_list = size.width > 3 * list_width;
  const PictureSize chart_size{has_list ? size.width - list_width : size.width, size.height,
                               size.scale};
  ChartLayout layout = LayOut(chart, chart_size);
  const Rect& main = layout.panes.front().plot;
  // The lines go through all panes.
  layout.picture.items.emplace_back(Clip{{0, 0, chart_size.width, chart_size.height}});
  for (DrawItem& item : CrossHair(chart, layout, chart_size, settings.chart_common_color.cross_hair,
                                  main.left + main.width * 0.4, main.top + main.height * 0.3)) {
    layout.picture.items.push_back(std::move(item));
  }
  layout.picture.width = size.width;
  if (has_list && chart.bars.Count() > 0) {
    const auto gap = static_cast<int32_t>(std::lround(letters / 2));
    AddDataList(settings.chart_common_color, series.bars.At(kDays - 1),
                {chart_size.width, gap, list_width - gap, size.height - 2 * gap}, letters,
                layout.picture.items);
  }
  return std::move(layout.picture);
}

}  // namespace orin::chart
