#pragma once

#include <QString>
#include <cstdint>

namespace orin::widgets {

enum class Theme { kSystem, kLight, kDark };

/// Whether a font with Japanese letters was found; without one texts cannot be read.
bool HasJapaneseFont();

/// Style, font and translations of the whole program. Made once, before the first window.
class Look {
 public:
  Look();

  /// Colours and the size of texts in percent (75..200), for all windows at once.
  void Apply(Theme theme, int32_t font_percent) const;

 private:
  bool is_desktop_dark_;
  double point_size_;
};

/// The icon of the program, as a resource.
QString IconPath();

}  // namespace orin::widgets
