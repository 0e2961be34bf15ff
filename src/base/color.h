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

}  // namespace orin::base
