#include "settings/chart_display_settings.h"

#include "settings/chart_display/display_rows.h"
#include "settings/setting_tables.h"

namespace orin::settings {

const KeyTable<ChartDisplaySettings>& ChartDisplayTable() {
  static const KeyTable<ChartDisplaySettings> table{
      "orin.ini",
      "ChartDisplay",
      {MainChartPage(), OscillatorPage(), PricePatternPage(), OriginalChartPage(),
       DayCompositePage(), WeekCompositePage(), MonthCompositePage()}};
  return table;
}

ChartDisplaySettings ReadChartDisplay(const base::ProfileFile& profile) {
  return ReadGroup(profile, ChartDisplayTable());
}

void WriteChartDisplay(base::ProfileFile& profile, const ChartDisplaySettings& settings) {
  WriteGroup(profile, ChartDisplayTable(), settings);
}

}  // namespace orin::settings
