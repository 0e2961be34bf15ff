#pragma once

#include "base/color.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section ChartCommonColor: colours that all charts share.
struct ChartCommonColorSettings {
  base::Color ground;            // background
  base::Color text;              // text
  base::Color lines;             // frame and grid of the main chart
  base::Color rise;              // a bar that closes at its open or above
  base::Color fall;              // a bar that closes below
  base::Color heading_ground;    // background of headings
  base::Color heading_text;      // text of headings
  base::Color cross_hair;        // cross hair
  base::Color credit_sales;      // credit sell balance
  base::Color credit_purchases;  // credit buy balance
  base::Color sub_chart_text;    // text of sub-charts
  base::Color sub_chart_lines;   // frame and grid of sub-charts
  base::Color trend_lines;       // trend lines

  bool operator==(const ChartCommonColorSettings&) const = default;
};

ChartCommonColorSettings ReadChartCommonColor(const base::ProfileFile& profile);
void WriteChartCommonColor(base::ProfileFile& profile, const ChartCommonColorSettings& settings);

}  // namespace orin::settings
