#pragma once

#include "base/color.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section MenuColor: colours of the stock menus.
struct MenuColorSettings {
  base::Color mnubase_color;            // background
  base::Color mnuchar_color;            // text
  base::Color mnuline_color;            // lines
  base::Color mnunyse_color;            // entries: ＮＹ市場, common stock
  base::Color mnunasdaq_color;          // ＮＡ市場, any other kind
  base::Color mnunasdaq_nm_color;       // ＮＡ市場, common stock
  base::Color mnunyse_other_color;      // ＮＹ市場, any other kind
  base::Color mnunew_york_color;        // 他市場, common stock
  base::Color mnu_nasdaq_sc_color;      // ＮＡ市場, small caps
  base::Color mnunew_york_other_color;  // 他市場, any other kind
  base::Color mnufixbase_color;         // background of headings
  base::Color mnufixchar_color;         // text of headings

  bool operator==(const MenuColorSettings&) const = default;
};

MenuColorSettings ReadMenuColor(const base::ProfileFile& profile);
void WriteMenuColor(base::ProfileFile& profile, const MenuColorSettings& settings);

}  // namespace orin::settings
