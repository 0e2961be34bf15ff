#pragma once

#include "chart/plot.h"
#include "chart/subcharts/sub_chart.h"
#include "settings/common_settings.h"

namespace orin::chart {

enum class VolumePlace : uint8_t {
  kNone,
  kPane,     // a pane of its own below
  kOverlay,  // in the lower part of the main chart
};

/// What the user chooses of the main chart beside the settings.
struct MainChartOptions {
  PriceStyle style = PriceStyle::kCandles;
  ScaleForm scale = ScaleForm::kLinear;
  VolumePlace volume = VolumePlace::kPane;
  bool shows_comparison = false;  // the second stock as a line, from the same point
};

/// The main price chart: prices, moving averages and bands, volume where it is overlaid, trend
/// lines, split marks, the line at the last close.
Plot MainChart(const PlotRequest& request, const settings::CommonSettings& common,
               const MainChartOptions& options);

}  // namespace orin::chart
