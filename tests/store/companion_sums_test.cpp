// orin.sum, and what is found in the lists without it.

#include "store/companion_sums.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/company_table.h"
#include "store/stock_store.h"
#include "store/store_check.h"
#include "support/credit_files.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::FlatBar;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr StoreFile kAdded = {FileKind::kAdded, 0};
constexpr StoreFile kDeleted = {FileKind::kDeleted, 0};
constexpr StoreFile kIndex = {FileKind::kNameIndex, 0};

class CompanionSumsTest : public ::testing::Test {
 protected:
  CompanionSumsTest() {
    builder_.Days(Weekdays("2020/01/06", 3)).Stock("A").Stock("B", {FlatBar(1)}).Stock("C");
  }
  void TearDown() override { fs::remove_all(Where().system_directory.parent_path()); }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  [[nodiscard]] std::string Read(const StoreFile& file) const {
    return base::ReadFile(PathOf(Where(), file)).value();
  }
  void Write(const StoreFile& file, const std::string& bytes) const {
    std::ofstream(PathOf(Where(), file), std::ios::binary) << bytes;
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress).value();
  }
  void SaveCompanies() {
    StockStore store = builder_.Open(Access::kWrite);
    CompanyTable table;
    for (const StockRecord& stock : store.Master().Stocks()) {
      for (const CompanyField& field : kCompanyFields) table.Set(stock, field, support::Price(3));
    }
    ASSERT_TRUE(store.SaveCompanies(table));
  }

  StoreBuilder builder_{"companion_sums"};
};

TEST_F(CompanionSumsTest, CompanyFilesThatAreCutAtARecordOrAlteredAreFound) {
  SaveCompanies();
  ASSERT_THAT(Findings(), IsEmpty());
  for (const CompanyFile& format : kCompanyFiles) {
    const StoreFile file = {format.kind, 0};
    const std::string whole = Read(file);
    const std::string name = FileName(file);
    for (size_t records = 1; records < 4; ++records) {
      Write(file, whole.substr(0, records * format.record_length));
      EXPECT_THAT(Findings(), ElementsAre(AllOf(HasSubstr(name),
                                                HasSubstr("レコード数" + std::to_string(records) +
                                                          "が、書き込んだときの4"))));
    }
    std::string altered = whole;
    altered[format.record_length + 9] = '\x55';
    Write(file, altered);
    EXPECT_THAT(Findings(), ElementsAre(AllOf(HasSubstr(name), HasSubstr("内容が"))));
    fs::remove(PathOf(Where(), file));
    EXPECT_THAT(Findings(), ElementsAre(HasSubstr(name + "」がなくなっています")));
    Write(file, whole);
  }
  // As when another version has made them.
  Write({FileKind::kSums, 0}, CompanionSums().Encode());
  EXPECT_EQ(Findings().size(), kSummedCompanions.size());
  EXPECT_THAT(Findings(), Contains(HasSubstr("orin.fin」のチェックサムがorin.sumにありません")));
}

TEST_F(CompanionSumsTest, ReadingThatWasAlteredIsFound) {
  builder_.Build();
  std::string index = Read(kIndex);
  index[2] = 'X';
  Write(kIndex, index);
  EXPECT_THAT(Findings(), ElementsAre(AllOf(HasSubstr("orin.ind"), HasSubstr("チェックサム"))));
  // A new orin.ind has new sums.
  fs::remove(PathOf(Where(), kIndex));
  builder_.Open(Access::kWrite);
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CompanionSumsTest, EntriesDoubledOrBlankedAreFoundWithoutSumsToo) {
  builder_.WithoutSums().Build();
  const std::string whole = Read(kAdded);
  const auto record = [](size_t number) { return (number - 1) * kListRecordLength; };
  const auto with = [&](size_t number, const std::string& bytes) {
    std::string changed = whole;
    return changed.replace(record(number), bytes.size(), bytes);
  };
  Write(kAdded, with(3, whole.substr(record(2), kListRecordLength)));
  EXPECT_THAT(Findings(),
              ElementsAre(HasSubstr("orin.add」のレコード3の銘柄コードはレコード2と同じ")));
  for (const std::string& blank :
       {std::string(8, ' '), std::string(28, '\0'), std::string("a,b")}) {
    Write(kAdded, with(4, blank));
    EXPECT_THAT(Findings(),
                ElementsAre(HasSubstr("orin.add」のレコード4に銘柄コードがありません")));
  }
  Write(kAdded, with(3, std::string(kEmptiedCode)));
  EXPECT_THAT(Findings(), ElementsAre(HasSubstr("orin.add」のレコード3が空にされていますが")));
  // A stock that has been deleted explains it.
  StockList deleted;
  deleted.SetDeletionCounter(1);
  Write(kDeleted, *EncodeStockList(deleted));
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CompanionSumsTest, CreditFileNumbersThatCannotBeAreFound) {
  builder_.Build();
  support::WriteCreditFile(Where(), 1, Weekdays("2020/01/06", 3), {});
  struct Case {
    int16_t first;
    int16_t current;
    std::string finding;
  };
  for (const Case& test : std::vector<Case>{{2, 1, "信用先頭2が信用カレント1より後です"},
                                            {5, 0, "信用先頭5が信用カレント0より後です"},
                                            {0, 1, "信用先頭0が1から1の範囲に"},
                                            {-3, 0, "信用先頭-3が"},
                                            {1, 1000, "信用カレント1000が0から999の範囲に"},
                                            {-2, -1, "信用カレント-1が0から999の範囲に"},
                                            {1, 2, "orins002.dat」がありません"}}) {
    support::NameCreditFiles(Where(), test.first, test.current);
    EXPECT_THAT(Findings(), Contains(HasSubstr(test.finding))) << test.first << " " << test.current;
  }
  for (const auto& [first, current] : std::vector<std::pair<int16_t, int16_t>>{{0, 0}, {1, 1}}) {
    support::NameCreditFiles(Where(), first, current);
    EXPECT_THAT(Findings(), IsEmpty());
  }
}

}  // namespace
}  // namespace orin::store
