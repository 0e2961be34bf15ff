// A damaged header must not lead a writer to the wrong files: it refuses, or nothing is lost.

#include "store/header_proof.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/coding.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/price_format.h"
#include "store/price_sums.h"
#include "store/store_check.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::Bytes;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::PutFile;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view kFirstStoredDay = "2020/01/06";
const std::vector<std::string> kCodes = {"A", "B", "C"};

StoreFile Daily(int16_t number) { return {FileKind::kDaily, number}; }

using Contents = std::map<std::string, std::string>;  // of all files, by name

class HeaderProofTest : public ::testing::Test {
 protected:
  void TearDown() override {
    fs::remove_all(Root());
    fs::remove_all(pristine_);
  }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  [[nodiscard]] fs::path Root() const { return Where().system_directory.parent_path(); }
  [[nodiscard]] fs::path Path(const StoreFile& file) const { return PathOf(Where(), file); }

  /// Stocks with a price for every day, different in all of them.
  void Build(size_t days) {
    builder_ = StoreBuilder("proof");
    builder_.Days(Weekdays(kFirstStoredDay, days));
    for (size_t i = 0; i < kCodes.size(); ++i) {
      std::vector<base::Bar> bars;
      for (size_t day = 0; day < days; ++day) {
        bars.push_back(FlatBar(static_cast<double>(1000 * (i + 1) + day)));
      }
      builder_.Stock(kCodes[i], bars);
    }
    builder_.Build();
    Keep();
  }
  void Keep() {
    pristine_ = Root().string() + "_pristine";
    fs::remove_all(pristine_);
    fs::copy(Root(), pristine_, fs::copy_options::recursive);
  }
  void Reset() const {
    fs::remove_all(Root());
    fs::copy(pristine_, Root(), fs::copy_options::recursive);
  }
  void PatchHeader(size_t offset, const std::string& bytes) const {
    std::string master = Bytes(Path(kMasterFile));
    PutFile(Path(kMasterFile), master.replace(offset, bytes.size(), bytes));
  }
  [[nodiscard]] base::Result<StockStore> Open(Access access) const {
    return StockStore::Open(Where(), {access, {}}, base::NativeFileSystem());
  }
  [[nodiscard]] std::string Refusal() const {
    const auto store = Open(Access::kWrite);
    return store ? "" : store.error().message;
  }
  [[nodiscard]] std::vector<std::string> Warnings() const {
    const auto store = Open(Access::kRead);
    if (!store) return {store.error().message};
    return {store->Problems().begin(), store->Problems().end()};
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress).value();
  }
  [[nodiscard]] Contents Everything() const {
    Contents contents;
    for (const auto& entry : fs::recursive_directory_iterator(Root())) {
      if (entry.is_regular_file()) contents[entry.path().string()] = Bytes(entry.path());
    }
    return contents;
  }
  /// The days with data of all stocks.
  [[nodiscard]] std::set<std::string> AllPrices() const {
    std::set<std::string> prices;
    const StockStore store = Open(Access::kRead).value();
    for (const std::string& code : kCodes) {
      for (const base::Bar& bar : AllBars(store, code)) {
        if (!bar.HasData()) continue;
        prices.insert(code + " " + bar.date.ToText() + " " + bar.close.ToText());
      }
    }
    return prices;
  }

  StoreBuilder builder_{"proof"};
  fs::path pristine_;
};

struct Damage {
  size_t offset;
  std::string bytes;
};

std::vector<Damage> EverySingleFieldDamaged(size_t days) {
  std::vector<Damage> damages;
  for (const size_t field : {header_offset::kDateRecord, header_offset::kFirstFile,
                             header_offset::kCurrentFile, header_offset::kCurrentRecord}) {
    for (const int value : {0, 1, 2, 3, 4, 5, 10, 99, 100, 101, 999, 1000, -1, -32768, 32767}) {
      damages.push_back({field, support::Int16Bytes(value)});
    }
  }
  damages.push_back({header_offset::kCreditFirst, support::Int16Bytes(-1)});
  damages.push_back({header_offset::kCreditCurrent, support::Int16Bytes(32767)});
  for (const std::string date : {"20190101", "20300101", "        ", "2020131x", "garbage!"}) {
    damages.push_back({header_offset::kDate, date});
  }
  damages.push_back({header_offset::kDate, std::string(8, '\0')});
  // Days that are stored, the last ones of earlier files among them.
  for (const size_t day : {size_t{1}, size_t{100}, size_t{200}}) {
    if (day >= days) continue;
    damages.push_back({header_offset::kDate, Weekdays(kFirstStoredDay, day).back().ToCompact()});
  }
  return damages;
}

TEST_F(HeaderProofTest, DamageOfAnyFieldIsRefusedOrHarmless) {
  for (const size_t days : {0U, 1U, 100U, 101U, 313U}) {
    Build(days);
    const std::set<std::string> before = AllPrices();
    ASSERT_EQ(before.size(), kCodes.size() * days);
    for (const Damage& damage : EverySingleFieldDamaged(days)) {
      SCOPED_TRACE(std::to_string(days) + " days, offset " + std::to_string(damage.offset) + ": " +
                   damage.bytes);
      Reset();
      PatchHeader(damage.offset, damage.bytes);
      const Contents contents = Everything();
      support::FaultyFileSystem files;  // without a fault, but faster
      auto store = StockStore::Open(Where(), {Access::kWrite, {}}, files);
      if (!store) {
        EXPECT_EQ(Everything(), contents);
        EXPECT_THAT(store.error().message, HasSubstr("orin"));
        EXPECT_THAT(Findings(), Not(IsEmpty()));
        EXPECT_THAT(Warnings(), Not(IsEmpty()));
        continue;
      }
      // Whether they succeed or not.
      static_cast<void>(store->AppendDay(Day("2040/01/02"), {}));
      static_cast<void>(store->AddDays(std::vector{Day("2040/01/03"), Day("2040/01/04")}));
      static_cast<void>(store->AddStocks(std::vector{NewStock{Code("NEW"), "new"}}));
      static_cast<void>(store->AddDays(std::vector{Day("2020/01/05"), Day("2020/05/30")}));
      ASSERT_EQ(AllPrices(), before);
    }
  }
}

TEST_F(HeaderProofTest, WholeStoreIsProven) {
  for (const size_t days : {0U, 1U, 100U, 101U}) {
    Build(days);
    EXPECT_EQ(Refusal(), "");
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_THAT(Findings(), IsEmpty());
  }
}

TEST_F(HeaderProofTest, OneDayBehindAFullFileIsTheLeftoverOfAStoppedAppend) {
  for (const size_t days : {0U, 100U}) {
    Build(days);
    const std::string header = Bytes(Path(kMasterFile));
    ASSERT_TRUE(Open(Access::kWrite)->AppendDay(Day("2040/01/02"), {}));
    // As if the append had been stopped before its commit.
    PutFile(Path(kMasterFile), header);
    EXPECT_THAT(Warnings(), IsEmpty());
    EXPECT_THAT(Findings(), IsEmpty());
    auto store = Open(Access::kWrite).value();
    ASSERT_TRUE(store.AppendDay(Day("2030/01/02"), {}));
    EXPECT_EQ(store.Days().Days().back(), Day("2030/01/02"));
    EXPECT_EQ(store.Days().Count(), static_cast<int32_t>(days) + 1);
  }
}

TEST_F(HeaderProofTest, AnyOtherFileOutsideTheHeadersIsNamedAndStops) {
  Build(100);
  const std::string header = Bytes(Path(kMasterFile));
  ASSERT_TRUE(Open(Access::kWrite)->AddDays(std::vector{Day("2040/01/02"), Day("2040/01/03")}));
  const std::string two_days = Bytes(Path(Daily(2)));
  std::string day_before = two_days;
  day_before.replace(0, kDateEntryLength, EncodeDateEntry(Day("2020/01/06")));
  day_before.replace(kDateEntryLength, kDateEntryLength, kDateEntryLength, '\0');
  const std::vector<std::pair<int16_t, std::string>> strangers = {
      {2, two_days}, {2, day_before}, {2, ""}, {2, "x"}, {3, two_days}, {999, ""}};
  for (const auto& [number, bytes] : strangers) {
    Reset();
    PutFile(Path(Daily(number)), bytes);
    const std::string name = FileName(Daily(number)) + "」";
    EXPECT_THAT(Refusal(), AllOf(HasSubstr(name), HasSubstr("より後"), HasSubstr("移すか")));
    EXPECT_THAT(Warnings(), Contains(HasSubstr(name)));
    EXPECT_THAT(Findings(), Contains(HasSubstr(name)));
    EXPECT_EQ(Bytes(Path(Daily(number))), bytes);
  }
}

TEST_F(HeaderProofTest, HeaderThatIsOlderThanTheSumsOfItsFileStops) {
  for (const size_t days : {3U, 102U}) {
    Build(days);
    std::vector<std::string> headers = {Bytes(Path(kMasterFile))};
    for (const std::string_view day : {"2040/01/02", "2040/01/03"}) {
      ASSERT_TRUE(Open(Access::kWrite)->AppendDay(Day(day), {}));
      headers.push_back(Bytes(Path(kMasterFile)));
    }
    const std::set<std::string> prices = AllPrices();
    PutFile(Path(kMasterFile), headers[0]);
    const StoreFile sums = {FileKind::kDailySums, static_cast<int16_t>(days / 100 + 1)};
    const auto names_them = AllOf(HasSubstr("カレントレコード"), HasSubstr(FileName(sums)));
    EXPECT_THAT(Refusal(), AllOf(names_them, HasSubstr("取り込み直して")));
    EXPECT_THAT(Warnings(), Contains(names_them));
    EXPECT_THAT(Findings(), Contains(names_them));
    // A stopped append leaves the same files.
    PutFile(Path(kMasterFile), headers[1]);
    EXPECT_EQ(Refusal(), "");
    // Damaged sums prove nothing.
    PutFile(Path(kMasterFile), headers[0]);
    const std::string whole = Bytes(Path(sums));
    std::string damaged = whole;
    for (const size_t back : {size_t{1}, kSumBankLength + 1}) {
      char& byte = damaged[damaged.size() - back];
      byte = static_cast<char>(byte ^ 1);
    }
    PutFile(Path(sums), damaged);
    EXPECT_EQ(Refusal(), "");
    PutFile(Path(sums), whole);
    PutFile(Path(kMasterFile), headers[2]);
    EXPECT_EQ(Refusal(), "");
    EXPECT_EQ(AllPrices(), prices);
  }
}

TEST_F(HeaderProofTest, HeaderOfBeforeTheSumsWereMadeStops) {
  Build(3);
  const std::string before = Bytes(Path(kMasterFile));
  {
    StockStore store = Open(Access::kWrite).value();
    ASSERT_TRUE(store.AppendDay(Day("2040/01/02"), {}));
    base::SilentProgress progress;
    ASSERT_TRUE(store.MakeSums(progress));
  }
  EXPECT_EQ(Refusal(), "");
  PutFile(Path(kMasterFile), before);
  EXPECT_THAT(Refusal(), HasSubstr("orinc001.dat"));
}

TEST_F(HeaderProofTest, DataDirectoryThatCannotBeListedStops) {
  Build(0);
  fs::remove_all(Where().data_directory);
  EXPECT_EQ(Refusal(), "");
  PutFile(Where().data_directory, "a file");
  EXPECT_THAT(Refusal(), AllOf(HasSubstr("data」"), HasSubstr("一覧")));
  EXPECT_THAT(Warnings(), Contains(HasSubstr("一覧")));
  EXPECT_THAT(Findings(), Contains(HasSubstr("一覧")));
}

TEST_F(HeaderProofTest, FilesBeforeTheFirstOneAreNamedAndStop) {
  Build(313);
  PatchHeader(header_offset::kFirstFile, support::Int16Bytes(3));
  const auto names_it = AllOf(HasSubstr("orin001.dat"), HasSubstr("先頭ファイル3より前"));
  EXPECT_THAT(Refusal(), AllOf(names_it, HasSubstr("移すか")));
  EXPECT_THAT(Warnings(), ::testing::ElementsAre(names_it));
  EXPECT_THAT(Findings(), ::testing::ElementsAre(AllOf(names_it, HasSubstr("ほか1件"))));
  fs::remove(Path(Daily(1)));
  fs::remove(Path(Daily(2)));
  EXPECT_EQ(Refusal(), "");
}

TEST_F(HeaderProofTest, NewFileNeverTakesThePlaceOfOneThatAppearedLater) {
  Build(100);
  auto store = Open(Access::kWrite).value();
  PutFile(Path(Daily(2)), "restored meanwhile");
  for (const base::Status& refused :
       {store.AppendDay(Day("2040/01/02"), {}),
        store.AddDays(std::vector{Day("2040/01/02"), Day("2040/01/03")})}) {
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message, HasSubstr("orin002.dat"));
  }
  EXPECT_EQ(Bytes(Path(Daily(2))), "restored meanwhile");
}

}  // namespace
}  // namespace orin::store
