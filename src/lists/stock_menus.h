#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/color.h"
#include "base/ordinal.h"
#include "base/table.h"
#include "settings/menu_color_settings.h"
#include "settings/menu_display_settings.h"
#include "store/companion_formats.h"
#include "store/stock_master.h"

namespace orin::lists {

/// A menu of stocks, or of menus. Menus without any stock below them do not exist, but for the
/// letters, which are all there.
struct StockMenu {
  std::string label;    // in the menu above, as "Ａ" or "金融"
  std::string caption;  // of its window, as "証券コードメニュー（ＮＹ市場：Ａ）"
  std::vector<base::MasterRecord> stocks;  // empty where there are menus
  std::vector<StockMenu> menus;
};

/// The menus by code ("証券コードメニュー", market, initial letter), in syllabary order ("５０音順
/// メニュー", row of the syllabary) and by sector ("業種別メニュー", sector, market; sector numbers
/// outside the table are 未登録). Emptied records are in none.
std::vector<StockMenu> MakeStockMenus(const store::StockMaster& master,
                                      std::span<const store::IndexEntry> index);

/// The menu's line of a stock, in columns as the settings choose them.
struct MenuLine {
  std::string code;
  std::string name;    // short or company name, or empty
  std::string sector;  // or empty
};
MenuLine LineOf(const store::StockRecord& stock, std::string_view company,
                const settings::MenuDisplaySettings& display);

/// The colour of a stock's entry: that of its market and kind.
base::Color ColorOf(const store::StockRecord& stock, const settings::MenuColorSettings& colors);

/// The registered names of the stocks by record.
std::vector<std::string> CompaniesByRecord(const store::StockMaster& master,
                                           std::span<const store::IndexEntry> index);

/// The lines of a menu or of a search, with the market last. What the settings leave out is hidden.
base::Table TableOfMenu(const store::StockMaster& master,
                        std::span<const base::MasterRecord> stocks,
                        std::span<const std::string> companies,
                        const settings::MenuDisplaySettings& display,
                        const settings::MenuColorSettings& colors);

}  // namespace orin::lists
