#include "lists/stock_menus.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>

#include "base/utf8.h"
#include "store/name_index.h"

namespace orin::lists {

using base::MasterRecord;

namespace {

constexpr std::string_view kCodeMenu = "証券コードメニュー";
constexpr std::string_view kSyllabaryMenu = "５０音順メニュー";
constexpr std::string_view kSectorMenu = "業種別メニュー";
constexpr int kLetters = 26;
constexpr std::array<int16_t, 3> kListings = {1, 2, 3};
constexpr int16_t kNoSector = 0;

std::string Caption(std::string_view menu, std::string_view inner) {
  return std::string(menu) + "（" + std::string(inner) + "）";
}

/// "Ａ" for 1 ... "Ｚ" for 26, "その他" for 0.
std::string LetterName(int letter) {
  if (letter == 0) return "その他";
  std::string name;
  base::AppendUtf8(name, static_cast<char32_t>(0xFF21 + letter - 1));
  return name;
}

void SortByCode(std::vector<MasterRecord>& stocks, const store::StockMaster& master) {
  std::ranges::sort(stocks, {}, [&master](MasterRecord record) {
    return std::pair(master.Stock(record).code, record);
  });
}

StockMenu MenuOfLetter(const store::StockMaster& master, int16_t listing, int letter) {
  StockMenu menu;
  menu.label = LetterName(letter);
  menu.caption = Caption(kCodeMenu, std::string(store::ListingName(listing)) + "：" + menu.label);
  for (const MasterRecord record : master.WithInitial(letter)) {
    const store::StockRecord& stock = master.Stock(record);
    if (stock.listing == listing && stock.code != store::StockCode()) {
      menu.stocks.push_back(record);
    }
  }
  SortByCode(menu.stocks, master);
  return menu;
}

StockMenu MenuByCode(const store::StockMaster& master) {
  StockMenu root{std::string(kCodeMenu), std::string(kCodeMenu), {}, {}};
  for (const int16_t listing : kListings) {
    const std::string market(store::ListingName(listing));
    StockMenu menu{market, Caption(kCodeMenu, market), {}, {}};
    for (int letter = 1; letter <= kLetters; ++letter) {
      menu.menus.push_back(MenuOfLetter(master, listing, letter));
    }
    menu.menus.push_back(MenuOfLetter(master, listing, 0));
    root.menus.push_back(std::move(menu));
  }
  return root;
}

/// Characters as a syllabary key has them: large half-width kana, with "ｦ" and "ﾝ" after "ﾜ".
struct SyllabaryRow {
  char32_t first;
  char32_t last;
  const char* name;
};

constexpr std::array kRows = {
    SyllabaryRow{0xFF71, 0xFF75, "ア行"}, SyllabaryRow{0xFF76, 0xFF7A, "カ行"},
    SyllabaryRow{0xFF7B, 0xFF7F, "サ行"}, SyllabaryRow{0xFF80, 0xFF84, "タ行"},
    SyllabaryRow{0xFF85, 0xFF89, "ナ行"}, SyllabaryRow{0xFF8A, 0xFF8E, "ハ行"},
    SyllabaryRow{0xFF8F, 0xFF93, "マ行"}, SyllabaryRow{0xFF94, 0xFF96, "ヤ行"},
    SyllabaryRow{0xFF97, 0xFF9B, "ラ行"}, SyllabaryRow{0xFF9C, 0xFF9E, "ワ行"},
};

/// The menu of a reading; readings of Latin letters have one a letter.
std::string RowOf(const std::string& reading) {
  const std::string key = store::SyllabaryKey(store::ReadingOfName(reading));
  if (key.empty()) return "数字・その他";
  const char32_t first = base::FirstCodePoint(key).value;
  for (const SyllabaryRow& row : kRows) {
    if (first >= row.first && first <= row.last) return row.name;
  }
  if (first >= U'A' && first <= U'Z') return LetterName(static_cast<int>(first - U'A') + 1);
  return "数字・その他";
}

StockMenu MenuBySyllabary(const store::StockMaster& master,
                          std::span<const store::IndexEntry> index) {
  std::map<std::string, std::vector<MasterRecord>> by_row;
  const size_t count = master.Stocks().size();
  for (const store::IndexEntry& entry : index) {
    const int32_t place = entry.record.Value() - 2;
    if (place < 0 || std::cmp_greater_equal(place, count)) continue;
    if (entry.code == store::StockCode()) continue;
    if (master.Stock(entry.record).code != entry.code) continue;
    by_row[RowOf(entry.reading)].push_back(entry.record);
  }
  StockMenu root{std::string(kSyllabaryMenu), std::string(kSyllabaryMenu), {}, {}};
  const auto add = [&](const std::string& name) {
    auto found = by_row.extract(name);
    if (found.empty()) return;
    root.menus.push_back({name, Caption(kSyllabaryMenu, name), std::move(found.mapped()), {}});
  };
  for (const SyllabaryRow& row : kRows) add(row.name);
  for (int letter = 1; letter <= kLetters; ++letter) add(LetterName(letter));
  add("数字・その他");
  return root;
}

struct SectorStocks {
  std::string_view name;
  std::array<std::vector<MasterRecord>, kListings.size()> by_listing;
};

/// In the order of the sector numbers; the numbers outside the table are one sector, the last.
std::vector<SectorStocks> StocksBySector(const store::StockMaster& master) {
  std::map<int16_t, std::vector<MasterRecord>> by_number;
  const auto count = static_cast<int32_t>(master.Stocks().size());
  for (MasterRecord record(2); record.Value() < count + 2;
       record = MasterRecord(record.Value() + 1)) {
    const store::StockRecord& stock = master.Stock(record);
    if (stock.code != store::StockCode()) by_number[stock.sector].push_back(record);
  }
  std::vector<SectorStocks> sectors;
  SectorStocks others{store::SectorName(kNoSector), {}};
  for (const auto& [number, records] : by_number) {
    const std::string_view name = store::SectorName(number);
    const bool is_other = name == others.name;
    if (!is_other && (sectors.empty() || sectors.back().name != name)) {
      sectors.push_back({name, {}});
    }
    SectorStocks& sector = is_other ? others : sectors.back();
    for (const MasterRecord record : records) {
      const auto* listing = std::ranges::find(kListings, master.Stock(record).listing);
      if (listing == kListings.end()) continue;
      sector.by_listing.at(static_cast<size_t>(listing - kListings.begin())).push_back(record);
    }
  }
  sectors.push_back(std::move(others));
  return sectors;
}

StockMenu MenuBySector(const store::StockMaster& master) {
  StockMenu root{std::string(kSectorMenu), std::string(kSectorMenu), {}, {}};
  for (SectorStocks& sector : StocksBySector(master)) {
    const std::string name(sector.name);
    StockMenu menu{name, Caption(kSectorMenu, name), {}, {}};
    for (size_t i = 0; i < kListings.size(); ++i) {
      auto& stocks = sector.by_listing.at(i);
      if (stocks.empty()) continue;
      SortByCode(stocks, master);
      const std::string market(store::ListingName(kListings.at(i)));
      std::string inner = name;
      inner.append("：").append(market);
      menu.menus.push_back({market, Caption(kSectorMenu, inner), std::move(stocks), {}});
    }
    if (!menu.menus.empty()) root.menus.push_back(std::move(menu));
  }
  return root;
}

/// Of the hidden columns behind the four that are shown.
constexpr size_t kEntryInk = 5;
constexpr size_t kTextInk = 6;

std::vector<base::Column> MenuColumns(const settings::MenuDisplaySettings& display) {
  const auto shown = [](const char* heading, const char* longest, size_t ink) {
    return base::Column{.heading = heading, .longest_text = longest, .ink = ink};
  };
  const auto hidden = [](base::ColumnKind kind) {
    return base::Column{.kind = kind, .is_hidden = true};
  };
  std::vector<base::Column> columns = {
      shown("コード", display.code_display == 1 ? "WWWW.W（ＮＹ市場）" : "WWWW.W", kEntryInk),
      shown("銘柄名", "", kEntryInk),
      shown("業種", "テクノロジー", kTextInk),
      shown("市場", "ＮＹ市場", kTextInk),
      hidden(base::ColumnKind::kCode),
      hidden(base::ColumnKind::kColor),
      hidden(base::ColumnKind::kColor)};
  columns[0].is_hidden = display.code_display == 2;
  columns[1].is_hidden = display.name_display == 2;
  columns[2].is_hidden = display.category_display == 0;
  return columns;
}

}  // namespace

std::vector<StockMenu> MakeStockMenus(const store::StockMaster& master,
                                      std::span<const store::IndexEntry> index) {
  return {MenuByCode(master), MenuBySyllabary(master, index), MenuBySector(master)};
}

MenuLine LineOf(const store::StockRecord& stock, std::string_view company,
                const settings::MenuDisplaySettings& display) {
  MenuLine line;
  if (display.code_display != 2) line.code = stock.code.Text();
  if (display.code_display == 1) {
    line.code += "（" + std::string(store::ListingName(stock.listing)) + "）";
  }
  if (display.name_display != 2) {
    const bool is_long = display.name_display == 1 && !company.empty();
    line.name = is_long ? company : std::string_view(stock.name);
  }
  if (display.category_display == 1) line.sector = store::SectorName(stock.sector);
  if (display.category_display == 2) line.sector = std::to_string(stock.sector);
  return line;
}

base::Color ColorOf(const store::StockRecord& stock, const settings::MenuColorSettings& colors) {
  const bool is_common = stock.kind == store::kKindCommonStock;
  switch (stock.listing) {
    case 1:
      return is_common ? colors.nyse_common : colors.nyse_other;
    case 2:
      if (stock.kind == store::kKindSmallCap) return colors.nasdaq_small;
      return is_common ? colors.nasdaq_common : colors.nasdaq_other;
    default:
      return is_common ? colors.elsewhere_common : colors.elsewhere_other;
  }
}

std::vector<std::string> CompaniesByRecord(const store::StockMaster& master,
                                           std::span<const store::IndexEntry> index) {
  std::vector<std::string> companies(master.Stocks().size() + 2);
  for (const store::IndexEntry& entry : index) {
    const auto record = static_cast<size_t>(entry.record.Value());
    if (record >= 2 && record < companies.size()) companies[record] = entry.company;
  }
  return companies;
}

base::Table TableOfMenu(const store::StockMaster& master, std::span<const MasterRecord> stocks,
                        std::span<const std::string> companies,
                        const settings::MenuDisplaySettings& display,
                        const settings::MenuColorSettings& colors) {
  base::Table table;
  table.columns = MenuColumns(display);
  table.rows.reserve(stocks.size());
  for (const MasterRecord record : stocks) {
    const store::StockRecord& stock = master.Stock(record);
    MenuLine line = LineOf(stock, companies[static_cast<size_t>(record.Value())], display);
    table.rows.push_back({std::move(line.code), std::move(line.name), std::move(line.sector),
                          std::string(store::ListingName(stock.listing)),
                          std::string(stock.code.Text()), ColorOf(stock, colors), colors.text});
  }
  return table;
}

}  // namespace orin::lists
