#pragma once

#include <cstdint>

namespace orin::base {

/// A colour as settings and charts have it.
struct Color {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;

  /// From the form of the settings files, 0x00BBGGRR. Higher bits do not count.
  static constexpr Color FromNumber(int32_t number) {
    return {static_cast<uint8_t>(number & 0xff), static_cast<uint8_t>((number >> 8) & 0xff),
            static_cast<uint8_t>((number >> 16) & 0xff)};
  }
  [[nodiscard]] constexpr int32_t Number() const { return red | (green << 8) | (blue << 16); }

  constexpr bool operator==(const Color&) const = default;
};

/// The colour `part` of the way from one to the other, 0 to 1.
Color Mixed(Color from, Color to, double part);

/// The share of light that the colour gives back, 0 to 1.
double Luminance(Color color);
/// The contrast of two colours, 1 to 21, as the web content accessibility guidelines define it.
double Contrast(Color a, Color b);
/// `color`, mixed with white on a dark ground and with black on a light one until it reaches the
/// contrast to the ground.
Color Legible(Color color, Color ground, double contrast);

/// A ground that light colours stand out from better than dark ones.
bool IsDark(Color ground);

}  // namespace orin::base
