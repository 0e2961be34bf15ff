#include "settings/menu_display_settings.h"

#include <array>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kCodeChoices = {
    SettingChoice{0, "０：銘柄コード"},
    SettingChoice{1, "１：銘柄コードと市場"},
    SettingChoice{2, "２：表示しない"},
};
constexpr std::array kCategoryChoices = {
    SettingChoice{0, "０：表示しない"},
    SettingChoice{1, "１：業種名"},
    SettingChoice{2, "２：業種番号"},
};
constexpr std::array kNameChoices = {
    SettingChoice{0, "０：略称"},
    SettingChoice{1, "１：会社名"},
    SettingChoice{2, "２：表示しない"},
};

}  // namespace

const KeyTable<MenuDisplaySettings>& MenuDisplayTable() {
  using Menu = MenuDisplaySettings;
  static const KeyTable<Menu> table{
      "orin.ini",
      "MenuDisplay",
      {{"銘柄メニューの表示",
        {{"銘柄の行",
          {{"menu_code_displaytype", &Menu::code_display, "0", Choice(kCodeChoices), "銘柄コード",
            "銘柄メニューの行に銘柄コードをどう表示するかです。"},
           {"menu_category_displaytype", &Menu::category_display, "0", Choice(kCategoryChoices),
            "業種", "銘柄メニューの行に業種をどう表示するかです。"},
           {"menu_name_displaytype", &Menu::name_display, "0", Choice(kNameChoices), "銘柄名",
            "銘柄メニューの行に銘柄名をどう表示するかです。"}}}}}}};
  return table;
}

MenuDisplaySettings ReadMenuDisplay(const base::ProfileFile& profile) {
  return ReadGroup(profile, MenuDisplayTable());
}

void WriteMenuDisplay(base::ProfileFile& profile, const MenuDisplaySettings& settings) {
  WriteGroup(profile, MenuDisplayTable(), settings);
}

}  // namespace orin::settings
