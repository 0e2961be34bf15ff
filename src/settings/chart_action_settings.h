#pragma once

#include <cstdint>
#include <string>

#include "base/profile_file.h"

namespace orin::settings {

/// Section ChartAction: how chart windows behave.
struct ChartActionSettings {
  int32_t chart2_defalt = 0;    // second chart: 0 sub-chart, 1 weekly, 2 monthly, 3 second stock,
                                // 4 intraday, 5 none
  int32_t veaw_number = 0;      // bars shown
  int32_t veawday = 0;          // the fewest bars shown
  int32_t move_number = 0;      // bars of a small step
  int32_t moveday = 0;          // bars of a large step
  int32_t movetype_defalt = 0;  // step of the scroll keys: 0 small, 1 large, 2 all bars shown
  int32_t chartsub_select = 0;  // sub-chart of a new window, a number of SubChartChoices
  bool toolbar_check = false;
  bool statusbar_check = false;
  bool deleteshow_check = false;          // delisted stocks can be shown
  bool current_check = false;             // a line at the last close
  bool daily_hige_check = false;          // shadows of daily candles
  bool bunkatsu_auto_check = false;       // prices before a split are adjusted when loaded
  bool bunkatsu_line_chart = false;       // a line at the day of a split
  bool dekidaka_zero_base_check = false;  // the volume axis begins at 0
  bool entryday_check = false;            // marks at the days of the user's own trades
  bool shownow_check = false;             // the running day's price is shown as a bar
  bool entrydayplus_check = false;        // price and number beside the marks of trades
  int32_t adminimovetimer = 0;            // automatic display of a list: seconds a stock
  int32_t daymovetimer = 0;               // automatic display of days: seconds a step
  int32_t daymargin = 0;                  // free bars right of the last one
  bool key_second_check = false;          // a key shows the second stock
  std::string key_second_text;            // that stock
  bool key_adm_make_check = false;        // a key adds the stock to the list file
  int32_t chartgappercent = 0;            // free height above and below the prices, percent
  int32_t kabukarevisionoption = 0;    // split correction: 0 ask, 1 to after the split, 2 to before
  int32_t meigaralistshow_number = 0;  // stocks shown in a list of stocks
  int32_t meigaramemory_number = 0;    // stocks remembered as shown before

  bool operator==(const ChartActionSettings&) const = default;
};

ChartActionSettings ReadChartAction(const base::ProfileFile& profile);
void WriteChartAction(base::ProfileFile& profile, const ChartActionSettings& settings);

}  // namespace orin::settings
