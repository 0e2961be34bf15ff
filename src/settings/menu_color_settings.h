#pragma once

#include "base/color.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section MenuColor: colours of the stock menus.
struct MenuColorSettings {
  base::Color ground;            // background
  base::Color text;              // text
  base::Color lines;             // lines
  base::Color nyse_common;       // entries: ＮＹ市場, common stock
  base::Color nasdaq_other;      // ＮＡ市場, any other kind
  base::Color nasdaq_common;     // ＮＡ市場, common stock
  base::Color nyse_other;        // ＮＹ市場, any other kind
  base::Color elsewhere_common;  // 他市場, common stock
  base::Color nasdaq_small;      // ＮＡ市場, small caps
  base::Color elsewhere_other;   // 他市場, any other kind
  base::Color heading_ground;    // background of headings
  base::Color heading_text;      // text of headings

  bool operator==(const MenuColorSettings&) const = default;
};

MenuColorSettings ReadMenuColor(const base::ProfileFile& profile);
void WriteMenuColor(base::ProfileFile& profile, const MenuColorSettings& settings);

}  // namespace orin::settings
