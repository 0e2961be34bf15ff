// Every change of the store is stopped at every single operation on the disk, in every way a disk
// may lose what was not flushed, and at every size of a full disk.

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "store/file_names.h"
#include "store/store_check.h"
#include "store/transaction.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::Code;
using orin::support::Day;
using orin::support::FaultyFileSystem;
using orin::support::FlatBar;
using orin::support::Loss;
using orin::support::StoreBuilder;
using orin::support::Weekdays;

constexpr std::string_view kFirstDay = "2020/01/06";

struct Job {
  std::string name;
  size_t days;  // in the store before
  std::function<base::Status(StockStore&)> run;
  bool has_upper_case_names = false;
};

void PrintTo(const Job& job, std::ostream* out) { *out << job.name; }

NewStock MakeNewStock(std::string_view code, std::string name) {
  return NewStock{Code(code), std::move(name), 2, 1, 800};
}

base::Status AppendNextDay(StockStore& store) {
  const size_t count = static_cast<size_t>(store.Days().Count());
  const std::vector<std::pair<base::SlotRecord, base::Bar>> bars = {
      {support::SlotOf(store, "AAA"), FlatBar(50)}, {support::SlotOf(store, "CCC"), FlatBar(51)}};
  return store.AppendDay(Weekdays(kFirstDay, count + 1).back(), bars);
}

base::Status AddLaterDays(StockStore& store, size_t more) {
  const size_t count = static_cast<size_t>(store.Days().Count());
  const auto days = Weekdays(kFirstDay, count + more);
  return store.AddDays(std::span(days).subspan(count));
}

base::Status InsertDays(StockStore& store) {
  const std::vector<base::Date> days = {Day("2020/01/04"), Day("2020/01/11"), Day("2020/05/30")};
  return store.AddDays(days);
}

base::Status AddTwoStocks(StockStore& store) {
  const std::vector<NewStock> stocks = {MakeNewStock("NEW", "新しい銘柄"),
                                        MakeNewStock("ANEW", "アニュー")};
  return store.AddStocks(stocks);
}

base::Status ChangeSomeBars(StockStore& store) {
  std::vector<BarChange> changes;
  for (int32_t day = 1; day <= store.Days().Count(); day += 10) {
    changes.push_back({support::SlotOf(store, "BBB"), base::DayIndex(day), FlatBar(day)});
  }
  changes.push_back({support::SlotOf(store, "AAA"), base::DayIndex(1), base::Bar()});
  return store.ChangeBars(changes);
}

base::Status SaveSomeCompanies(StockStore& store) {
  CompanyTable companies;
  for (const StockRecord& stock : store.Master().Stocks()) {
    for (const CompanyField& field : kCompanyFields) {
      companies.Set(stock, field, orin::support::Price(stock.slot.Value()));
    }
  }
  return store.SaveCompanies(companies);
}

SplitEvent TheSplit() { return {Code("AAA"), "AAA", 2, "2", Day("2020/05/29")}; }

std::vector<Job> Jobs() {
  return {
      {"FirstDayOfAll", 0, AppendNextDay},
      {"DayInTheCurrentFile", 3, AppendNextDay},
      {"DayThatBeginsAFile", 100, AppendNextDay},
      {"DaysInTheCurrentFile", 3, [](StockStore& store) { return AddLaterDays(store, 2); }},
      {"DaysThatFillAFileAndBeginTwo", 98,
       [](StockStore& store) { return AddLaterDays(store, 110); }},
      {"DaysInBetween", 104, InsertDays},
      {"DaysInBetweenThatBeginAFile", 99, InsertDays},
      {"Stocks", 102, AddTwoStocks},
      {"StocksOfAnEmptyStore", 0, AddTwoStocks},
      {"Bars", 102, ChangeSomeBars},
      {"SplitList", 3, [](StockStore& store) { return store.SaveSplits(SplitList({TheSplit()})); }},
      {"Companies", 3, SaveSomeCompanies},
      {"SplitCorrection", 102, [](StockStore& store) { return store.CorrectForSplit(TheSplit()); }},
      {"UpperCaseDayThatBeginsAFile", 100, AppendNextDay, true},
      {"UpperCaseDaysInBetween", 99, InsertDays, true},
      {"UpperCaseStocks", 102, AddTwoStocks, true},
  };
}

/// Everything a user of the store can see, as text.
std::string ContentOf(const StockStore& store) {
  std::string text = store.Master().Header().date.ToCompact() + " " +
                     std::to_string(store.Master().Header().current_file) + " " +
                     std::to_string(store.Master().Header().current_record) + "\n";
  for (const StockRecord& stock : store.Master().Stocks()) {
    text +=
        std::string(stock.code.Padded()) + std::to_string(stock.slot.Value()) + stock.name + ":";
    for (const base::Bar& bar : AllBars(store, stock.code.Text())) {
      text += bar.date.ToCompact() + " " + bar.open.ToText() + " " + bar.volume.ToText() + ",";
    }
    text += "\n";
  }
  for (const SplitEvent& event : store.Splits().Events()) {
    text += std::string(event.code.Text()) + event.ratio_text;
  }
  return text;
}

/// The companion files belong to the state too.
std::string ContentWithCompanions(const StockStore& store) {
  std::string text = ContentOf(store);
  for (const FileKind kind : {FileKind::kNameIndex, FileKind::kAdded, FileKind::kDeleted,
                              FileKind::kCompanies, FileKind::kStatements}) {
    text += base::ReadFile(PathOf(store.Location(), {kind, 0})).value_or("missing");
  }
  return text;
}

class StoppedWriter : public ::testing::TestWithParam<Job> {
 protected:
  void SetUp() override {
    StoreBuilder builder("stopped");
    builder.Days(Weekdays(kFirstDay, GetParam().days)).Split("BBB", 3, "2020/01/10");
    builder.Split("AAA", 2, "2020/05/29");
    for (const std::string_view code : {"AAA", "BBB", "CCC"}) {
      std::vector<base::Bar> bars;
      for (size_t i = 0; i < GetParam().days; ++i) bars.push_back(FlatBar(double(i + 10), 200));
      builder.Stock(code, bars);
    }
    const StoreLocation built = builder.Build();
    if (GetParam().has_upper_case_names) {
      orin::support::RenameToUpperCase(built.system_directory);
      orin::support::RenameToUpperCase(built.data_directory);
    }
    root_ = built.system_directory.parent_path();
    pristine_ = root_;
    pristine_ += "_pristine";
    fs::remove_all(pristine_);
    fs::rename(root_, pristine_);
    location_ = built;
    Reset();
    StockStore store = Open(base::NativeFileSystem()).value();
    before_ = ContentWithCompanions(store);
    ASSERT_TRUE(GetParam().run(store));
    after_ = ContentWithCompanions(store);
    ASSERT_NE(before_, after_);
  }
  void TearDown() override {
    fs::remove_all(root_);
    fs::remove_all(pristine_);
  }

  void Reset() {
    fs::remove_all(root_);
    fs::copy(pristine_, root_, fs::copy_options::recursive);
  }
  base::Result<StockStore> Open(base::FileSystem& files, Access access = Access::kWrite) {
    return StockStore::Open(location_, {access, {}}, files);
  }
  base::Status OpenAndRun(base::FileSystem& files) {
    auto store = Open(files);
    return store ? GetParam().run(*store) : base::Forward(store);
  }

  /// The store is whole after the next start, whichever way it is opened, and can go on.
  void ExpectBeforeOrAfter(bool must_be_after, Access access) {
    std::string content;
    {
      const auto store = Open(base::NativeFileSystem(), access);
      ASSERT_TRUE(store) << store.error().message;
      content = ContentWithCompanions(*store);
    }
    ASSERT_TRUE(content == after_ || (content == before_ && !must_be_after))
        << content << "\nbefore\n"
        << before_;
    base::SilentProgress progress;
    ASSERT_THAT(CheckStore(location_, progress).value(), ::testing::IsEmpty());
    if (content == before_) {
      const base::Status repeated = OpenAndRun(base::NativeFileSystem());
      ASSERT_TRUE(repeated) << repeated.error().message;
    }
    ASSERT_EQ(ContentWithCompanions(Open(base::NativeFileSystem()).value()), after_);
    for (const auto& directory : {location_.system_directory, location_.data_directory}) {
      for (const auto& entry : fs::directory_iterator(directory)) {
        ASSERT_NE(entry.path().extension(), ".tmp") << entry.path();
      }
    }
  }

  void StopEverywhere(Loss loss, bool torn) {
    for (int64_t n = 1;; ++n) {
      SCOPED_TRACE("operation " + std::to_string(n));
      Reset();
      FaultyFileSystem files;
      files.DieAt(n);
      files.LoseOnDeath(loss);
      if (torn) files.TearLastWrite();
      const bool succeeded = OpenAndRun(files).has_value();
      // One operation more, so that the power also fails right after the job has succeeded.
      static_cast<void>(files.Remove(root_ / "nothing"));
      ExpectBeforeOrAfter(succeeded, n % 2 == 0 ? Access::kRead : Access::kWrite);
      if (HasFatalFailure()) return;
      if (!files.IsDead()) {
        EXPECT_TRUE(succeeded);
        break;
      }
    }
  }

  fs::path root_;
  fs::path pristine_;
  StoreLocation location_;
  std::string before_;
  std::string after_;
};

TEST_P(StoppedWriter, KilledAnywhereLeavesTheStoreBeforeOrAfter) {
  StopEverywhere(Loss::kNothing, false);
}

TEST_P(StoppedWriter, TornWriteLeavesTheStoreBeforeOrAfter) {
  StopEverywhere(Loss::kNothing, true);
}

TEST_P(StoppedWriter, LostWritesLeaveTheStoreBeforeOrAfter) {
  StopEverywhere(Loss::kWrites, false);
}

TEST_P(StoppedWriter, LostNamesLeaveTheStoreBeforeOrAfter) {
  StopEverywhere(Loss::kWritesAndNames, false);
}

TEST_P(StoppedWriter, FullDiskLeavesTheStoreUsableAndWholeOnceThereIsSpace) {
  for (int64_t space = 0;; space += space < 1000 ? 97 : 3989) {
    SCOPED_TRACE("space " + std::to_string(space));
    Reset();
    FaultyFileSystem files;
    files.LimitGrowth(space);
    bool succeeded = false;
    {
      auto store = Open(files);
      ASSERT_TRUE(store) << store.error().message;
      succeeded = GetParam().run(*store).has_value();
      ASSERT_EQ(ContentWithCompanions(*store), succeeded ? after_ : before_);
      if (!succeeded) {
        files.LimitGrowth(int64_t{1} << 30);
        const base::Status repeated = GetParam().run(*store);
        ASSERT_TRUE(repeated) << repeated.error().message;
        ASSERT_EQ(ContentWithCompanions(*store), after_);
        Reset();
        FaultyFileSystem full;
        full.LimitGrowth(space);
        ASSERT_FALSE(OpenAndRun(full));
      }
    }
    ExpectBeforeOrAfter(succeeded, Access::kWrite);
    if (HasFatalFailure() || succeeded) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Jobs, StoppedWriter, ::testing::ValuesIn(Jobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace
}  // namespace orin::store
