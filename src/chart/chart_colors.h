#pragma once

#include "base/color.h"
#include "settings/chart_common_color_settings.h"

namespace orin::chart {

/// What ground a chart is drawn on.
enum class ChartTheme {
  kAsSet,  // that of the settings, with their colours as they are
  kLight,  // white, as on paper
  kDark,   // black
};

/// The colours of a chart on its ground. Those of the settings were chosen for the ground of the
/// settings; on another one they keep their hue and are made darker or lighter until they can be
/// told from it.
class ChartColors {
 public:
  ChartColors(const settings::ChartCommonColorSettings& settings, ChartTheme theme);

  [[nodiscard]] bool IsDark() const { return is_dark_; }
  [[nodiscard]] base::Color Ground() const { return ground_; }
  [[nodiscard]] base::Color Text() const { return text_; }
  [[nodiscard]] base::Color SubText() const { return sub_text_; }
  [[nodiscard]] base::Color Grid() const { return grid_; }
  [[nodiscard]] base::Color SubGrid() const { return sub_grid_; }
  [[nodiscard]] base::Color Rise() const { return rise_; }
  [[nodiscard]] base::Color Fall() const { return fall_; }
  /// The colour of a line or mark as it is set, on this ground.
  [[nodiscard]] base::Color Of(base::Color set) const;

 private:
  base::Color ground_;
  bool is_dark_ = true;
  bool is_as_set_ = true;
  base::Color text_;
  base::Color sub_text_;
  base::Color grid_;
  base::Color sub_grid_;
  base::Color rise_;
  base::Color fall_;
};

}  // namespace orin::chart
