#include "settings/menu_color_settings.h"

#include "settings/palette.h"
#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

// Triples between the sixteen colours, dark enough to be read on white.
constexpr const char* kSteelBlue = "10506240";  // 0, 80, 160
constexpr const char* kDarkOlive = "24672";     // 96, 96, 0

}  // namespace

const KeyTable<MenuColorSettings>& MenuColorTable() {
  using Menu = MenuColorSettings;
  static const KeyTable<Menu> table{
      "orin.ini",
      "MenuColor",
      {{"銘柄メニューの色",
        {{"メニュー全体",
          {{"mnubase_color", &Menu::ground, kWhite, Paint(), "背景の色",
            "銘柄メニューの背景の色です。"},
           {"mnuchar_color", &Menu::text, kBlack, Paint(), "文字の色",
            "市場の色の付かない文字の色です。"},
           {"mnuline_color", &Menu::lines, kSilver, Paint(), "線の色",
            "行と列を区切る線の色です。"},
           {"mnufixbase_color", &Menu::heading_ground, kSilver, Paint(), "見出しの背景の色",
            "見出しの行の背景の色です。"},
           {"mnufixchar_color", &Menu::heading_text, kBlack, Paint(), "見出しの文字の色",
            "見出しの行の文字の色です。"}}},
         {"市場別の文字",
          {{"mnunyse_color", &Menu::nyse_common, kNavy, Paint(), "ＮＹ市場の普通株の色",
            "ＮＹ市場に上場する普通株の文字の色です。"},
           {"mnunyse_other_color", &Menu::nyse_other, kSteelBlue, Paint(), "ＮＹ市場のその他の色",
            "ＮＹ市場の普通株以外（優先株など）の文字の色です。"},
           {"mnunasdaq_nm_color", &Menu::nasdaq_common, kGreen, Paint(), "ＮＡ市場の普通株の色",
            "ＮＡ市場に上場する普通株の文字の色です。"},
           {"mnu_nasdaq_sc_color", &Menu::nasdaq_small, kTeal, Paint(), "ＮＡ市場の小型株の色",
            "ＮＡ市場の小型株の文字の色です。"},
           {"mnunasdaq_color", &Menu::nasdaq_other, kDarkOlive, Paint(), "ＮＡ市場のその他の色",
            "ＮＡ市場のそれ以外の銘柄の文字の色です。"},
           {"mnunew_york_color", &Menu::elsewhere_common, kMaroon, Paint(), "他市場の普通株の色",
            "ＮＹ市場とＮＡ市場以外に上場する普通株の文字の色です。"},
           {"mnunew_york_other_color", &Menu::elsewhere_other, kPurple, Paint(),
            "他市場のその他の色", "ＮＹ市場とＮＡ市場以外の、普通株以外の文字の色です。"}}}}}}};
  return table;
}

MenuColorSettings ReadMenuColor(const base::ProfileFile& profile) {
  return ReadGroup(profile, MenuColorTable());
}

void WriteMenuColor(base::ProfileFile& profile, const MenuColorSettings& settings) {
  WriteGroup(profile, MenuColorTable(), settings);
}

}  // namespace orin::settings
