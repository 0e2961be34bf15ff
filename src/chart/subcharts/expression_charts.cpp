#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "chart/subcharts/plot_lines.h"

// Sub-charts of the user's own expressions.

namespace orin::chart {

namespace {

ScaleRule ScaleOf(settings::ScaleChoice choice) {
  ScaleRule scale;
  switch (choice) {
    case 0:
      scale.kind = ScaleRule::Kind::kHeld;
      break;
    case 2:
      scale.kind = ScaleRule::Kind::kFixed;
      scale.fixed = {0, 100};
      scale.levels = {0, 25, 50, 75, 100};
      break;
    case 3:
      scale.kind = ScaleRule::Kind::kFixed;
      scale.fixed = {-100, 100};
      scale.levels = {-100, -50, 0, 50, 100};
      break;
    default:
      break;
  }
  return scale;
}

Plot ExpressionPlot(const PlotRequest& request, const std::string& title,
                    settings::ScaleChoice scale, std::span<const settings::ExpressionLine> lines) {
  Plot result;
  result.subtitle = title;
  TimePlot plot;
  plot.number = NumberForm::kPrice;
  plot.scale = ScaleOf(scale);
  for (const settings::ExpressionLine& line : lines) {
    if (!line.check || line.expression.empty()) continue;
    const std::string& name = line.label.empty() ? line.expression : line.label;
    PlotLine drawn;
    drawn.label = name + ":";
    drawn.name = line.expression;
    drawn.color = request.colors.Of(line.color);
    drawn.number = NumberForm::kPrice;
    if (auto values = ExpressionColumn(request, line.expression)) {
      drawn.values = std::move(*values);
    } else {
      result.notes.push_back("「" + name + "」の式：" + values.error().message);
    }
    plot.lines.push_back(std::move(drawn));
  }
  if (plot.lines.empty()) {
    const bool is_on = std::ranges::any_of(lines, &settings::ExpressionLine::check);
    result.notes.emplace_back(is_on ? "表示する式がまだありません。" : kSwitchedOff);
  }
  result.content = std::move(plot);
  return result;
}

Plot CompositeChart(const PlotRequest& request, const settings::CompositeCharts& charts,
                    size_t which) {
  const settings::CompositeCharts::Chart& chart = charts.charts.at(which);
  const std::span<const settings::ExpressionLine> lines(&chart.line, charts.check ? 1 : 0);
  return ExpressionPlot(request, chart.title, chart.scale, lines);
}

}  // namespace

Plot OriginalChart(const PlotRequest& request, size_t which) {
  struct LineRange {
    size_t begin;
    size_t count;
  };
  constexpr std::array kLines = {LineRange{0, 2}, LineRange{2, 2}, LineRange{4, 3}};
  const settings::OriginalCharts& charts = request.display.original;
  const settings::OriginalCharts::Chart& chart = charts.charts.at(which);
  const bool is_off = request.source.Period() == store::BarPeriod::kDay && !chart.daychart_check;
  const LineRange range = kLines.at(which);
  return ExpressionPlot(request, chart.title, chart.scale,
                        std::span(charts.lines).subspan(range.begin, is_off ? 0 : range.count));
}

Plot DayCompositeChart(const PlotRequest& request, size_t which) {
  return CompositeChart(request, request.display.day_composites, which);
}

Plot WeekCompositeChart(const PlotRequest& request, size_t which) {
  return CompositeChart(request, request.display.week_composites, which);
}

Plot MonthCompositeChart(const PlotRequest& request, size_t which) {
  return CompositeChart(request, request.display.month_composites, which);
}

}  // namespace orin::chart
