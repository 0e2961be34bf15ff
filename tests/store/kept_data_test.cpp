// What a user has is neither replaced nor dropped in silence, however damaged it is.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "base/coding.h"
#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/journal_format.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/price_format.h"
#include "store/store_check.h"
#include "store/store_lock.h"
#include "store/transaction.h"
#include "store/trend_lines.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::Price;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const OpenOptions kWriting = {Access::kWrite, {}};

class KeptData : public ::testing::Test {
 protected:
  void TearDown() override { fs::remove_all(Root()); }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  [[nodiscard]] fs::path Root() const { return Where().system_directory.parent_path(); }
  void Build() {
    builder_.Days(Weekdays("2020/01/06", 3));
    builder_.Stock("A", {FlatBar(1)}).Stock("B", {FlatBar(2)}).Stock("C", {FlatBar(3)}).Build();
  }
  [[nodiscard]] std::string Read(const StoreFile& file) const {
    return base::ReadFile(PathOf(Where(), file)).value();
  }
  void Write(const StoreFile& file, const std::string& bytes) const {
    fs::create_directories(DirectoryOf(Where(), file));
    std::ofstream(PathOf(Where(), file), std::ios::binary) << bytes;
  }
  [[nodiscard]] base::Result<StockStore> Open(const OpenOptions& options = kWriting) const {
    return StockStore::Open(Where(), options, base::NativeFileSystem());
  }
  [[nodiscard]] base::Result<std::vector<std::string>> Check() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress);
  }
  [[nodiscard]] static std::vector<std::string> ProblemsOf(const StockStore& store) {
    return {store.Problems().begin(), store.Problems().end()};
  }
  /// A journal that puts `bytes` at the start of a file, as a killed writer leaves it.
  void LeaveJournal(const StoreFile& file, int64_t offset, std::string_view bytes) const {
    JournalWriter writer;
    writer.Add({JournalStep::Kind::kWrite, file, offset, 1, bytes});
    Write(kJournalFile, writer.Finish());
  }

  StoreBuilder builder_{"kept"};
};

TEST_F(KeptData, CreationRefusesWhereThereIsAnythingOfAStore) {
  for (const StoreFile& file :
       {kMasterFile, kIndexFile, kAddedFile, kDeletedFile, kJournalFile,
        StoreFile{FileKind::kTrendLines, 0}, StoreFile{FileKind::kCompanies, 0},
        StoreFile{FileKind::kStatements, 0}, DailyFile(1), StoreFile{FileKind::kCredit, 999}}) {
    fs::remove_all(Root());
    Write(file, "x");
    const base::Status refused = StockStore::Create(Where(), base::NativeFileSystem());
    ASSERT_FALSE(refused) << FileName(file);
    EXPECT_THAT(refused.error().message, HasSubstr(FileName(file) + "」がすでにあります"));
    EXPECT_EQ(Read(file), "x");
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(Root()), {}), 2) << FileName(file);
  }
  fs::remove_all(Root());
  const std::string splits = "A,a,2,2020/01/06\r\n";
  Write(kSplitsFile, splits);
  // Checksums of files that are gone are in nobody's way.
  Write({FileKind::kSums, 0}, "x");
  Write({FileKind::kDailySums, 1}, "x");
  ASSERT_TRUE(StockStore::Create(Where(), base::NativeFileSystem()));
  EXPECT_THAT(Check().value(), ::testing::Not(::testing::Contains(HasSubstr("orin.sum"))));
  EXPECT_EQ(Read(kSplitsFile), splits);
  EXPECT_EQ(Open()->Splits().Events().size(), 1U);
}

TEST_F(KeptData, CreationKilledAnywhereCanBeCompleted) {
  for (int64_t n = 1;; ++n) {
    fs::remove_all(Root());
    support::FaultyFileSystem files;
    files.DieAt(n);
    files.LoseOnDeath(n % 2 == 0 ? support::Loss::kWritesAndNames : support::Loss::kNothing);
    static_cast<void>(StockStore::Create(Where(), files));
    if (!Open(OpenOptions())) {
      const base::Status again = StockStore::Create(Where(), base::NativeFileSystem());
      ASSERT_TRUE(again) << n << again.error().message;
    }
    ASSERT_TRUE(Open());
    ASSERT_THAT(Check().value(), IsEmpty()) << n;
    if (!files.IsDead()) break;
  }
}

TEST_F(KeptData, NewStocksDoNotGetTheSlotsOfStocksLostFromTheMaster) {
  Build();
  const std::string whole = Read(kMasterFile);
  Write(kMasterFile, whole.substr(0, whole.size() - 20));
  const auto refused = Open();
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().message, HasSubstr("orin.sys」の長さ188バイト"));
  EXPECT_THAT(ProblemsOf(Open(OpenOptions()).value()), Contains(HasSubstr("188バイト")));
  Write(kMasterFile, whole.substr(0, whole.size() - kMasterRecordLength));
  {
    auto store = Open().value();
    EXPECT_THAT(ProblemsOf(store), Contains(HasSubstr("銘柄レコードが1件あり")));
    ASSERT_TRUE(store.AddStocks(std::vector{NewStock{Code("NEW"), "n"}}));
    EXPECT_EQ(store.Master().Stocks().back().slot.Value(), 5);
  }
  EXPECT_EQ(Read(DailyFile(1)).size(), 5 * kDailyRecordLength);
  EXPECT_EQ(DecodeBar(Read(DailyFile(1)).data() + 3 * kDailyRecordLength, {}).close, Price(3));
  EXPECT_THAT(Check().value(), Contains(HasSubstr("銘柄レコードが1件あり")));
}

TEST_F(KeptData, CheckFinishesWhatAKilledWriterCommittedAndWaitsForALiveOne) {
  builder_.WithoutSums();
  Build();
  const std::string zeros(kBarLength, '\0');
  LeaveJournal(kMasterFile, kMasterRecordLength + master_offset::kRank, std::string("\7\0", 2));
  EXPECT_THAT(Check().value(), IsEmpty());
  EXPECT_EQ(Open(OpenOptions())->Master().Stocks()[0].rank, 7);

  auto lock = StoreLock::Acquire(Where().system_directory);
  LeaveJournal(kMasterFile, 0, "x");
  const auto busy = Check();
  ASSERT_FALSE(busy);
  EXPECT_THAT(busy.error().message, HasSubstr("更新中"));
  {
    std::thread writer([this] {
      std::this_thread::sleep_for(std::chrono::milliseconds(200));
      fs::remove(PathOf(Where(), kJournalFile));
    });
    EXPECT_TRUE(Open(OpenOptions()));
    writer.join();
  }
  // What looks like damage may be the live writer's unfinished work.
  std::string daily = Read(DailyFile(1));
  Write(DailyFile(1), daily.replace(kDailyRecordLength, kBarLength, zeros));
  EXPECT_FALSE(Check());
  *lock = StoreLock();
  const auto findings = Check().value();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_THAT(findings[0], HasSubstr("株価が0"));
}

TEST_F(KeptData, DamagedJournalIsKeptAndToldOfByReaderAndCheck) {
  Build();
  LeaveJournal(kMasterFile, 0, "x");
  std::string damaged = Read(kJournalFile);
  damaged.back() = static_cast<char>(damaged.back() ^ 1);
  const std::string aside = SetAsidePathOf(Where(), kJournalFile);
  std::ofstream(aside) << "older";
  const std::vector<OpenOptions> ways = {OpenOptions(), kWriting};
  for (size_t i = 0; i < ways.size(); ++i) {
    Write(kJournalFile, damaged);
    const auto store = Open(ways[i]);
    ASSERT_TRUE(store);
    const std::string kept = aside + std::to_string(i + 2);
    EXPECT_THAT(ProblemsOf(*store), ::testing::ElementsAre(HasSubstr(kept + "」")));
    EXPECT_EQ(base::ReadFile(kept).value(), damaged);
    EXPECT_FALSE(HasJournal(Where()));
  }
  EXPECT_EQ(base::ReadFile(aside).value(), "older");
  EXPECT_THAT(Check().value(),
              ::testing::ElementsAre(HasSubstr(aside + "」"), HasSubstr(aside + "2"),
                                     HasSubstr(aside + "3")));
}

TEST_F(KeptData, SplitLinesThatCannotBeReadAreKeptByWriting) {
  Build();
  const std::string unread = "A,a,two,2020/01/07\r\nB,b,,2020/01/07\r\n";
  const std::string header = Read(kSplitsFile);
  Write(kSplitsFile, "A,a,2,2020/01/06\r\n" + unread + "C,c,3,2020/01/06\r\n");
  auto store = Open().value();
  EXPECT_EQ(store.Problems().size(), 2U);
  const std::vector<SplitEvent> events(store.Splits().Events().begin(),
                                       store.Splits().Events().end());
  ASSERT_TRUE(store.CorrectForSplit(events[0]));
  EXPECT_EQ(Read(kSplitsFile), header + "C,c,3,2020/01/06\r\n" + unread);
  EXPECT_EQ(AllBars(store, "A")[0].close, Price(0.5));
  ASSERT_TRUE(store.SaveSplits(SplitList()));
  EXPECT_EQ(Read(kSplitsFile), header + unread);
}

TEST_F(KeptData, SplitLineThatCodePage932LacksIsNotAltered) {
  Build();
  const std::string in_utf8 = "A,あ,2,2020/01/06\nmemo 😀\n";
  Write(kSplitsFile, in_utf8);
  auto store = Open().value();
  const SplitEvent event = store.Splits().Events().front();
  for (const base::Status& refused :
       {store.SaveSplits(SplitList()), store.CorrectForSplit(event)}) {
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message, AllOf(HasSubstr("株式分割.txt」の2行目"), HasSubstr("😀")));
  }
  EXPECT_EQ(Read(kSplitsFile), in_utf8);
  EXPECT_EQ(AllBars(store, "A")[0].close, Price(1));
}

TEST_F(KeptData, MissingSplitListIsMadeEmptyForAWriterAndAtTheStart) {
  const auto make = [this] {
    return StockStore::MakeMissingSplits(Where(), base::NativeFileSystem());
  };
  const auto path = PathOf(Where(), kSplitsFile);
  ASSERT_TRUE(make());
  EXPECT_FALSE(fs::exists(path)) << "there is no store";
  Build();
  fs::remove(path);
  ASSERT_TRUE(Open(OpenOptions()));
  EXPECT_FALSE(fs::exists(path));
  {
    const StockStore writer = Open().value();
    EXPECT_EQ(Read(kSplitsFile), "");
    fs::remove(path);
    ASSERT_TRUE(make());
    EXPECT_FALSE(fs::exists(path)) << "the writer may be about to write it";
  }
  ASSERT_TRUE(make());
  EXPECT_EQ(Read(kSplitsFile), "");
  Write(kSplitsFile, "X");
  ASSERT_TRUE(make());
  EXPECT_EQ(Read(kSplitsFile), "X");
}

TEST_F(KeptData, StrayBytesAreToldByCheckAndTakenOffByTheNextWriter) {
  Build();
  const StoreFile lines = {FileKind::kTrendLines, 0};
  ASSERT_TRUE(SaveTrendLines(Where(), base::SlotRecord(4), TrendLines(), base::NativeFileSystem()));
  for (const StoreFile& file :
       {kMasterFile, kIndexFile, kAddedFile, kDeletedFile, lines, DailyFile(1)}) {
    const std::string whole = Read(file);
    for (int64_t n = 1;; ++n) {
      SCOPED_TRACE(FileName(file) + ", stopped at " + std::to_string(n));
      Write(file, whole + "x");
      const auto told = Contains(AllOf(HasSubstr(FileName(file)), HasSubstr("1バイト")));
      EXPECT_THAT(Check().value(), told);
      ASSERT_TRUE(Open(OpenOptions()));
      support::FaultyFileSystem files;
      files.DieAt(n);
      static_cast<void>(StockStore::Open(Where(), kWriting, files));
      ASSERT_THAT(Read(file), ::testing::AnyOf(whole, whole + "x"));
      if (Read(file) == whole) {
        ASSERT_EQ(base::ReadFile(SetAsidePathOf(Where(), file)).value(), whole + "x");
      }
      if (!files.IsDead()) break;
    }
    EXPECT_EQ(Read(file), whole);
    EXPECT_THAT(Check().value(), IsEmpty());
    Write(file, whole + "x");
    EXPECT_THAT(ProblemsOf(Open().value()),
                ::testing::ElementsAre(AllOf(HasSubstr(FileName(file)), HasSubstr("1バイト"),
                                             HasSubstr(FileName(file) + ".bad"))));
    Write(file, whole + "x");
    auto store = Open().value();
    const auto days = static_cast<size_t>(store.Days().Count());
    const base::Status appended = store.AppendDay(Weekdays("2020/01/06", days + 1).back(), {});
    EXPECT_TRUE(appended) << appended.error().message;
    EXPECT_EQ(AllBars(store, "C")[0].close, Price(3));
  }
}

TEST_F(KeptData, CopyOfDamagedContentNeverTakesThePlaceOfAnother) {
  Build();
  const std::string whole = Read(kIndexFile);
  const std::string aside = SetAsidePathOf(Where(), kIndexFile);
  struct StrayDamage {
    std::string stray;
    std::string kept_as;
  };
  for (const StrayDamage& damage : std::vector<StrayDamage>{
           {"x", aside}, {"yy", aside + "2"}, {"x", aside}, {"z", aside + "3"}}) {
    Write(kIndexFile, whole + damage.stray);
    EXPECT_THAT(ProblemsOf(Open().value()), Contains(HasSubstr(damage.kept_as + "」")));
    EXPECT_EQ(base::ReadFile(damage.kept_as).value(), whole + damage.stray);
    EXPECT_EQ(Read(kIndexFile), whole);
  }
  EXPECT_EQ(base::ReadFile(aside).value(), whole + "x");
  EXPECT_EQ(base::ReadFile(aside + "2").value(), whole + "yy");
}

TEST_F(KeptData, RecordThatWasCutIsNotTakenOff) {
  Build();
  const StoreFile lines = {FileKind::kTrendLines, 0};
  ASSERT_TRUE(SaveTrendLines(Where(), base::SlotRecord(4), TrendLines(), base::NativeFileSystem()));
  for (const StoreFile& file : {kIndexFile, kAddedFile, lines}) {
    const std::string whole = Read(file);
    const std::string cut = whole.substr(0, whole.size() - 5);
    Write(file, cut);
    ASSERT_TRUE(Open()) << FileName(file);
    EXPECT_EQ(Read(file), cut);
    Write(file, whole);
  }
  const std::string whole = Read(lines);
  Write(lines, whole.substr(0, whole.size() - 5));
  ASSERT_TRUE(SaveTrendLines(Where(), base::SlotRecord(6), TrendLines(), base::NativeFileSystem()));
  EXPECT_EQ(Read(lines).size(), 6 * kTrendRecordLength);
  EXPECT_EQ(base::ReadFile(SetAsidePathOf(Where(), lines)).value().size(), whole.size() - 5);

  // Where there are no price files, orin.ind alone knows of the stock.
  fs::remove_all(Root());
  builder_ = StoreBuilder("kept");
  builder_.Stock("A").Stock("B").Build();
  const std::string master = Read(kMasterFile);
  Write(kMasterFile, master.substr(0, master.size() - 5));
  ASSERT_FALSE(Open());
  Write(kMasterFile, master + "x");
  ASSERT_TRUE(Open());
  EXPECT_EQ(Read(kMasterFile), master);
}

TEST_F(KeptData, PriceFileThatHasLostTheEndOfARecordIsLeftAsItIs) {
  Build();
  const std::string whole = Read(DailyFile(1));
  const fs::path sums = PathOf(Where(), {FileKind::kDailySums, 1});
  // Behind the last stock there are the records of purged ones; only the checksums count them.
  const std::string master = Read(kMasterFile);
  for (const size_t stocks : {size_t{3}, size_t{2}}) {
    Write(kMasterFile, master.substr(0, (stocks + 1) * kMasterRecordLength));
    StockList purged;
    purged.SetDeletionCounter(static_cast<int16_t>(3 - stocks));
    Write(kDeletedFile, EncodeStockList(purged).value());
    for (const size_t cut : {size_t{1}, size_t{kDailyRecordLength - 1}}) {
      const std::string damaged = whole.substr(0, whole.size() - cut);
      Write(DailyFile(1), damaged);
      const auto refused = Open();
      ASSERT_FALSE(refused) << stocks << " " << cut;
      EXPECT_THAT(refused.error().message,
                  AllOf(HasSubstr("orin001.dat」の銘柄レコード4"), HasSubstr("控えから")));
      EXPECT_EQ(Read(DailyFile(1)), damaged);
      EXPECT_TRUE(Open(OpenOptions()));
    }
    Write(DailyFile(1), whole);
    EXPECT_TRUE(Open());
  }
  Write(kMasterFile, master);
  Write(DailyFile(1), whole.substr(0, whole.size() - 1));
  fs::remove(sums);
  EXPECT_FALSE(Open());
}

TEST_F(KeptData, MissingIndexIsToldAndMadeAnewForAWriter) {
  Build();
  const std::string index = Read(kIndexFile);
  fs::remove(PathOf(Where(), kIndexFile));
  const std::string sentence = "初期設定ファイルで指定した場所にorin.indがありません。（";
  EXPECT_THAT(ProblemsOf(Open(OpenOptions()).value()), ::testing::ElementsAre(HasSubstr(sentence)));
  EXPECT_FALSE(fs::exists(PathOf(Where(), kIndexFile)));
  EXPECT_THAT(ProblemsOf(Open().value()),
              ::testing::ElementsAre(HasSubstr(sentence), HasSubstr("作り直しました")));
  EXPECT_EQ(Read(kIndexFile), index);
}

TEST_F(KeptData, JournalOfAnIndexThatCouldNotBeRebuiltIsCarriedOutBeforeTheNextChange) {
  Build();
  const fs::path pristine = Root().string() + "_pristine";
  fs::remove_all(pristine);
  fs::rename(Root(), pristine);
  int64_t rebuilds = 0;
  for (int64_t n = 1;; ++n) {
    fs::remove_all(Root());
    fs::copy(pristine, Root(), fs::copy_options::recursive);
    support::FaultyFileSystem files;
    auto store = StockStore::Open(Where(), kWriting, files).value();
    const auto change = [&store](double price) {
      return store.ChangeBars(
          std::vector{BarChange{base::SlotRecord(2), base::DayIndex(1), FlatBar(price)}});
    };
    // The first change stops where its journal has been written.
    for (int64_t stop = 1; !HasJournal(Where()); ++stop) {
      files.DieAt(files.Operations() + stop);
      ASSERT_FALSE(change(5));
    }
    fs::remove(PathOf(Where(), kIndexFile));
    files.DieAt(files.Operations() + n);
    const bool was_stopped = !change(6);
    files.DieAt(0);
    const bool stopped_in_rebuild = HasJournal(Where()) && !fs::exists(PathOf(Where(), kIndexFile));
    ASSERT_TRUE(change(7)) << n;
    EXPECT_EQ(AllBars(store, "A")[0].close, Price(7));
    if (stopped_in_rebuild) {
      ++rebuilds;
      { const StockStore closed = std::move(store); }
      EXPECT_THAT(Check().value(), IsEmpty()) << n;
    }
    if (!was_stopped) break;
  }
  EXPECT_GT(rebuilds, 1);
  fs::remove_all(pristine);
}

TEST_F(KeptData, LeftoverThatCannotBeRemovedKeepsNoOneFromWriting) {
  Build();
  // A directory with content stands for whatever the system does not let go.
  for (const fs::path& left : {Where().system_directory / "foo.orin-999999-1.tmp",
                               Where().data_directory / "foo.orin-999999-1.tmp",
                               StagedPathOf(Where(), {FileKind::kCompanies, 0})}) {
    fs::create_directories(left / "inside");
  }
  auto store = Open().value();
  EXPECT_THAT(ProblemsOf(store), ElementsAre(HasSubstr("orin.fin.tmp」を削除できません")));
  EXPECT_TRUE(store.AppendDay(Day("2020/01/10"), {}));
}

TEST_F(KeptData, CompanionThatDisagreesIsToldAndKeptBesideBeforeItIsReplaced) {
  builder_.WithoutSums();
  Build();
  std::string index = Read(kIndexFile);
  index.replace(index_offset::kCode, 1, "Z");
  Write(kIndexFile, index);
  auto store = Open().value();
  EXPECT_THAT(ProblemsOf(store), ::testing::ElementsAre(HasSubstr("orin.ind」のレコード1")));
  ASSERT_TRUE(store.AddStocks(std::vector{NewStock{Code("NEW"), "n"}}));
  EXPECT_EQ(base::ReadFile(SetAsidePathOf(Where(), kIndexFile)).value(), index);
  EXPECT_FALSE(fs::exists(SetAsidePathOf(Where(), kAddedFile)));
  EXPECT_EQ(DecodeNameIndex(Read(kIndexFile)).size(), 4U);

  index = Read(kIndexFile);
  Write(kIndexFile, index.substr(kIndexRecordLength) + index.substr(0, kIndexRecordLength));
  { const StockStore closed = std::move(store); }
  const auto findings = Check().value();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_THAT(findings[0], HasSubstr("レコード4の読み「A」が５０音順に並んでいません"));
}

TEST(StoredDates, DateThatTheFilesCannotHoldIsNamedWithTheReason) {
  StoreBuilder builder("dates");
  StockStore store = builder.Open(Access::kWrite);
  struct Case {
    int32_t serial;
    std::string text;
  };
  for (const Case& test : {Case{0, "1899/12/30"}, Case{-1, "1899/12/29"},
                           Case{base::Date::FromYmd(9999, 12, 31)->Serial() + 1, "10000/01/01"}}) {
    const auto date = base::Date::FromSerial(test.serial);
    for (const base::Status& refused :
         {store.AddDays(std::vector{date}), store.AppendDay(date, {})}) {
      ASSERT_FALSE(refused);
      EXPECT_THAT(refused.error().message, HasSubstr("追加する日付" + test.text +
                                                     "は、株価データに保存できる1899/12/31から"));
    }
  }
  EXPECT_TRUE(store.AddDays(std::vector{base::Date::FromSerial(1)}));
}

}  // namespace
}  // namespace orin::store
