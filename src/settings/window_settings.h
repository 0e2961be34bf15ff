#pragma once

#include <cstdint>

#include "base/profile_file.h"

namespace orin::settings {

/// Section Window: the look of all windows.
struct WindowSettings {
  int32_t theme = 0;          // 0 that of the system, 1 light, 2 dark
  int32_t font_percent = 0;   // size of text, 75 to 200
  int32_t first_listing = 0;  // bars a price listing opens with: 0 days, 1 weeks, 2 months

  bool operator==(const WindowSettings&) const = default;
};

WindowSettings ReadWindow(const base::ProfileFile& profile);
void WriteWindow(base::ProfileFile& profile, const WindowSettings& settings);

}  // namespace orin::settings
