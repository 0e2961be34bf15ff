#include "chart/readout.h"

#include <algorithm>
#include <limits>

#include "base/shown_number.h"
#include "chart/subcharts/plot_lines.h"

namespace orin::chart {

using base::Currency;

namespace {

/// The share of the band that the close of the bar lies in.
void AddBand(const TimePlot& plot, const Chart& chart, int32_t bar,
             std::vector<ReadoutEntry>& entries) {
  if (plot.bands.empty()) return;
  ReadoutEntry entry{"出来高比率：", "", plot.band_color};
  const bool has_close =
      bar >= chart.bars.First() && bar <= chart.bars.Count() && chart.bars.HasData(bar);
  if (has_close) {
    const Currency close = chart.bars.Close(bar);
    const auto band = std::ranges::find_if(plot.bands, [&](const indicators::PriceBand& candidate) {
      const bool is_top = &candidate == &plot.bands.back();
      return candidate.low <= close &&
             (close < candidate.high || (is_top && close == candidate.high));
    });
    if (band != plot.bands.end()) entry.value = base::Grouped(band->share, 1, false) + "%";
  }
  entries.push_back(std::move(entry));
}

std::vector<ReadoutEntry> NearestPoint(const PlanePlot& plot, const PaneLayout& place, double x,
                                       double y) {
  const PlanePoint* nearest = nullptr;
  double least = std::numeric_limits<double>::max();
  for (const PlanePoint& point : plot.points) {
    const double dx = place.across.Y(point.at.x) - x;
    // Of columns the one under the pointer, however high.
    const double dy = plot.column_width > 0 ? 0 : place.values.Y(point.at.y) - y;
    const double distance = dx * dx + dy * dy;
    if (distance >= least) continue;
    least = distance;
    nearest = &point;
  }
  return nearest == nullptr ? std::vector<ReadoutEntry>() : nearest->readout;
}

std::vector<ReadoutEntry> IntradayReadout(const IntradayPlot& plot, const PaneLayout& place,
                                          double x) {
  const auto bar = place.bars.BarAt(x);
  if (!bar || *bar > static_cast<int32_t>(plot.seconds.size())) return {};
  const auto i = static_cast<size_t>(*bar - 1);
  const base::Bar shown = plot.bars.At(i);
  const auto price = [](Currency value) { return ShownValue(value, NumberForm::kPrice); };
  std::vector<ReadoutEntry> entries = {
      {"日付 ", plot.date.ToText(), {}}, {"取引時刻　　", TimeText(plot.seconds[i]), {}},
      {"始値 ", price(shown.open), {}},  {"高値 ", price(shown.high), {}},
      {"安値 ", price(shown.low), {}},   {"終値 ", price(shown.close), {}}};
  const auto change = i > 0 ? shown.close.Minus(plot.bars.At(i - 1).close) : std::nullopt;
  entries.push_back({"時刻比 ", change ? base::Grouped(*change, 2, true) : "", {}});
  entries.push_back({" 出来高", base::Grouped(shown.volume, 0, false), {}});
  return entries;
}

}  // namespace

std::string ViewDates(const Chart& chart) {
  const int32_t first = std::max(chart.view.first, chart.bars.First());
  if (chart.bars.Count() < first) return {};
  return ShortDate(chart.bars.DateOf(first)) + "～" +
         ShortDate(chart.bars.DateOf(chart.bars.Count()));
}

std::vector<ReadoutEntry> PriceReadout(const Chart& chart, int32_t bar) {
  const base::BarsView& bars = chart.bars;
  if (bar < bars.First() || bar > bars.Count()) return {};
  std::vector<ReadoutEntry> entries = {{"日付 ", bars.DateOf(bar).ToText(), {}}};
  const bool has_data = bars.HasData(bar);
  const auto add = [&](std::string label, std::string value) {
    entries.push_back({std::move(label), has_data ? std::move(value) : std::string(), {}});
  };
  const auto price = [](Currency value) { return ShownValue(value, NumberForm::kPrice); };
  add("始値 ", price(bars.Open(bar)));
  add("高値 ", price(bars.High(bar)));
  add("安値 ", price(bars.Low(bar)));
  add("終値 ", price(bars.Close(bar)));
  int32_t before = bar - 1;
  while (before >= bars.First() && !bars.HasData(before)) --before;
  const auto change =
      before >= bars.First() ? bars.Close(bar).Minus(bars.Close(before)) : std::nullopt;
  base::DecimalsNeeded decimals;
  if (change) decimals.Add(*change);
  add(std::string(store::ChangeName(chart.bar_period)) + " ",
      change ? base::Grouped(*change, decimals.Count(), true) : "");
  add("出来高 ", base::Grouped(bars.Volume(bar), 0, false));
  return entries;
}

std::vector<ReadoutEntry> LineReadout(const Plot& plot, const Chart& chart, int32_t bar) {
  std::vector<ReadoutEntry> entries;
  const auto* time = std::get_if<TimePlot>(&plot.content);
  if (time == nullptr) return entries;
  for (const auto* lines : {&time->lines, &time->underlay}) {
    for (const PlotLine& line : *lines) {
      entries.push_back({line.label, ShownValue(line.At(bar), line.number), line.color});
    }
  }
  AddBand(*time, chart, bar, entries);
  return entries;
}

std::vector<ReadoutEntry> Legend(const Chart& chart, const Plot& plot) {
  return LineReadout(plot, chart, chart.view.last);
}

std::vector<ReadoutEntry> ReadoutAt(const Chart& chart, const ChartLayout& layout, double x,
                                    double y) {
  const auto pane = layout.PaneAt(x, y);
  if (!pane) return {};
  const Plot& plot = chart.panes[*pane];
  const PaneLayout& place = layout.panes[*pane];
  std::vector<ReadoutEntry> entries = plot.captions;
  const auto append = [&entries](std::vector<ReadoutEntry> more) {
    entries.insert(entries.end(), more.begin(), more.end());
  };
  if (const auto* plane = std::get_if<PlanePlot>(&plot.content)) {
    append(NearestPoint(*plane, place, x, y));
  } else if (const auto* intraday = std::get_if<IntradayPlot>(&plot.content)) {
    append(IntradayReadout(*intraday, place, x));
  } else if (const auto bar = layout.BarAt(x)) {
    append(PriceReadout(chart, *bar));
    append(LineReadout(plot, chart, *bar));
  }
  return entries;
}

}  // namespace orin::chart
