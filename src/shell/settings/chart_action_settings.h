#pragma once

#include "base/profile_file.h"

namespace orin::shell {

/// Section ChartAction.
struct ChartActionSettings {
  bool bunkatsu_auto_check = true;  // prices before a split are adjusted when a stock is loaded

  bool operator==(const ChartActionSettings&) const = default;
};

ChartActionSettings ReadChartAction(const base::ProfileFile& profile);
void WriteChartAction(base::ProfileFile& profile, const ChartActionSettings& settings);

}  // namespace orin::shell
