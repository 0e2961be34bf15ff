#pragma once

#include <cstdint>
#include <string>

#include "base/profile_file.h"

namespace orin::settings {

/// Section ChartAction: how chart windows behave.
struct ChartActionSettings {
  int32_t second_chart = 0;       // second chart: 0 sub-chart, 1 weekly, 2 monthly, 3 second stock,
                                  // 4 intraday, 5 none
  int32_t shown_bars = 0;         // bars shown
  int32_t fewest_shown_bars = 0;  // the fewest bars shown
  int32_t small_step = 0;         // bars of a small step
  int32_t large_step = 0;         // bars of a large step
  int32_t scroll_step = 0;        // step of the scroll keys: 0 small, 1 large, 2 all bars shown
  int32_t sub_chart = 0;          // sub-chart of a new window, a number of SubChartChoices
  bool shows_toolbar = false;
  bool shows_status_bar = false;
  bool shows_delisted = false;          // delisted stocks can be shown
  bool marks_last_close = false;        // a line at the last close
  bool has_daily_shadows = false;       // shadows of daily candles
  bool adjusts_for_splits = false;      // prices before a split are adjusted when loaded
  bool marks_splits = false;            // a line at the day of a split
  bool volume_from_zero = false;        // the volume axis begins at 0
  bool marks_trades = false;            // marks at the days of the user's own trades
  bool shows_running_day = false;       // the running day's price is shown as a bar
  bool labels_trades = false;           // price and number beside the marks of trades
  int32_t stock_seconds = 0;            // automatic display of a list: seconds a stock
  int32_t day_seconds = 0;              // automatic display of days: seconds a step
  int32_t free_bars = 0;                // free bars right of the last one
  bool key_shows_second_stock = false;  // a key shows the second stock
  std::string key_second_stock;         // that stock
  bool key_adds_to_list = false;        // a key adds the stock to the list file
  int32_t free_height_percent = 0;      // free height above and below the prices, percent
  int32_t split_correction = 0;   // split correction: 0 ask, 1 to after the split, 2 to before
  int32_t listed_stocks = 0;      // stocks shown in a list of stocks
  int32_t remembered_stocks = 0;  // stocks remembered as shown before

  bool operator==(const ChartActionSettings&) const = default;
};

ChartActionSettings ReadChartAction(const base::ProfileFile& profile);
void WriteChartAction(base::ProfileFile& profile, const ChartActionSettings& settings);

}  // namespace orin::settings
