#include "chart/chart_colors.h"

#include <algorithm>
#include <cmath>

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
constexpr int kMostShades = 20;

double Linear(uint8_t channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Color color) {
  return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

uint8_t Mixed(uint8_t from, uint8_t to, double part) {
  return static_cast<uint8_t>(std::lround(from + (to - from) * part));
}

Color Mixed(Color from, Color to, double part) {
  return {Mixed(from.red, to.red, part), Mixed(from.green, to.green, part),
          Mixed(from.blue, to.blue, part)};
}

bool IsDarkColor(Color color) { return Luminance(color) < 0.18; }

}  // namespace

double Contrast(Color a, Color b) {
  const double one = Luminance(a) + 0.05;
  const double other = Luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

ChartColors::ChartColors(const settings::ChartCommonColorSettings& settings, ChartTheme theme) {
  const bool is_set_dark = IsDarkColor(settings.ground);
  is_dark_ = theme == ChartTheme::kAsSet ? is_set_dark : theme == ChartTheme::kDark;
  is_as_set_ = theme == ChartTheme::kAsSet || is_dark_ == is_set_dark;
  if (is_as_set_) {
    ground_ = settings.ground;
    text_ = settings.text;
    sub_text_ = settings.sub_chart_text;
    // A grid as bright as it is set would stand before the lines.
    grid_ = Mixed(ground_, settings.lines, 0.5);
    sub_grid_ = Mixed(ground_, settings.sub_chart_lines, 0.5);
  } else {
    ground_ = is_dark_ ? kBlack : kWhite;
    text_ = sub_text_ = is_dark_ ? kDarkText : kLightText;
    grid_ = sub_grid_ = is_dark_ ? kDarkGrid : kLightGrid;
  }
  rise_ = Of(settings.rise);
  fall_ = Of(settings.fall);
}

Color ChartColors::Of(Color set) const {
  if (is_as_set_) return set;
  const Color towards = is_dark_ ? kWhite : kBlack;
  for (int shade = 0; shade < kMostShades; ++shade) {
    const Color color = Mixed(set, towards, static_cast<double>(shade) / kMostShades);
    if (Contrast(color, ground_) >= kLineContrast) return color;
  }
  return towards;
}

}  // namespace orin::chart
