#include "base/color.h"

#include <algorithm>
#include <cmath>

namespace orin::base {

namespace {

constexpr Color kWhite = {255, 255, 255};
constexpr Color kBlack = {0, 0, 0};
constexpr int kShades = 20;

double Linear(uint8_t channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

uint8_t Mixed(uint8_t from, uint8_t to, double part) {
  return static_cast<uint8_t>(std::lround(from + (to - from) * part));
}

}  // namespace

Color Mixed(Color from, Color to, double part) {
  return {Mixed(from.red, to.red, part), Mixed(from.green, to.green, part),
          Mixed(from.blue, to.blue, part)};
}

double Luminance(Color color) {
  return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

double Contrast(Color a, Color b) {
  const double one = Luminance(a) + 0.05;
  const double other = Luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

Color Legible(Color color, Color ground, double contrast) {
  const Color towards = IsDark(ground) ? kWhite : kBlack;
  for (int shade = 0; shade < kShades; ++shade) {
    const Color mixed = Mixed(color, towards, static_cast<double>(shade) / kShades);
    if (Contrast(mixed, ground) >= contrast) return mixed;
  }
  return towards;
}

bool IsDark(Color ground) { return Luminance(ground) < 0.18; }

}  // namespace orin::base
