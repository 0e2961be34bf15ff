#include "chart/chart_colors.h"

namespace orin::chart {

using base::Color;

namespace {

constexpr Color kWhite = {255, 255, 255};
constexpr Color kBlack = {0, 0, 0};
constexpr Color kLightGrid = {216, 220, 226};
constexpr Color kDarkGrid = {58, 64, 74};
constexpr Color kLightText = {32, 36, 42};
constexpr Color kDarkText = {228, 231, 235};
constexpr double kLineContrast = 3;  // what lines need to be seen

}  // namespace

ChartColors::ChartColors(const settings::ChartCommonColorSettings& settings, ChartTheme theme) {
  const bool is_set_dark = base::IsDark(settings.ground);
  is_dark_ = theme == ChartTheme::kAsSet ? is_set_dark : theme == ChartTheme::kDark;
  is_as_set_ = theme == ChartTheme::kAsSet || is_dark_ == is_set_dark;
  if (is_as_set_) {
    ground_ = settings.ground;
    text_ = settings.text;
    sub_text_ = settings.sub_chart_text;
    // A grid as bright as it is set would stand before the lines.
    grid_ = base::Mixed(ground_, settings.lines, 0.5);
    sub_grid_ = base::Mixed(ground_, settings.sub_chart_lines, 0.5);
  } else {
    ground_ = is_dark_ ? kBlack : kWhite;
    text_ = sub_text_ = is_dark_ ? kDarkText : kLightText;
    grid_ = sub_grid_ = is_dark_ ? kDarkGrid : kLightGrid;
  }
  rise_ = Of(settings.rise);
  fall_ = Of(settings.fall);
}

Color ChartColors::Of(Color set) const {
  return is_as_set_ ? set : base::Legible(set, ground_, kLineContrast);
}

}  // namespace orin::chart
