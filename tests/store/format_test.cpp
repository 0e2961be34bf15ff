#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <string>

#include "store/companion_formats.h"
#include "store/master_format.h"
#include "store/price_format.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using orin::support::BarOf;
using orin::support::Code;
using orin::support::Day;
using orin::support::Price;

/// The bytes of "41 42 00"; blanks count for nothing.
std::string Bytes(std::string hex) {
  std::erase_if(hex, [](unsigned char c) { return std::isspace(c) != 0; });
  std::string bytes;
  for (size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

TEST(MasterFormat, StockRecordHasItsFieldsAtTheirOffsets) {
  const std::string record = Bytes(
      "4141504C20202020 0300 0200 0100 2003 FFFF"  // AAPL, 3, 2, 1, 800, -1
      "83418362837683 8B2020202020202020"          // アップル
      "3412 30313233343536373839414243444546");    // reserved
  ASSERT_EQ(record.size(), kMasterRecordLength);
  const StockRecord stock = DecodeStockRecord(record);
  EXPECT_EQ(stock.code, Code("AAPL"));
  EXPECT_EQ(stock.slot.Value(), 3);
  EXPECT_EQ(stock.listing, 2);
  EXPECT_EQ(stock.kind, 1);
  EXPECT_EQ(stock.sector, 800);
  EXPECT_EQ(stock.rank, -1);
  EXPECT_EQ(stock.name, "アップル");
  const auto encoded = EncodeStockRecord(stock);
  ASSERT_TRUE(encoded);
  EXPECT_EQ(AsText(*encoded), record);
}

TEST(MasterFormat, HeaderHasItsFieldsAtTheirOffsetsAndKeepsTheReservedOnes) {
  const std::string record =
      Bytes("3230323030313130 0100 0200 0E00 3B00 0500 0600") +  // 20200110, 1, 2, 14, 59, 5, 6
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdef";
  ASSERT_EQ(record.size(), kMasterRecordLength);
  const MasterHeader header = DecodeMasterHeader(record);
  EXPECT_EQ(header.date, Day("2020/01/10"));
  EXPECT_EQ(header.date_record, 1);
  EXPECT_EQ(header.first_file, 2);
  EXPECT_EQ(header.current_file, 14);
  EXPECT_EQ(header.current_record, 59);
  EXPECT_EQ(header.credit_first, 5);
  EXPECT_EQ(header.credit_current, 6);
  EXPECT_EQ(AsText(EncodeMasterHeader(header)), record);
}

TEST(MasterFormat, NameIsCutAtACharacterAndRefusedWhereItCannotBeWritten) {
  StockRecord stock;
  stock.code = Code("A");
  stock.name = "xＡあいうえおかきくけ";
  const auto encoded = EncodeStockRecord(stock);
  ASSERT_TRUE(encoded);
  EXPECT_EQ(DecodeStockRecord(AsText(*encoded)).name, "xＡあいうえおか");
  EXPECT_EQ((*encoded)[master_offset::kReserved - 1], ' ');
  stock.name = "한국";
  EXPECT_FALSE(EncodeStockRecord(stock));
}

TEST(MasterFormat, GarbageDecodesToBlanks) {
  const std::string garbage(kMasterRecordLength, '\xFF');
  EXPECT_EQ(DecodeStockRecord(garbage).code, StockCode());
  EXPECT_EQ(DecodeStockRecord(garbage).slot.Value(), -1);
  EXPECT_TRUE(DecodeMasterHeader(garbage).date.IsNone());
  std::string emptied(kMasterRecordLength, ' ');
  emptied.replace(0, 8, "!@@@@@@@");
  EXPECT_EQ(DecodeStockRecord(emptied).code, StockCode());
}

TEST(CompanionFormats, IndexEntryHasItsFieldsAtTheirOffsets) {
  const std::string record = "Apple Inc." + std::string(40, ' ') + Bytes("B1AFCCDFD9") +  // ｱｯﾌﾟﾙ
                             std::string(45, ' ') + "AAPL    " + Bytes("0302");
  ASSERT_EQ(record.size(), kIndexRecordLength);
  const IndexEntry entry = DecodeIndexEntry(record);
  EXPECT_EQ(entry.company, "Apple Inc.");
  EXPECT_EQ(entry.reading, "ｱｯﾌﾟﾙ");
  EXPECT_EQ(entry.code, Code("AAPL"));
  EXPECT_EQ(entry.record.Value(), 0x203);
  EXPECT_EQ(EncodeIndexEntry(entry).value(), record);
}

TEST(CompanionFormats, DeletedListKeepsItsHeaderAndMarksEmptiedEntries) {
  const std::string bytes = Bytes("0200 0A00 0B00 0C00 0D00") + std::string(18, 'r') +
                            "AAPL    APPLE           " + Bytes("0300 0100") +
                            "!@@@@@@@OLD             " + Bytes("0000 FFFF") + "beyond the count";
  StockList list = DecodeStockList(bytes);
  ASSERT_EQ(list.stocks.size(), 2U);
  EXPECT_EQ(list.stocks[0].code, Code("AAPL"));
  EXPECT_EQ(list.stocks[0].record.Value(), 3);
  EXPECT_EQ(list.stocks[0].flag, static_cast<int16_t>(DeletionState::kDelete));
  EXPECT_EQ(list.stocks[1].code, StockCode());
  EXPECT_EQ(list.stocks[1].flag, static_cast<int16_t>(DeletionState::kTrue));
  EXPECT_EQ(list.DeletionCounter(), 13);
  EXPECT_EQ(EncodeStockList(list).value(), bytes.substr(0, 3 * kListRecordLength));
  list.SetDeletionCounter(14);
  EXPECT_EQ(EncodeStockList(list).value().substr(8, 2), Bytes("0E00"));
}

TEST(CompanionFormats, ListHoldsWhatTheHeaderCountsAndTheFileHas) {
  const std::string entry = "A       A               " + Bytes("0200 0000");
  const auto with_count = [&](const std::string& count) {
    return DecodeStockList(Bytes(count) + std::string(26, '\0') + entry + entry.substr(0, 20));
  };
  EXPECT_EQ(with_count("FF7F").stocks.size(), 1U);
  EXPECT_EQ(with_count("0000").stocks.size(), 0U);
  EXPECT_EQ(with_count("FFFF").stocks.size(), 0U);
  EXPECT_EQ(DecodeStockList("short").stocks.size(), 0U);
}

TEST(PriceFormat, BarIsFiveCurrenciesAndNoDataIsMinusOne) {
  std::string entry(kBarLength, 'x');
  EncodeBar(BarOf(1, 2.5, -1, 0.0001, 300), entry.data());
  EXPECT_EQ(entry, Bytes("1027000000000000 A861000000000000 F0D8FFFFFFFFFFFF"
                         "0100000000000000 C0C62D0000000000"));
  base::Bar bar = BarOf(1, 2.5, -1, 0.0001, 300);
  bar.date = Day("2020/01/10");
  EXPECT_EQ(DecodeBar(entry.data(), bar.date), bar);
  const std::string no_data = std::string(32, '\0') + Bytes("F0D8FFFFFFFFFFFF");
  EXPECT_EQ(NoDataEntries(2), no_data + no_data);
  EncodeBar(BarOf(1, 2, 3, 4, -1), entry.data());
  EXPECT_EQ(entry, no_data);
}

TEST(PriceFormat, DateEntryIsADoubleAndZeros) {
  const std::string entry = Bytes("00000000C066E540") + std::string(24, '\0');  // 43830
  EXPECT_EQ(EncodeDateEntry(Day("2019/12/31")), entry.substr(0, kDateEntryLength));
  EXPECT_EQ(DecodeDateEntry(entry.data()), Day("2019/12/31"));
  EXPECT_EQ(DecodeDateEntry(std::string(32, '\0').data()), base::Date());
  EXPECT_FALSE(DecodeDateEntry(Bytes("000000000000F87F").data()));  // NaN
  EXPECT_FALSE(DecodeDateEntry(Bytes("000000000000E03F").data()));  // 0.5
}

TEST(PriceFormat, CreditAndIntradayEntries) {
  std::string credit(kCreditEntryLength, 'x');
  EncodeCreditBalance({Price(1), Price(2)}, credit.data());
  EXPECT_EQ(credit, Bytes("1027000000000000 204E000000000000"));
  EXPECT_EQ(DecodeCreditBalance(credit.data()), (CreditBalance{Price(1), Price(2)}));
  std::string intraday(kIntradayEntryLength, 'x');
  const IntradayBar bar = {34200, BarOf(1, 1, 1, 1, 1)};
  EncodeIntradayBar(bar, intraday.data());
  EXPECT_EQ(intraday.substr(0, 12), Bytes("98850000 1027000000000000"));
  EXPECT_EQ(DecodeIntradayBar(intraday.data()), bar);
}

TEST(ReservedFields, OfNewRecordsHaveZeroNumbersAndBlankTexts) {
  const std::string zeros(10, '\0');
  EXPECT_EQ(AsText(EncodeMasterHeader(MasterHeader())).substr(20), zeros + std::string(22, ' '));
  EXPECT_EQ(AsText(EncodeStockRecord(StockRecord()).value()).substr(34),
            zeros.substr(0, 2) + std::string(16, ' '));
}

}  // namespace
}  // namespace orin::store
