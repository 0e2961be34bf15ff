#include "chart/plotted_data.h"

#include <algorithm>

#include "base/csv.h"

namespace orin::chart {

namespace {

std::vector<const PlotLine*> LinesOf(const Chart& chart) {
  std::vector<const PlotLine*> lines;
  for (const Plot& plot : chart.panes) {
    const auto* time = std::get_if<TimePlot>(&plot.content);
    if (time == nullptr) continue;
    for (const PlotLine& line : time->lines) lines.push_back(&line);
    for (const PlotLine& line : time->underlay) lines.push_back(&line);
  }
  return lines;
}

/// The last place in view at which anything is plotted.
int32_t LastPlace(const Chart& chart, const std::vector<const PlotLine*>& lines) {
  int32_t last = chart.bars.Count();
  for (const PlotLine* line : lines) {
    last = std::max(last, static_cast<int32_t>(line->values.Size()));
  }
  return std::min(last, chart.view.first + chart.view.Places() - 1);
}

void AppendPrices(const base::BarsView& bars, int32_t t, std::string& csv) {
  if (t > bars.Count()) {
    csv += "+" + std::to_string(t - bars.Count()) + ",,,,,";
    return;
  }
  csv += bars.DateOf(t).ToText();
  if (!bars.HasData(t)) {
    csv += ",,,,,";
    return;
  }
  for (const base::Currency value :
       {bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t), bars.Volume(t)}) {
    csv += ',' + value.ToText();
  }
}

void AppendRow(const std::vector<std::string>& cells, std::string& csv) {
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) csv += ',';
    csv += base::CsvField(cells[i]);
  }
  csv += '\n';
}

}  // namespace

std::string PlottedCsv(const Chart& chart) {
  const std::vector<const PlotLine*> lines = LinesOf(chart);
  std::string csv = "年月日,始値,高値,安値,終値,出来高";
  for (const PlotLine* line : lines) csv += ',' + base::CsvField(line->name);
  csv += '\n';
  const int32_t last = LastPlace(chart, lines);
  for (int32_t t = std::max(1, chart.view.first); t <= last; ++t) {
    AppendPrices(chart.bars, t, csv);
    for (const PlotLine* line : lines) {
      const auto value = line->At(t);
      csv += ',' + (value ? value->ToText() : std::string());
    }
    csv += '\n';
  }
  for (const Plot& plot : chart.panes) {
    if (plot.table.headings.empty()) continue;
    csv += '\n' + base::CsvField(plot.title) + '\n';
    AppendRow(plot.table.headings, csv);
    for (const auto& row : plot.table.rows) AppendRow(row, csv);
  }
  return csv;
}

}  // namespace orin::chart
