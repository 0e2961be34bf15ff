#include <algorithm>
#include <string>

#include "chart/subcharts/plot_lines.h"

// Sub-charts of volumes, and of the bars within a day.

namespace orin::chart {

using base::BarsView;

namespace {

constexpr int32_t kPriceBands = 24;

PlotLine VolumeLine(const PlotRequest& request, const settings::PeriodLine& line) {
  PlotLine average;
  average.label = "V" + std::to_string(line.period) + ":";
  average.name = "出来高移動平均(" + std::to_string(line.period) + ")";
  average.color = request.colors.Of(line.color);
  average.number = NumberForm::kVolume;
  average.values = IndicatorColumn(BarsOfView(request), "volume_moving_average", {line.period});
  return average;
}

/// The credit balances in their colours, where there are any.
void AddCredit(const PlotRequest& request, TimePlot& plot) {
  auto balances = request.source.CreditBalances();
  balances.resize(std::min(balances.size(), static_cast<size_t>(std::max(0, request.view.last))));
  if (balances.empty()) return;
  const auto add = [&](const char* label, base::Currency store::CreditBalance::*part,
                       base::Color color) {
    PlotLine line;
    line.label = label;
    line.name = std::string(label).substr(0, std::string(label).size() - 1);
    line.color = request.colors.Of(color);
    line.number = NumberForm::kVolume;
    line.values.Reset(balances.size());
    for (size_t i = 0; i < balances.size(); ++i) line.values.Set(i, balances[i].*part);
    plot.lines.push_back(std::move(line));
  };
  add("売り残 ", &store::CreditBalance::sell, request.common.credit_sales);
  add("買い残 ", &store::CreditBalance::buy, request.common.credit_purchases);
}

PlotTable IntradayTable(const IntradayPlot& plot) {
  PlotTable table;
  table.headings = {"年月日", "取引時刻", "始値", "高値", "安値", "終値", "出来高"};
  for (size_t i = 0; i < plot.seconds.size(); ++i) {
    const base::Bar bar = plot.bars.At(i);
    table.rows.push_back({plot.date.ToText(), TimeText(plot.seconds[i]), bar.open.ToText(),
                          bar.high.ToText(), bar.low.ToText(), bar.close.ToText(),
                          bar.volume.ToText()});
  }
  return table;
}

}  // namespace

Plot VolumeChart(const PlotRequest& request, size_t /*which*/) {
  const settings::VolumeChart& chart = request.display.volume;
  const BarsView bars = BarsOfView(request);
  TimePlot plot;
  plot.number = NumberForm::kVolume;
  plot.scale.with_zero = request.action.volume_from_zero;
  plot.scale.is_flush = true;
  PlotLine volume;
  volume.label = "V:";
  volume.name = ItemCallName(request.source.Period(), "出来高", {});
  volume.color = request.colors.Of(chart.color);
  volume.form = LineForm::kColumns;
  volume.number = NumberForm::kVolume;
  volume.values = IndicatorColumn(bars, "volume", {});
  plot.lines.push_back(std::move(volume));
  for (const settings::PeriodLine& average : chart.averages) {
    if (average.check) plot.lines.push_back(VolumeLine(request, average));
  }
  AddCredit(request, plot);
  Plot result;
  result.content = std::move(plot);
  return result;
}

Plot VolumeByPriceChart(const PlotRequest& request, size_t /*which*/) {
  const BarsView bars = BarsOfView(request);
  TimePlot plot;
  AddPrices(request, plot);
  plot.bands =
      indicators::VolumeByPrice(bars, std::max(1, request.view.first), bars.Count(), kPriceBands);
  plot.band_color = request.colors.Of(request.display.volume.color);
  Plot result;
  if (plot.bands.empty()) result.notes.emplace_back("表示する期間に出来高がありません。");
  result.table.headings = {"価格帯の下限", "価格帯の上限", "出来高", "出来高比率"};
  for (const indicators::PriceBand& band : plot.bands) {
    result.table.rows.push_back(
        {band.low.ToText(), band.high.ToText(), band.volume.ToText(), band.share.ToText()});
  }
  result.content = std::move(plot);
  return result;
}

Plot IntradayChart(const PlotRequest& request, size_t /*which*/) {
  Plot result;
  IntradayPlot plot;
  const BarsView bars = BarsOfView(request);
  const base::Date last = bars.Count() < 1 ? base::Date() : bars.DateOf(bars.Count());
  const auto day = request.source.Intraday(last);
  if (!day) {
    result.notes.push_back(day.error().message);
  } else if (day->bars.empty()) {
    result.notes.emplace_back("日中足データがありません。");
  } else {
    plot.date = day->date;
    result.subtitle = ShortDate(day->date);
    for (const store::IntradayBar& bar : day->bars) {
      plot.seconds.push_back(bar.seconds);
      plot.bars.Append(bar.bar);
    }
  }
  result.table = IntradayTable(plot);
  result.content = std::move(plot);
  return result;
}

}  // namespace orin::chart
