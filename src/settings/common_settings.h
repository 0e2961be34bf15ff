#pragma once

#include <cstdint>
#include <string>

#include "base/currency.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section Common: what windows were last set to, one member a key.
struct CommonSettings {
  // Analysis.
  int32_t analysis_system_first_file = 0;    // first price file in use; 0: the master's own
  std::string analysis_group_file;           // path setting
  std::string search_meigara_code2_default;  // second stock of an analysis
  bool ranking_synchro = false;              // a price update is followed by the ranking analysis
  int32_t rank_err_default = 0;              // value of a stock that cannot be ranked

  // Price update and download.
  bool csv_update = false;                // an update takes CSV files
  bool rondom_update = false;             // an update takes update files
  bool stock_change = false;              // an update file is archived when it has been taken
  int32_t input_format = 0;               // of update files, 0 to 6
  bool yahoo_kabuget_and_update = false;  // a download is followed by the update
  std::string kabuget_reserve_time;       // hh:mm:ss
  bool month_not_get = false;             // a reserved download leaves Mondays out
  std::string daily_get_meigara_file;     // path setting: stocks of the intraday download
  int32_t daytime_filecount = 0;          // intraday files kept
  std::string daiwa_userid;
  std::string daiwa_password;
  std::string stock_web_site;    // address; the stock code is put behind it
  std::string account_web_site;  // likewise

  // A foreign price file: where its columns are, numbered from 1.
  std::string translate_data_file;   // path setting
  int32_t translate_first_line = 0;  // line of the first stock, from 1
  int32_t translate_separate = 0;    // 0 comma, 1 tab, 2 blank
  int32_t translate_meigara_codeid = 0;
  int32_t translate_hajimeneid = 0;
  int32_t translate_takaneid = 0;
  int32_t translate_yasuneid = 0;
  int32_t translate_owarineid = 0;
  int32_t translate_dekidakaid = 0;
  std::string translate_nikkei_code;    // stock whose line holds the index
  int32_t translate_dekidaka_unit = 0;  // shares a unit of its volumes

  // Chart windows.
  bool chart2_default = false;          // they open with a second chart
  int32_t chart2_subchart_default = 0;  // a number of SubChartChoices
  bool chart2_data_default = false;     // the second chart's values are listed
  int32_t complexchart_default = 0;     // daily composite chart first shown, 1 to 6
  int32_t complex2chart_default = 0;    // weekly one
  int32_t complex3chart_default = 0;    // monthly one
  bool show_trendline = false;
  bool fix_kabuka_scale = false;     // the price axis stays between the two prices
  base::Currency fix_kabuka_takane;  // upper end
  base::Currency fix_kabuka_yasune;  // lower end
  bool fix_kabuka_chart = false;     // on the main chart
  bool fix_kabuka_chart2 = false;    // on the second chart
  bool fix_kabuka_w_chart = false;   // on weekly charts
  bool fix_kabuka_m_chart = false;   // on monthly charts

  bool operator==(const CommonSettings&) const = default;
};

CommonSettings ReadCommon(const base::ProfileFile& profile);
void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings);

}  // namespace orin::settings
