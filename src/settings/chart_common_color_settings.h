#pragma once

#include "base/color.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section ChartCommonColor: colours that all charts share.
struct ChartCommonColorSettings {
  base::Color chartbase_color;          // background
  base::Color chartchar_color;          // text
  base::Color chartline_color;          // frame and grid of the main chart
  base::Color chartup_color;            // a bar that closes at its open or above
  base::Color chartdown_color;          // a bar that closes below
  base::Color chartfixbase_color;       // background of headings
  base::Color chartfixchar_color;       // text of headings
  base::Color chartmoveline_color;      // cross hair
  base::Color chartsinyouurizan_color;  // credit sell balance
  base::Color chartsinyoukaizan_color;  // credit buy balance
  base::Color chartsubchar_color;       // text of sub-charts
  base::Color chartsubline_color;       // frame and grid of sub-charts
  base::Color charttrendline_color;     // trend lines

  bool operator==(const ChartCommonColorSettings&) const = default;
};

ChartCommonColorSettings ReadChartCommonColor(const base::ProfileFile& profile);
void WriteChartCommonColor(base::ProfileFile& profile, const ChartCommonColorSettings& settings);

}  // namespace orin::settings
