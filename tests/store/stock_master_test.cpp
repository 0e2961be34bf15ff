#include "store/stock_master.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>

#include "base/coding.h"
#include "store/file_names.h"
#include "store/name_index.h"
#include "store/store_check.h"
#include "store/trend_lines.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::Price;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

StockRecord Record(std::string_view code, int16_t listing = 1, int16_t sector = 0) {
  StockRecord stock;
  if (!code.empty()) stock.code = Code(code);
  stock.listing = listing;
  stock.sector = sector;
  stock.name = std::string(code);
  return stock;
}

std::vector<int32_t> Numbers(std::span<const base::MasterRecord> records) {
  std::vector<int32_t> numbers;
  for (const base::MasterRecord record : records) numbers.push_back(record.Value());
  return numbers;
}

TEST(StockCode, IsEightPrintableCharactersWithoutCommaAndBlank) {
  for (const std::string_view good :
       {"A",    "AAPL", "^DJI", "BRK.B", "BF-B", "BF/B", "x1234567", "A   ", "..",      ".A",
        "A\\B", "C:",   "A*",   "A?",    "A\"",  "<A>",  "A|",       "%2F",  "!@@@@@@", "~"}) {
    EXPECT_TRUE(StockCode::Parse(good)) << good;
  }
  for (const std::string_view bad : {"", "    ", "123456789", "A,B", ",", "A B", " A", "A\t", "A\n",
                                     "あ", "\xB1", "A\x7F", "!@@@@@@@"}) {
    EXPECT_FALSE(StockCode::Parse(bad)) << bad;
  }
  EXPECT_EQ(Code("AAPL").Padded(), "AAPL    ");
  EXPECT_EQ(Code("AAPL  ").Text(), "AAPL");
}

TEST(StockMaster, FindsTheFirstStockOfACode) {
  const StockMaster master({}, {Record("A"), Record(""), Record("B"), Record("A")});
  EXPECT_EQ(master.Find(Code("A")).Value(), 2);
  EXPECT_EQ(master.Find(Code("B")).Value(), 4);
  EXPECT_TRUE(master.Find(Code("a")).IsNone());
  EXPECT_TRUE(master.Find(StockCode()).IsNone());
  EXPECT_EQ(master.Stock(base::MasterRecord(4)).name, "B");
}

TEST(StockMaster, InitialLettersRegardlessOfCase) {
  const StockMaster master(
      {}, {Record("Apple"), Record("apple"), Record("Zoo"), Record("^DJI"), Record("9A")});
  EXPECT_THAT(Numbers(master.WithInitial(1)), ElementsAre(2, 3));
  EXPECT_THAT(Numbers(master.WithInitial(26)), ElementsAre(4));
  EXPECT_THAT(Numbers(master.WithInitial(0)), ElementsAre(5, 6));
  for (int letter = 0; letter <= 26; ++letter) {
    EXPECT_THAT(StockMaster().WithInitial(letter), IsEmpty());
  }
}

TEST(StockMaster, SectorsGroupedByMarket) {
  const StockMaster master(
      {}, {Record("A", 1, 926), Record("B", 3, 100), Record("C", 1, 100), Record("D", 2, 99),
           Record("E", 2, 927), Record("F", 4, 100), Record("G", 3, 100)});
  const auto groups = master.GroupBySector();
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].sector, 100);
  EXPECT_THAT(Numbers(groups[0].by_listing[0]), ElementsAre(4));
  EXPECT_THAT(groups[0].by_listing[1], IsEmpty());
  EXPECT_THAT(Numbers(groups[0].by_listing[2]), ElementsAre(3, 8));
  EXPECT_EQ(groups[1].sector, 926);
}

TEST(StockMaster, NamesOfMarketsAndSectors) {
  EXPECT_EQ(ListingName(1), "ＮＹ市場");
  EXPECT_EQ(ListingName(3), "他市場");
  EXPECT_EQ(ListingName(0), "未登録");
  EXPECT_EQ(ListingName(4), "未登録");
  EXPECT_EQ(SectorName(100), "原材料");
  EXPECT_EQ(SectorName(899), "テクノロジー");
  EXPECT_EQ(SectorName(926), "指数");
  EXPECT_EQ(SectorName(99), "未登録");
  EXPECT_EQ(SectorName(927), "未登録");
}

TEST(NameIndex, ReadingIsHalfWidthUpperCase) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"ＮＹダウ工業株30種", "NYﾀﾞｳ工業株30種"},
      {"Apple Inc.", "APPLE INC."},
      {"アップル", "ｱｯﾌﾟﾙ"},
      {"ぱナソニック　ヴェ", "ﾊﾟﾅｿﾆｯｸ ｳﾞｪ"},
      {"ﾃｽﾄ・「ー」", "ﾃｽﾄ･｢ｰ｣"},
      {"", ""},
  };
  for (const auto& [name, reading] : cases) {
    EXPECT_EQ(ReadingOfName(name), reading);
  }
}

TEST(NameIndex, IsInSyllabaryOrderAndKeepsKnownReadings) {
  std::vector<StockRecord> stocks;
  for (const std::string_view name :
       {"ン", "ヲ", "ワ", "ガス", "カサ", "ハードル", "ハトバ", "A", "ア"}) {
    StockRecord stock = Record("X" + std::to_string(stocks.size()));
    stock.name = name;
    stocks.push_back(stock);
  }
  const StockMaster master({}, stocks);
  const std::vector<IndexEntry> known = {{"別名", "ｲﾛﾊ", Code("X0"), base::MasterRecord(9)}};
  const std::vector<CompanyName> companies = {{base::MasterRecord(3), "ヲ会社"}};
  const auto entries = DecodeNameIndex(BuildNameIndex(master, known, companies).value());
  std::vector<std::string> names;
  for (const IndexEntry& entry : entries) names.push_back(entry.company);
  EXPECT_THAT(names,
              ElementsAre("A", "ア", "別名", "カサ", "ガス", "ハトバ", "ハードル", "ワ", "ヲ会社"));
  EXPECT_EQ(entries[2].record.Value(), 2);
  EXPECT_EQ(entries[8].reading, "ｦ会社");
}

TEST(TrendLines, AreKeptByStock) {
  const orin::support::ScratchDirectory scratch;
  const StoreLocation location = {scratch.Path(), scratch.Path()};
  TrendLines lines;
  lines[0] = {Day("2020/01/06"), Price(10), Day("2020/01/10"), Price(12.5)};
  lines[9] = {Day("2019/01/06"), Price(1), Day("2020/01/10"), Price(2)};
  auto& files = base::NativeFileSystem();
  EXPECT_EQ(LoadTrendLines(location, base::SlotRecord(5)).value(), TrendLines());
  ASSERT_TRUE(SaveTrendLines(location, base::SlotRecord(5), lines, files));
  EXPECT_EQ(LoadTrendLines(location, base::SlotRecord(5)).value(), lines);
  EXPECT_EQ(LoadTrendLines(location, base::SlotRecord(4)).value(), TrendLines());
  EXPECT_EQ(LoadTrendLines(location, base::SlotRecord(6)).value(), TrendLines());
  EXPECT_FALSE(SaveTrendLines(location, base::SlotRecord(0), lines, files));
}

TEST(TrendLines, AreClearedForTheirFirstDateAloneAndElseWrittenAsTheyWereRead) {
  constexpr double kMonday = 43836;  // 2020/01/06
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    double first;
    double second;
    const char* first_day;  // null: cleared
    const char* second_day = nullptr;
  };
  for (const Case& each :
       std::initializer_list<Case>{{kMonday + 0.99, kMonday + 4.5, "2020/01/06", "2020/01/10"},
                                   {2958465.75, -657434.75, "9999/12/31", "0100/01/01"},
                                   {kMonday, 2958466, "2020/01/06"},
                                   {kMonday, -1e300, "2020/01/06"},
                                   {kMonday, nan, "2020/01/06"},
                                   {kMonday, 0, "2020/01/06"},
                                   {2958466, kMonday, nullptr},
                                   {-657435, kMonday, nullptr},
                                   {nan, kMonday, nullptr},
                                   {0, kMonday, nullptr}}) {
    std::string record(kTrendRecordLength, '\0');
    base::PutDouble(record.data() + trend_offset::kFirstDate, each.first);
    base::PutCurrency(record.data() + trend_offset::kFirstPrice, Price(10));
    base::PutDouble(record.data() + trend_offset::kSecondDate, each.second);
    base::PutCurrency(record.data() + trend_offset::kSecondPrice, Price(12.5));
    TrendLines lines = DecodeTrendLines(record);
    const TrendLine& line = lines[0];
    if (each.first_day == nullptr) {
      EXPECT_EQ(line, TrendLine()) << each.first;
      EXPECT_EQ(EncodeTrendLines(lines), std::string(kTrendRecordLength, '\0'));
      continue;
    }
    EXPECT_EQ(line.first_date.Day(), Day(each.first_day));
    EXPECT_EQ(line.second_date.Day(),
              each.second_day == nullptr ? base::Date() : Day(each.second_day));
    EXPECT_EQ(line.second_price, Price(12.5));
    // Another line of the stock is drawn.
    lines[1] = {Day("2020/01/06"), Price(1), Day("2020/01/10"), Price(2)};
    EXPECT_EQ(EncodeTrendLines(lines).substr(0, kTrendLineLength),
              record.substr(0, kTrendLineLength))
        << each.second;
  }
}

TEST(Purge, TakesMarkedStocksOutOfEveryListAndKeepsTheSlotsOfTheOthers) {
  StoreBuilder builder("purge");
  const size_t days = 901;
  builder.Days(Weekdays("2015/01/05", days)).Stock("A", {FlatBar(1)}).Stock("B", {FlatBar(2)});
  builder.Stock("C", {FlatBar(3)});
  StockStore store = builder.Open(Access::kWrite);
  StockList deleted;
  deleted.stocks = {{Code("A"), "A", base::MasterRecord(2), 1},
                    {Code("C"), "C", base::MasterRecord(4), -1}};
  auto& files = base::NativeFileSystem();
  const auto path = PathOf(store.Location(), {FileKind::kDeleted, 0});
  ASSERT_TRUE(base::ReplaceFile(files, path, EncodeStockList(deleted).value()));
  EXPECT_EQ(store.PurgeDeletedStocks().value(), 1);
  ASSERT_EQ(store.Master().Stocks().size(), 2U);
  EXPECT_TRUE(store.Master().Find(Code("A")).IsNone());
  EXPECT_EQ(store.Master().Stock(store.Master().Find(Code("C"))).slot.Value(), 4);
  EXPECT_EQ(orin::support::AllBars(store, "C")[0].close, Price(3));
  const StockList rest = DecodeStockList(base::ReadFile(path).value());
  ASSERT_EQ(rest.stocks.size(), 1U);
  EXPECT_EQ(rest.stocks[0].record.Value(), 3);
  EXPECT_EQ(rest.DeletionCounter(), 1);
  base::SilentProgress progress;
  EXPECT_THAT(CheckStore(store.Location(), progress).value(), IsEmpty());
  EXPECT_EQ(store.PurgeDeletedStocks().value(), 0);
}

TEST(Purge, SlotOfAPurgedStockIsEmptyForTheNextOne) {
  StoreBuilder builder("purge_last");
  builder.Days(Weekdays("2015/01/05", 901)).Stock("A").Stock("B", {FlatBar(2)});
  StockStore store = builder.Open(Access::kWrite);
  StockList deleted;
  deleted.stocks = {{Code("B"), "B", base::MasterRecord(3), 1}};
  auto& files = base::NativeFileSystem();
  TrendLines lines;
  lines[0] = {Day("2020/01/06"), Price(10), Day("2020/01/10"), Price(12.5)};
  ASSERT_TRUE(SaveTrendLines(store.Location(), base::SlotRecord(3), lines, files));
  const auto path = PathOf(store.Location(), {FileKind::kDeleted, 0});
  ASSERT_TRUE(base::ReplaceFile(files, path, EncodeStockList(deleted).value()));
  ASSERT_EQ(store.PurgeDeletedStocks().value(), 1);
  base::SilentProgress progress;
  EXPECT_THAT(CheckStore(store.Location(), progress).value(), IsEmpty());
  ASSERT_TRUE(store.AddStocks(std::vector{NewStock{Code("N"), "n"}}));
  EXPECT_EQ(store.Master().Stocks().back().slot.Value(), 3);
  EXPECT_FALSE(orin::support::AllBars(store, "N")[0].HasData());
  EXPECT_EQ(LoadTrendLines(store.Location(), base::SlotRecord(3)).value(), TrendLines());
}

TEST(Purge, NeedsTenPriceFiles) {
  StoreBuilder builder("purge_few");
  builder.Days(Weekdays("2015/01/05", 900)).Stock("A");
  const auto refused = builder.Open(Access::kWrite).PurgeDeletedStocks();
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().message, "データファイルは１０ファイル以上必要です。");
}

}  // namespace
}  // namespace orin::store
