#include "store/company_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/store_check.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using orin::support::Code;
using orin::support::Price;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const CompanyField& Field(std::string_view name) { return *FindCompanyField(name); }

const StockRecord& StockOf(const StockStore& store, std::string_view code) {
  return store.Master().Stock(store.Master().Find(Code(code)));
}

StockStore OpenThree(const char* directory, size_t days = 0) {
  StoreBuilder builder(directory);
  builder.Days(Weekdays("2015/01/05", days)).Stock("A").Stock("B").Stock("C");
  return builder.Open(Access::kWrite);
}

/// Without its lock a store with findings can be checked.
void StopWriting(StockStore& store) {
  const StoreLocation location = store.Location();
  auto opened = StockStore::Open(location, {}, base::NativeFileSystem());
  ASSERT_TRUE(opened);
  store = std::move(*opened);
}

void Write(const StoreLocation& location, const StoreFile& file, std::string_view bytes) {
  ASSERT_TRUE(base::ReplaceFile(base::NativeFileSystem(), PathOf(location, file), bytes));
}

std::string Read(const StoreLocation& location, const StoreFile& file) {
  return base::ReadFile(PathOf(location, file)).value();
}

TEST(CompanyTable, EveryFieldOfEveryStockIsKeptApart) {
  StockStore store = OpenThree("company_fields");
  CompanyTable table;
  int32_t value = -40;
  for (const char* code : {"A", "C"}) {
    for (const CompanyField& field : kCompanyFields) {
      ASSERT_TRUE(table.Set(StockOf(store, code), field, base::Currency::FromInt(value++)));
    }
  }
  ASSERT_TRUE(store.SaveCompanies(table));
  const CompanyTable loaded = CompanyTable::Load(store.Location()).value();
  value = -40;
  for (const char* code : {"A", "C"}) {
    for (const CompanyField& field : kCompanyFields) {
      EXPECT_EQ(loaded.Value(StockOf(store, code), field), base::Currency::FromInt(value++))
          << code << field.name;
    }
  }
  for (const CompanyField& field : kCompanyFields) {
    EXPECT_FALSE(loaded.Value(StockOf(store, "B"), field)) << field.name;
  }
  EXPECT_EQ(Read(store.Location(), kCompaniesFile).size(), 4U * 128);
  EXPECT_EQ(Read(store.Location(), kStatementsFile).size(), 4U * 256);
  EXPECT_THAT(support::FindingsOf(store.Location()), IsEmpty());
}

TEST(CompanyTable, RecordOfAnotherCodeDoesNotSpeakForTheStockOfTheSlot) {
  const StockStore store = OpenThree("company_codes");
  CompanyTable table;
  const StockRecord& old = StockOf(store, "B");
  table.Set(old, Field("株価収益率"), Price(12.5));
  table.Set(old, Field("売買単位"), Price(100));
  StockRecord next = old;
  next.code = Code("BB");
  EXPECT_FALSE(table.Value(next, Field("株価収益率")));
  table.Set(next, Field("売買単位"), Price(1));
  EXPECT_EQ(table.Value(next, Field("売買単位")), Price(1));
  EXPECT_FALSE(table.Value(next, Field("株価収益率")));
  EXPECT_FALSE(table.Value(old, Field("売買単位")));
}

TEST(CompanyTable, ForgottenValuesLeaveARecordThatIsNobodys) {
  const StockStore store = OpenThree("company_forget");
  const StockRecord& stock = StockOf(store, "A");
  CompanyTable table;
  table.Set(stock, Field("単独売上高"), std::nullopt);
  EXPECT_EQ(table.Bytes(kCompanyFiles[1]), CompanyHeader(kCompanyFiles[1]));
  table.Set(stock, Field("単独売上高"), base::Currency());
  EXPECT_EQ(table.Value(stock, Field("単独売上高")), base::Currency());
  table.Set(stock, Field("単独売上高"), std::nullopt);
  EXPECT_FALSE(table.Value(stock, Field("単独売上高")));
  EXPECT_EQ(table.Bytes(kCompanyFiles[1]),
            CompanyHeader(kCompanyFiles[1]) + EmptyCompanyRecord(kCompanyFiles[1]));
}

TEST(CompanyTable, StockWithoutARecordOfItsOwnIsRefused) {
  CompanyTable table;
  for (const int32_t slot : {-1, 0, 1, 32768}) {
    StockRecord stock;
    stock.code = Code("A");
    stock.slot = base::SlotRecord(slot);
    EXPECT_FALSE(table.Set(stock, Field("決算月"), Price(3))) << slot;
    EXPECT_FALSE(table.Value(stock, Field("決算月"))) << slot;
  }
  StockRecord nobody;
  nobody.slot = base::SlotRecord(2);
  EXPECT_FALSE(table.Set(nobody, Field("決算月"), Price(3)));
}

TEST(CompanyTable, MissingFilesAreEmptyAndDamagedOnesAreNamed) {
  StoreBuilder builder("company_damage");
  StockStore store = builder.Stock("A").WithoutSums().Open(Access::kWrite);
  EXPECT_TRUE(CompanyTable::Load(store.Location()));
  CompanyTable table;
  table.Set(StockOf(store, "A"), Field("決算月"), Price(3));
  ASSERT_TRUE(store.SaveCompanies(table));
  StopWriting(store);
  for (const StoreFile& file : {kCompaniesFile, kStatementsFile}) {
    const std::string whole = Read(store.Location(), file);
    for (const std::string& damaged :
         {std::string(), whole.substr(0, 7), whole.substr(0, whole.size() - 1), whole + "x",
          "x" + whole.substr(1), "ORINFIN2" + whole.substr(8)}) {
      Write(store.Location(), file, damaged);
      const auto loaded = CompanyTable::Load(store.Location());
      ASSERT_FALSE(loaded) << damaged.size();
      EXPECT_THAT(loaded.error().message, HasSubstr(FileName(file) + "」"));
      EXPECT_THAT(support::FindingsOf(store.Location()), ElementsAre(loaded.error().message));
    }
    Write(store.Location(), file, whole);
  }
  EXPECT_TRUE(CompanyTable::Load(store.Location()));
}

TEST(CompanyTable, RandomRecordsAreReadWithoutHarm) {
  StockStore store = OpenThree("company_random");
  StopWriting(store);
  std::mt19937 random(5);
  std::string bytes = CompanyHeader(kCompanyFiles[0]);
  while (bytes.size() < 5 * kCompanyFiles[0].record_length) {
    bytes += static_cast<char>(random() & 0xff);
  }
  Write(store.Location(), kCompaniesFile, bytes);
  const CompanyTable table = CompanyTable::Load(store.Location()).value();
  for (const StockRecord& stock : store.Master().Stocks()) {
    EXPECT_FALSE(table.Value(stock, Field("時価総額")));
  }
  EXPECT_THAT(support::FindingsOf(store.Location()), Contains(HasSubstr("レコード2の銘柄コード")));
}

TEST(CompanyTable, CheckTellsRecordsOfOtherStocksAndCodesThatAreTwice) {
  StockStore store = OpenThree("company_check");
  CompanyTable table;
  for (const StockRecord& stock : store.Master().Stocks()) {
    table.Set(stock, Field("決算月"), Price(3));
  }
  ASSERT_TRUE(store.SaveCompanies(table));
  StopWriting(store);
  std::string bytes = Read(store.Location(), kCompaniesFile);
  const size_t length = kCompanyFiles[0].record_length;
  bytes.replace(2 * length, 8, "A       ");
  bytes += std::string(bytes, length, length).replace(0, 8, "Z       ");
  Write(store.Location(), kCompaniesFile, bytes);
  const std::vector<std::string> findings = support::FindingsOf(store.Location());
  EXPECT_THAT(findings, Contains(HasSubstr("レコード3の銘柄コード「A」はレコード2と同じです")));
  EXPECT_THAT(findings, Contains(HasSubstr("レコード3の銘柄コード「A」の銘柄レコードはorin.sysでは"
                                           "「B」で、このレコードは使われません（ほか1件）")));
}

TEST(CompanyTable, PurgedStockLeavesNoDataForItsSlot) {
  StockStore store = OpenThree("company_purge", 901);
  CompanyTable table;
  for (const StockRecord& stock : store.Master().Stocks()) {
    table.Set(stock, Field("決算月"), Price(3));
    table.Set(stock, Field("連結資本金"), Price(5));
  }
  ASSERT_TRUE(store.SaveCompanies(table));
  StockList deleted;
  deleted.stocks = {{Code("C"), "C", base::MasterRecord(4), 1}};
  Write(store.Location(), {FileKind::kDeleted, 0}, EncodeStockList(deleted).value());
  ASSERT_EQ(store.PurgeDeletedStocks().value(), 1);
  EXPECT_THAT(support::FindingsOf(store.Location()), IsEmpty());
  // The slot goes to the next stock, even to one that comes back under its code.
  ASSERT_TRUE(store.AddStocks(std::vector{NewStock{Code("C"), "c"}}));
  ASSERT_EQ(StockOf(store, "C").slot.Value(), 4);
  const CompanyTable loaded = CompanyTable::Load(store.Location()).value();
  EXPECT_FALSE(loaded.Value(StockOf(store, "C"), Field("決算月")));
  EXPECT_FALSE(loaded.Value(StockOf(store, "C"), Field("連結資本金")));
  EXPECT_EQ(loaded.Value(StockOf(store, "B"), Field("連結資本金")), Price(5));
}

}  // namespace
}  // namespace orin::store
