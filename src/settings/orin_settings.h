#pragma once

#include <cstdint>
#include <string>

#include "base/profile_file.h"

namespace orin::settings {

/// Section ORIN: the main window as it was left.
struct OrinSettings {
  int32_t window_state = 0;  // 0 normal, 1 minimised, 2 maximised
  int32_t window_top = 0;    // pixels, as the three below
  int32_t window_left = 0;
  int32_t window_width = 0;        // 0: never saved, the program chooses
  int32_t window_height = 0;       // 0: likewise
  std::string logo_picture;        // path setting
  int32_t main_chart_percent = 0;  // height of the main chart, percent of its window
  bool opens_with_list = false;    // charts open with their list of values

  bool operator==(const OrinSettings&) const = default;
};

OrinSettings ReadOrin(const base::ProfileFile& profile);
void WriteOrin(base::ProfileFile& profile, const OrinSettings& settings);

}  // namespace orin::settings
