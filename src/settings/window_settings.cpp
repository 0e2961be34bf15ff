#include "settings/window_settings.h"

#include <array>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kThemeChoices = {
    SettingChoice{0, "０：システムに合わせる"},
    SettingChoice{1, "１：明るい配色"},
    SettingChoice{2, "２：暗い配色"},
};
constexpr std::array kListingChoices = {
    SettingChoice{0, "０：日足"},
    SettingChoice{1, "１：週足"},
    SettingChoice{2, "２：月足"},
};

}  // namespace

const KeyTable<WindowSettings>& WindowTable() {
  using Window = WindowSettings;
  static const KeyTable<Window> table{
      "orin.ini",
      "Window",
      {{"画面の見え方",
        {{"配色と文字",
          {{"Theme", &Window::theme, "0", Choice(kThemeChoices), "配色",
            "画面全体の明るさです。チャートと銘柄メニューの色は別に設定します。"},
           {"FontPercent", &Window::font_percent, "100", Number(75, 200), "文字の大きさ",
            "画面の文字の大きさを、標準に対する割合（％、７５～２００）で指定します。"}}},
         {"株価一覧",
          {{"FirstListing", &Window::first_listing, "0", Choice(kListingChoices),
            "初めに表示する足", "株価一覧を開いたときに表示する足の種類です。"}}}}}}};
  return table;
}

WindowSettings ReadWindow(const base::ProfileFile& profile) {
  return ReadGroup(profile, WindowTable());
}

void WriteWindow(base::ProfileFile& profile, const WindowSettings& settings) {
  WriteGroup(profile, WindowTable(), settings);
}

}  // namespace orin::settings
