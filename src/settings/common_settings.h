#pragma once

#include <cstdint>
#include <string>

#include "base/currency.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section Common: what windows were last set to, one member a key.
struct CommonSettings {
  // Analysis.
  int32_t first_price_file = 0;     // first price file in use; 0: the master's own
  std::string analysis_group_file;  // path setting
  std::string second_stock;         // second stock of an analysis
  bool ranks_after_update = false;  // a price update is followed by the ranking analysis
  int32_t unranked_value = 0;       // value of a stock that cannot be ranked

  // Price update and download.
  bool updates_from_csv = false;        // an update takes CSV files
  bool updates_from_files = false;      // an update takes update files
  bool archives_update_files = false;   // an update file is archived when it has been taken
  int32_t input_format = 0;             // of update files, 0 to 6
  bool updates_after_download = false;  // a download is followed by the update
  std::string download_time;            // hh:mm:ss
  bool skips_monday_download = false;   // a reserved download leaves Mondays out
  std::string intraday_stocks_file;     // path setting: stocks of the intraday download
  int32_t intraday_files = 0;           // intraday files kept
  std::string daiwa_user;
  std::string daiwa_password;
  std::string stock_web_site;    // address; the stock code is put behind it
  std::string account_web_site;  // likewise

  // A foreign price file: where its columns are, numbered from 1.
  std::string translate_data_file;   // path setting
  int32_t translate_first_line = 0;  // line of the first stock, from 1
  int32_t translate_separator = 0;   // 0 comma, 1 tab, 2 blank
  int32_t translate_code_column = 0;
  int32_t translate_open_column = 0;
  int32_t translate_high_column = 0;
  int32_t translate_low_column = 0;
  int32_t translate_close_column = 0;
  int32_t translate_volume_column = 0;
  std::string translate_index_code;   // stock whose line holds the index
  int32_t translate_volume_unit = 0;  // shares a unit of its volumes

  // Chart windows.
  bool opens_second_chart = false;   // they open with a second chart
  int32_t second_sub_chart = 0;      // a number of SubChartChoices
  bool lists_second_values = false;  // the second chart's values are listed
  int32_t daily_composite = 0;       // daily composite chart first shown, 1 to 6
  int32_t weekly_composite = 0;      // weekly one
  int32_t monthly_composite = 0;     // monthly one
  bool shows_trend_lines = false;
  bool has_fixed_scale = false;       // the price axis stays between the two prices
  base::Currency fixed_high;          // upper end
  base::Currency fixed_low;           // lower end
  bool fixes_main_chart = false;      // on the main chart
  bool fixes_second_chart = false;    // on the second chart
  bool fixes_weekly_charts = false;   // on weekly charts
  bool fixes_monthly_charts = false;  // on monthly charts

  bool operator==(const CommonSettings&) const = default;
};

CommonSettings ReadCommon(const base::ProfileFile& profile);
void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings);

}  // namespace orin::settings
