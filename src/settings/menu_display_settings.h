#pragma once

#include <cstdint>

#include "base/profile_file.h"

namespace orin::settings {

/// Section MenuDisplay: what the stock menus show of a stock.
struct MenuDisplaySettings {
  int32_t code_display = 0;      // 0 code, 1 code with the market behind it, 2 none
  int32_t category_display = 0;  // 0 none, 1 name of the sector, 2 its number
  int32_t name_display = 0;      // 0 short name, 1 registered company name, 2 none

  bool operator==(const MenuDisplaySettings&) const = default;
};

MenuDisplaySettings ReadMenuDisplay(const base::ProfileFile& profile);
void WriteMenuDisplay(base::ProfileFile& profile, const MenuDisplaySettings& settings);

}  // namespace orin::settings
