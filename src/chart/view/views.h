#pragma once

#include <span>
#include <string>
#include <vector>

#include "chart/chart.h"
#include "chart/draw_list.h"
#include "chart/layout.h"
#include "chart/plot.h"
#include "chart/scales.h"
#include "chart/view/view_style.h"

namespace orin::chart {

// From models and places to draw items, a kind of content a file. All work within
// PaneLayout::plot and append to `items`.

struct ViewContext {
  const Chart& chart;
  const ViewStyle& style;
  bool is_main = false;
  std::vector<DrawItem>& items;

  [[nodiscard]] base::Color TextColor() const {
    return is_main ? chart.colors.Text() : chart.colors.SubText();
  }
  [[nodiscard]] base::Color GridColor() const {
    return is_main ? chart.colors.Grid() : chart.colors.SubGrid();
  }
};

/// Candles, bars or the line of closes of the bars in the scale's range.
void DrawPrices(const ViewContext& context, const base::BarsView& bars, const PricePlot& prices,
                const PaneLayout& place);
/// The number of a line for print: lines of one colour belong together, as a pair of bands does.
size_t SeriesNumber(std::span<const PlotLine> lines, size_t line);
/// Lines, dots and columns. Where there are more bars than pixels, a pixel shows their lowest and
/// highest value. Columns rise from `base`.
void DrawLines(const ViewContext& context, std::span<const PlotLine> lines, const PaneLayout& place,
               double base);
void DrawCloud(const ViewContext& context, const TimePlot& plot, const PaneLayout& place);
/// All that is within the grid of a pane.
void DrawContent(const ViewContext& context, const TimePlot& plot, const PaneLayout& place);
void DrawContent(const ViewContext& context, const PlanePlot& plot, const PaneLayout& place);
void DrawContent(const ViewContext& context, const IntradayPlot& plot, const PaneLayout& place);
/// Lines across the plot and texts right of it.
void DrawValueAxis(const ViewContext& context, std::span<const Tick> ticks,
                   const PaneLayout& place);
/// Lines down the plot.
void DrawDateLines(const ViewContext& context, std::span<const DateTick> ticks,
                   const PaneLayout& place);

/// Title, captions and legend with the values of the newest bar in view, in as many rows as they
/// take.
class Heading {
 public:
  Heading(const ViewContext& context, const Plot& plot, int32_t width);

  /// Rows beyond that many are left out.
  void Limit(int32_t rows) { rows_ = std::min(rows_, rows); }
  [[nodiscard]] int32_t Height() const { return rows_ * style_.row; }
  void Draw(int32_t left, int32_t top, std::vector<DrawItem>& items) const;

 private:
  /// `sample`: of a line, a piece of it stands in front.
  void Add(std::string text, base::Color color, const Line* sample = nullptr);
  void AddLegend(const Chart& chart, const Plot& plot);

  const ViewStyle& style_;
  int32_t width_;
  int32_t rows_ = 1;
  double x_ = 0;
  // From 0, 0.
  std::vector<Label> labels_;
  std::vector<Line> samples_;
};

/// The notes of a plot in the middle of its place.
void DrawNotes(const ViewContext& context, const Plot& plot, const Rect& place);

/// What a plot's scale spans with these bars in view; nullopt where there is nothing to draw.
std::optional<ValueRange> RangeOf(const TimePlot& plot, const base::BarsView& bars,
                                  const BarRange& view);
/// The columns that are shown of a plot of columns `width` pixels wide.
BarRange ShownColumns(const PlanePlot& plot, int32_t width);
ValueRange ColumnRange(const PlanePlot& plot, const BarRange& columns);

}  // namespace orin::chart
