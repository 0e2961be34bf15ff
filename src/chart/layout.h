#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "chart/chart.h"
#include "chart/draw_list.h"
#include "chart/scales.h"

namespace orin::chart {

/// Where the parts of a pane lie. The scales are those of its content; `bars` of a pane without
/// bars of the chart has no places.
struct PaneLayout {
  Rect pane;  // all of it
  Rect plot;  // what the scales span
  BarScale bars;
  ValueScale values;
  ValueScale across;  // of planes; its pixels count from the left edge
  double base = 0;    // of a percent scale
};

/// A chart with a place for everything.
struct ChartLayout {
  DrawList picture;
  std::vector<PaneLayout> panes;  // those of the chart
  Rect dates;                     // the axis of dates below the last pane of bars

  /// The pane at a point; none outside of all.
  [[nodiscard]] std::optional<size_t> PaneAt(double x, double y) const;
  /// The bar under x in the panes that have bars; none outside.
  [[nodiscard]] std::optional<int32_t> BarAt(double x) const;
};

/// Any size from 1 × 1 on; what has no room is left out.
ChartLayout LayOut(const Chart& chart, const PictureSize& size);

/// The cross hair of a pointer at a point, with date and value on the axes; empty outside the
/// panes.
std::vector<DrawItem> CrossHair(const Chart& chart, const ChartLayout& layout,
                                const PictureSize& size, base::Color color, double x, double y);

/// Heights from top to bottom that add up to `height`: `main_percent` (10 to 90) of it for the
/// first of `panes` where there are others, the rest shared by these. Of many panes the first gets
/// less, so that each of the others has at least a quarter of its height.
std::vector<int32_t> PaneHeights(int32_t height, int32_t main_percent, size_t panes);

}  // namespace orin::chart
