// Checksums find what no rule can: prices that are possible and wrong.

#include "store/price_sums.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/companion_formats.h"
#include "store/company_table.h"
#include "store/store_check.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr size_t kStoredDays = 903;  // ten files, the last one has three days
constexpr StoreFile kSums1 = {FileKind::kDailySums, 1};
constexpr StoreFile kSums10 = {FileKind::kDailySums, 10};
constexpr size_t kRecordA = kDailyRecordLength;
constexpr size_t kRecordB = 2 * kDailyRecordLength;

std::vector<base::Bar> Prices(double first) {
  std::vector<base::Bar> bars;
  for (size_t i = 0; i < kStoredDays; ++i) bars.push_back(FlatBar(first + double(i % 53), 100));
  return bars;
}

class PriceSumsTest : public ::testing::Test {
 protected:
  PriceSumsTest() {
    builder_.Days(Weekdays("2015/01/05", kStoredDays)).Split("A", 2, "2015/01/30");
    builder_.Stock("A", Prices(10)).Stock("B", Prices(20)).Stock("C", Prices(30));
  }
  void TearDown() override { fs::remove_all(Where().system_directory.parent_path()); }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  [[nodiscard]] std::string Read(const StoreFile& file) const {
    return base::ReadFile(PathOf(Where(), file)).value();
  }
  void Write(const StoreFile& file, const std::string& bytes) const {
    std::ofstream(PathOf(Where(), file), std::ios::binary) << bytes;
  }
  void Flip(const StoreFile& file, size_t at, int bit = 0) const {
    std::string bytes = Read(file);
    bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
    Write(file, bytes);
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress).value();
  }
  [[nodiscard]] StockStore Open() const {
    return StockStore::Open(Where(), {Access::kWrite, {}}, base::NativeFileSystem()).value();
  }
  void Change(const std::function<base::Status(StockStore&)>& change) const {
    StockStore store = Open();
    const base::Status changed = change(store);
    ASSERT_TRUE(changed) << changed.error().message;
  }

  StoreBuilder builder_{"sums"};
};

base::Status AppendOne(StockStore& store) {
  const auto days = Weekdays("2015/01/05", static_cast<size_t>(store.Days().Count()) + 1);
  const std::vector<std::pair<base::SlotRecord, base::Bar>> bars = {
      {support::SlotOf(store, "B"), FlatBar(7)}};
  return store.AppendDay(days.back(), bars);
}

base::Status PurgeC(StockStore& store) {
  StockList deleted;
  deleted.stocks = {{Code("C"), "C", base::MasterRecord(4), 1}};
  const auto path = PathOf(store.Location(), {FileKind::kDeleted, 0});
  const auto bytes = EncodeStockList(deleted);
  const auto marked = base::ReplaceFile(base::NativeFileSystem(), path, *bytes);
  if (!marked) return marked;
  const auto purged = store.PurgeDeletedStocks();
  return purged ? base::Status() : base::Forward(purged);
}

base::Status SaveCompanies(StockStore& store, double value) {
  CompanyTable table;
  for (const StockRecord& stock : store.Master().Stocks()) {
    for (const CompanyField& field : kCompanyFields) table.Set(stock, field, support::Price(value));
  }
  return store.SaveCompanies(table);
}

struct NamedChange {
  std::string name;
  std::function<base::Status(StockStore&)> run;
};

/// In an order in which each can be made after the others.
std::vector<NamedChange> AllChanges() {
  return {
      {"append", AppendOne},
      {"append many",
       [](StockStore& store) {
         const auto days = Weekdays("2015/01/05", kStoredDays + 220);
         return store.AddDays(std::span(days).subspan(kStoredDays + 1));
       }},
      {"append after many",
       [](StockStore& store) { return store.AppendDay(Day("2025/01/06"), {}); }},
      {"change bars",
       [](StockStore& store) {
         std::vector<BarChange> changes;
         for (int32_t day = 70; day <= store.Days().Count(); day += 60) {
           changes.push_back({support::SlotOf(store, "B"), base::DayIndex(day), FlatBar(day)});
         }
         changes.push_back({support::SlotOf(store, "A"), base::DayIndex(901), base::Bar()});
         return store.ChangeBars(changes);
       }},
      {"correct a split",
       [](StockStore& store) { return store.CorrectForSplit(store.Splits().Events()[0]); }},
      {"companies", [](StockStore& store) { return SaveCompanies(store, 4); }},
      {"purge", PurgeC},
      {"use the slot again",
       [](StockStore& store) {
         return store.AddStocks(std::vector{NewStock{Code("N"), "n"}, NewStock{Code("M"), "m"}});
       }},
      {"days between",
       [](StockStore& store) {
         return store.AddDays(std::vector{Day("2015/01/10"), Day("2016/01/09")});
       }},
  };
}

TEST_F(PriceSumsTest, EveryChangeKeepsThemInStep) {
  builder_.Build();
  ASSERT_THAT(Findings(), IsEmpty());
  for (const NamedChange& change : AllChanges()) {
    Change(change.run);
    ASSERT_THAT(Findings(), IsEmpty()) << change.name;
  }
}

TEST_F(PriceSumsTest, DamageStaysVisibleThroughEveryChange) {
  builder_.Build();
  Change([](StockStore& store) { return SaveCompanies(store, 3); });
  Flip(DailyFile(1), kRecordA + 5);
  Flip({FileKind::kCompanies, 0}, 300);
  Flip({FileKind::kNameIndex, 0}, 7);
  const auto damage = [] {
    return AllOf(Contains(AllOf(HasSubstr("orin001.dat"), HasSubstr("銘柄Aの銘柄レコード2"),
                                HasSubstr("orinc001.dat"))),
                 Contains(AllOf(HasSubstr("orin.fin"), HasSubstr("チェックサム"))),
                 Contains(AllOf(HasSubstr("orin.ind"), HasSubstr("チェックサム"))));
  };
  ASSERT_THAT(Findings(), damage());
  for (const NamedChange& change : AllChanges()) {
    Change(change.run);
    ASSERT_THAT(Findings(), damage()) << change.name;
  }
}

TEST_F(PriceSumsTest, RightPricesInThePlaceOfDamagedOnesAreSoundAgain) {
  builder_.Build();
  const auto right = AllBars(builder_.Open(), "A");
  std::string bytes = Read(DailyFile(1));
  Write(DailyFile(1),
        bytes.replace(kRecordA, kDailyRecordLength, bytes.substr(kRecordB, kDailyRecordLength)));
  ASSERT_THAT(Findings(), ElementsAre(HasSubstr("銘柄Aの銘柄レコード2が、書き込んだとき")));
  Change(AppendOne);
  Change([&right](StockStore& store) {
    std::vector<BarChange> changes;
    for (size_t i = 0; i < right.size(); ++i) {
      changes.push_back(
          {base::SlotRecord(2), base::DayIndex(static_cast<int32_t>(i) + 1), right[i]});
    }
    return store.ChangeBars(changes);
  });
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(PriceSumsTest, RightPriceImportedTogetherWithNewDaysIsSoundAgain) {
  builder_.Build();
  const base::Bar right = AllBars(builder_.Open(), "A")[901];
  const auto import = [](const base::Bar& day_902, double new_price) {
    return [day_902, new_price](StockStore& store) {
      std::vector<BarChange> changes = {{base::SlotRecord(2), base::DayIndex(902), day_902}};
      for (int32_t day = static_cast<int32_t>(kStoredDays) + 1; day <= store.Days().Count();
           ++day) {
        changes.push_back({base::SlotRecord(2), base::DayIndex(day), FlatBar(new_price)});
      }
      return store.ChangeBars(changes);
    };
  };
  Change([](StockStore& store) {
    const auto days = Weekdays("2015/01/05", kStoredDays + 2);
    return store.AddDays(std::span(days).subspan(kStoredDays));
  });
  Flip(DailyFile(10), kRecordA + kBarLength + 5);
  const auto damaged = Contains(
      AllOf(HasSubstr("銘柄Aの銘柄レコード2が、書き込んだとき"), HasSubstr("orin-cli checksums")));
  ASSERT_THAT(Findings(), damaged);
  const fs::path root = Where().system_directory.parent_path();
  const fs::path before = root.string() + "_before";
  fs::remove_all(before);
  fs::copy(root, before, fs::copy_options::recursive);
  Change(import(FlatBar(3), 40));
  EXPECT_THAT(Findings(), damaged) << "another price is no repair";
  fs::remove_all(root);
  fs::rename(before, root);
  Change(import(right, 40));
  EXPECT_THAT(Findings(), IsEmpty());
  Change(import(right, 41));
  EXPECT_THAT(Findings(), IsEmpty());
  Flip(DailyFile(10), kRecordA + kBarLength + 5);
  EXPECT_THAT(Findings(), damaged);
}

TEST_F(PriceSumsTest, AnyFlippedBitOfACommittedDayIsFound) {
  builder_.Build();
  int bit = 0;
  const auto expect_found = [&](const StoreFile& file, size_t at, bool is_found) {
    const std::string whole = Read(file);
    Flip(file, at, bit++ % 8);
    const auto name = HasSubstr(FileName(file) + "」の");
    const auto findings = Findings();
    EXPECT_EQ(findings.empty(), !is_found) << at;
    if (is_found) {
      EXPECT_THAT(findings, Contains(name)) << at;
    }
    Write(file, whole);
  };
  for (size_t at = kRecordA; at < 4 * kDailyRecordLength; at += 211)
    expect_found(DailyFile(1), at, true);
  // Bits of a date that leave it as it is for the calendar, too.
  for (const size_t at : {size_t{8}, size_t{31}, 99 * kDateEntryLength + 20}) {
    expect_found(DailyFile(1), at, true);
  }
  for (size_t at = 0; at < 3 * kBarLength; at += 11)
    expect_found(DailyFile(10), kRecordB + at, true);
  // Behind the committed days the bytes are nobody's.
  for (size_t at = 3 * kBarLength; at < kDailyRecordLength; at += 997) {
    expect_found(DailyFile(10), kRecordB + at, false);
  }
}

TEST_F(PriceSumsTest, RecordsThatHaveChangedPlacesAreFoundWithTheirStocks) {
  builder_.Build();
  std::string bytes = Read(DailyFile(10));
  const std::string a = bytes.substr(kRecordA, kDailyRecordLength);
  const std::string b = bytes.substr(kRecordB, kDailyRecordLength);
  Write(DailyFile(10),
        bytes.replace(kRecordA, kDailyRecordLength, b).replace(kRecordB, kDailyRecordLength, a));
  EXPECT_THAT(Findings(),
              ElementsAre(HasSubstr("銘柄Aの銘柄レコード2"), HasSubstr("銘柄Bの銘柄レコード3")));
  bytes = Read(DailyFile(1));
  const StoreFile second = {FileKind::kDaily, 2};
  const std::string other = Read(second);
  // Whole files, too; their dates have findings of their own.
  Write(DailyFile(1), bytes.substr(0, kRecordA) + other.substr(kRecordA));
  EXPECT_THAT(Findings(), Contains(AllOf(HasSubstr("orin001.dat"), HasSubstr("銘柄C"))));
}

TEST_F(PriceSumsTest, StoreWithoutThemStaysWithoutUntilTheyAreMade) {
  builder_.WithoutSums().Build();
  // A killed writer of a newer version may have left some.
  Write({FileKind::kDailySums, 11}, "remains");
  for (const NamedChange& change : AllChanges()) Change(change.run);
  EXPECT_FALSE(HasSums(Where()));
  EXPECT_THAT(Findings(), IsEmpty());
  const fs::path root = Where().system_directory.parent_path();
  const fs::path before = root.string() + "_before";
  fs::remove_all(before);
  fs::copy(root, before, fs::copy_options::recursive);
  for (int64_t n = 1;; ++n) {
    fs::remove_all(root);
    fs::copy(before, root, fs::copy_options::recursive);
    support::FaultyFileSystem files;
    files.DieAt(n);
    files.LoseOnDeath(n % 2 == 0 ? support::Loss::kWritesAndNames : support::Loss::kNothing);
    base::SilentProgress progress;
    bool made = false;
    {
      auto store = StockStore::Open(Where(), {Access::kWrite, {}}, files);
      made = store && store->MakeSums(progress);
    }
    ASSERT_THAT(Findings(), IsEmpty()) << n;
    ASSERT_TRUE(!made || HasSums(Where())) << n;
    if (!files.IsDead()) break;
  }
  fs::remove_all(before);
  Flip(DailyFile(1), kRecordB);
  EXPECT_THAT(Findings(), Contains(HasSubstr("銘柄B")));
}

TEST_F(PriceSumsTest, DamagedFilesOfSumsAreNamedAndKeepNoOneFromTheStore) {
  builder_.Build();
  struct Case {
    StoreFile file;
    std::function<std::string(std::string)> damage;
    std::string finding;
  };
  const auto flipped = [](size_t at) {
    return [at](std::string bytes) {
      bytes[at] = static_cast<char>(bytes[at] ^ 1);
      return bytes;
    };
  };
  const auto cut = [](size_t by) {
    return [by](const std::string& bytes) { return bytes.substr(0, bytes.size() - by); };
  };
  const std::vector<Case> cases = {
      {kSumsFile, flipped(0), "内容が壊れています"},
      {kSumsFile, flipped(30), "内容が壊れています"},
      {kSumsFile, cut(24), "内容が壊れています"},
      {kSums10, flipped(3), "チェックサムのファイルとして読めません"},
      {kSums10, cut(1), "チェックサムのファイルとして読めません"},
      {kSums10, cut(16), "レコード数3が株価ファイルのレコード数4と違います"},
      {kSums10, [](const std::string& bytes) { return bytes + bytes.substr(0, 16); },
       "レコード数5"},
      {kSums10, flipped(8), "日分のチェックサムがあり"},
      {kSums10, [](const std::string&) { return std::string(); }, "読めません"},
      {kSums1, flipped(16), "内容が壊れています"},
      {kSums1, flipped(48), "内容が壊れています"},
  };
  const fs::path root = Where().system_directory.parent_path();
  const fs::path sound = root.string() + "_sound";
  fs::remove_all(sound);
  fs::copy(root, sound, fs::copy_options::recursive);
  for (const Case& test : cases) {
    fs::remove_all(root);
    fs::copy(sound, root, fs::copy_options::recursive);
    // The bank in use may be either of the two.
    std::string bytes = Read(test.file);
    if (test.finding == "日分のチェックサムがあり") bytes = flipped(10)(bytes);
    Write(test.file, test.damage(bytes));
    const auto finding = AllOf(HasSubstr(FileName(test.file)), HasSubstr(test.finding));
    EXPECT_THAT(Findings(), Contains(finding));
    Change(AppendOne);
    Change([](StockStore& store) {
      return store.AddStocks(std::vector{NewStock{Code("N"), "n"}});
    });
    EXPECT_THAT(Findings(), Contains(HasSubstr(FileName(test.file)))) << test.finding;
    base::SilentProgress progress;
    Change([&progress](StockStore& store) { return store.MakeSums(progress); });
    EXPECT_THAT(Findings(), IsEmpty()) << test.finding;
  }
  fs::remove_all(sound);
}

TEST_F(PriceSumsTest, OneThatIsMissingAmongOthersIsTold) {
  builder_.Build();
  const std::string before = Read(kSums10);
  Change(AppendOne);
  // As when a version without checksums has appended the day.
  Write(kSums10, before);
  EXPECT_THAT(Findings(), Contains(HasSubstr("orin.sysの示す4日分のものがありません")));
  fs::remove(PathOf(Where(), kSums10));
  EXPECT_THAT(Findings(), ElementsAre(HasSubstr("orinc010.dat」がありません")));
  fs::remove(PathOf(Where(), kSums1));
  EXPECT_THAT(Findings(), ElementsAre(AllOf(HasSubstr("orinc001.dat"), HasSubstr("ほか1件"))));
  fs::remove(PathOf(Where(), kSumsFile));
  EXPECT_THAT(Findings(), Contains(HasSubstr("orin.sum」がありません")));
}

}  // namespace
}  // namespace orin::store
