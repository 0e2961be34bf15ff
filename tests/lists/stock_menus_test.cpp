#include "lists/stock_menus.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>

#include "settings/settings.h"
#include "support/store_builder.h"

namespace orin::lists {
namespace {

using base::MasterRecord;
using Strings = std::vector<std::string>;

store::StockRecord Stock(std::string_view code, int16_t listing, int16_t sector = 100,
                         int16_t kind = store::kKindCommonStock) {
  store::StockRecord stock;
  if (!code.empty()) stock.code = support::Code(code);
  stock.listing = listing;
  stock.sector = sector;
  stock.kind = kind;
  stock.name = code;
  return stock;
}

store::StockMaster Master(std::vector<store::StockRecord> stocks) {
  return {store::MasterHeader(), std::move(stocks)};
}

Strings Codes(const store::StockMaster& master, const StockMenu& menu) {
  Strings codes;
  for (const MasterRecord record : menu.stocks) {
    codes.emplace_back(master.Stock(record).code.Text());
  }
  return codes;
}

Strings Labels(const StockMenu& menu) {
  Strings labels;
  for (const StockMenu& entry : menu.menus) labels.push_back(entry.label);
  return labels;
}

const StockMenu* WithCaption(const std::vector<StockMenu>& menus, std::string_view caption) {
  for (const StockMenu& menu : menus) {
    if (menu.caption == caption) return &menu;
    if (const StockMenu* found = WithCaption(menu.menus, caption)) return found;
  }
  return nullptr;
}

/// The codes of the menu of that caption.
Strings CodesOf(const store::StockMaster& master, const std::vector<StockMenu>& menus,
                std::string_view caption) {
  const StockMenu* menu = WithCaption(menus, caption);
  if (menu == nullptr) {
    ADD_FAILURE() << "no menu " << caption;
    return {};
  }
  return Codes(master, *menu);
}

TEST(StockMenus, EveryLetterOfEveryMarketHasItsCaptionEvenWithoutStocks) {
  const auto menus = MakeStockMenus(store::StockMaster(), {});
  ASSERT_EQ(menus.size(), 3U);
  EXPECT_EQ(menus[0].caption, "証券コードメニュー");
  EXPECT_EQ(Labels(menus[0]), (Strings{"ＮＹ市場", "ＮＡ市場", "他市場"}));
  for (const StockMenu& market : menus[0].menus) EXPECT_EQ(market.menus.size(), 27U);
  for (const char* caption :
       {"証券コードメニュー（ＮＹ市場：Ａ）", "証券コードメニュー（ＮＹ市場：Ｚ）",
        "証券コードメニュー（ＮＹ市場：その他）", "証券コードメニュー（ＮＡ市場：Ｍ）",
        "証券コードメニュー（他市場：その他）"}) {
    EXPECT_NE(WithCaption(menus, caption), nullptr) << caption;
  }
  EXPECT_EQ(menus[0].menus[0].menus.back().label, "その他");
  EXPECT_TRUE(menus[1].menus.empty());
  EXPECT_TRUE(menus[2].menus.empty());
}

TEST(StockMenus, LetterHoldsTheStocksOfItsMarketInTheOrderOfTheirCodes) {
  const auto master = Master({Stock("AXP", 1), Stock("^DJI", 3), Stock("aa", 1), Stock("AAPL", 2),
                              Stock("ABBV", 1), Stock("3M", 1), Stock("Z", 3)});
  const auto menus = MakeStockMenus(master, {});
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（ＮＹ市場：Ａ）"),
            (Strings{"ABBV", "AXP", "aa"}));
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（ＮＡ市場：Ａ）"), Strings{"AAPL"});
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（ＮＹ市場：その他）"), Strings{"3M"});
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（他市場：その他）"), Strings{"^DJI"});
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（他市場：Ｚ）"), Strings{"Z"});
}

TEST(StockMenus, EmptiedRecordIsInNoMenu) {
  const auto master = Master({Stock("", 1, 400), Stock("", 2, 0)});
  const std::vector<store::IndexEntry> index = {{"", "ｱ", {}, MasterRecord(2)}};
  const auto menus = MakeStockMenus(master, index);
  EXPECT_EQ(CodesOf(master, menus, "証券コードメニュー（ＮＹ市場：その他）"), Strings());
  EXPECT_TRUE(menus[1].menus.empty());
  EXPECT_TRUE(menus[2].menus.empty());
}

TEST(StockMenus, ReadingChoosesTheRowOfTheSyllabary) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"ｱｯﾌﾟﾙ", "ア行"},      {"ｵﾗｸﾙ", "ア行"},       {"ｳﾞｨｻﾞ", "ア行"},    {"ｺﾞｰﾙﾄﾞﾏﾝ", "カ行"},
      {"ソニー", "サ行"},     {"ｯﾂ", "タ行"},         {"ﾉ", "ナ行"},        {"ﾎﾟ", "ハ行"},
      {"ﾏ", "マ行"},          {"ｬ", "ヤ行"},          {"ﾛ", "ラ行"},        {"ﾜ", "ワ行"},
      {"ﾝ", "ワ行"},          {"ｦ", "ワ行"},          {"BOEING", "Ｂ"},     {"ｚ", "Ｚ"},
      {"3M", "数字・その他"}, {"日", "数字・その他"}, {"", "数字・その他"}, {"ｰ", "数字・その他"},
  };
  const auto master = Master({Stock("X", 1)});
  for (const auto& [reading, row] : cases) {
    const std::vector<store::IndexEntry> index = {
        {"", reading, support::Code("X"), MasterRecord(2)}};
    const auto menus = MakeStockMenus(master, index);
    ASSERT_EQ(menus[1].menus.size(), 1U) << reading;
    EXPECT_EQ(menus[1].menus[0].label, row) << reading;
    EXPECT_EQ(menus[1].menus[0].caption, "５０音順メニュー（" + std::string(row) + "）");
  }
}

TEST(StockMenus, SyllabaryKeepsTheOrderOfTheIndexAndPassesOverWrongEntries) {
  const auto master = Master({Stock("A", 1), Stock("B", 2), Stock("C", 3)});
  const std::vector<store::IndexEntry> index = {
      {"", "ﾜ", support::Code("B"), MasterRecord(3)},
      {"", "ｱ", support::Code("C"), MasterRecord(4)},
      {"", "ｱ", support::Code("A"), MasterRecord(2)},
      {"", "ｱ", support::Code("A"), MasterRecord(3)},  // record of another stock
      {"", "ｱ", support::Code("A"), MasterRecord(5)},  // behind the last record
      {"", "ｱ", support::Code("A"), MasterRecord()},   // none
      {"", "ｱ", support::Code("A"), MasterRecord(-7)},
  };
  const auto menus = MakeStockMenus(master, index);
  EXPECT_EQ(Labels(menus[1]), (Strings{"ア行", "ワ行"}));
  EXPECT_EQ(CodesOf(master, menus, "５０音順メニュー（ア行）"), (Strings{"C", "A"}));
}

TEST(StockMenus, SectorsAreInTheOrderOfTheirNumbersAndUnknownOnesComeLast) {
  const auto master = Master({Stock("IDX", 3, 926), Stock("B2", 1, 421), Stock("OLD", 2, 0),
                              Stock("B1", 1, 400), Stock("N", 2, 499), Stock("RAW", 1, 199),
                              Stock("BIG", 1, 927), Stock("ODD", 7, 300)});
  const auto menus = MakeStockMenus(master, {});
  EXPECT_EQ(Labels(menus[2]), (Strings{"原材料", "金融", "指数", "未登録"}));
  EXPECT_EQ(CodesOf(master, menus, "業種別メニュー（金融：ＮＹ市場）"), (Strings{"B1", "B2"}));
  EXPECT_EQ(CodesOf(master, menus, "業種別メニュー（金融：ＮＡ市場）"), Strings{"N"});
  EXPECT_EQ(WithCaption(menus, "業種別メニュー（金融：他市場）"), nullptr);
  EXPECT_EQ(CodesOf(master, menus, "業種別メニュー（未登録：ＮＹ市場）"), Strings{"BIG"});
  EXPECT_EQ(CodesOf(master, menus, "業種別メニュー（未登録：ＮＡ市場）"), Strings{"OLD"});
}

TEST(StockMenuLine, SettingsChooseWhatIsShown) {
  store::StockRecord stock = Stock("GS", 1, 421);
  stock.name = "GOLDMAN SACHS GR";
  const std::string company = "The Goldman Sachs Group, Inc.";
  struct Case {
    settings::MenuDisplaySettings display;
    std::string company;
    Strings line;
  };
  const std::vector<Case> cases = {
      {{0, 0, 0}, company, {"GS", "GOLDMAN SACHS GR", ""}},
      {{1, 1, 1}, company, {"GS（ＮＹ市場）", company, "金融"}},
      {{2, 2, 2}, company, {"", "", "421"}},
      {{0, 0, 1}, "", {"GS", "GOLDMAN SACHS GR", ""}},  // no registered name
  };
  for (const Case& one : cases) {
    const MenuLine line = LineOf(stock, one.company, one.display);
    EXPECT_EQ((Strings{line.code, line.name, line.sector}), one.line);
  }
}

TEST(StockMenuLine, ColourIsThatOfTheMarketAndKind) {
  settings::MenuColorSettings colors = settings::Settings().menu_color;
  colors.nyse_common = {1, 0, 0};
  colors.nyse_other = {2, 0, 0};
  colors.nasdaq_common = {3, 0, 0};
  colors.nasdaq_small = {4, 0, 0};
  colors.nasdaq_other = {5, 0, 0};
  colors.elsewhere_common = {6, 0, 0};
  colors.elsewhere_other = {7, 0, 0};
  struct Case {
    int16_t listing;
    int16_t kind;
    uint8_t red;
  };
  for (const auto& [listing, kind, red] :
       {Case{1, 1, 1}, Case{1, 2, 2}, Case{1, 9, 2}, Case{2, 1, 3}, Case{2, 2, 4}, Case{2, 3, 5},
        Case{3, 1, 6}, Case{3, 9, 7}, Case{0, 1, 6}}) {
    EXPECT_EQ(ColorOf(Stock("X", listing, 100, kind), colors).red, red) << listing << " " << kind;
  }
}

}  // namespace
}  // namespace orin::lists
