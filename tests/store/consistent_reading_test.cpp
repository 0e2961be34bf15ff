#include "store/consistent_reading.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/file_names.h"
#include "store/trend_lines.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using support::Code;
using support::Day;
using support::FlatBar;
using support::StoreBuilder;
using support::Weekdays;
using testing::HasSubstr;

const ReadingPatience kThreeAttempts = {3, std::chrono::milliseconds(0)};

/// A store of two stocks with the price 10 on both days, and another process that changes it.
class ConsistentReading : public testing::Test {
 protected:
  ConsistentReading() : builder_("consistent") {
    builder_.Days(Weekdays("2020/01/06", 2))
        .Stock("A", {FlatBar(10), FlatBar(10)})
        .Stock("B", {FlatBar(10), FlatBar(10)});
    builder_.Build();
  }

  void SetPrices(double price) {
    StockStore writer = builder_.Open(Access::kWrite);
    std::vector<BarChange> changes;
    for (const StockRecord& stock : writer.Master().Stocks()) {
      for (const int32_t day : {1, 2}) {
        changes.push_back({stock.slot, base::DayIndex(day), FlatBar(price)});
      }
    }
    const base::Status changed = writer.ChangeBars(changes);
    ASSERT_TRUE(changed) << changed.error().message;
  }

  static double PriceOf(const StockStore& store, size_t stock) {
    base::BarColumns bars;
    store.LoadBars(store.Master().Stocks()[stock].slot, base::DayIndex(1), base::DayIndex(1), bars);
    return bars.At(0).close.ToDouble();
  }

  base::Result<StockStore> Read(const std::function<void(const StockStore&)>& work) {
    return ReadConsistently(builder_.Location(), {}, base::NativeFileSystem(), work,
                            kThreeAttempts);
  }

  StoreBuilder builder_;
};

TEST_F(ConsistentReading, ChangeBetweenTwoLoadsMixesNoStates) {
  std::pair<double, double> read;
  int calls = 0;
  const auto store = Read([&](const StockStore& opened) {
    read.first = PriceOf(opened, 0);
    if (++calls == 1) SetPrices(20);
    read.second = PriceOf(opened, 1);
  });
  ASSERT_TRUE(store) << store.error().message;
  EXPECT_EQ(read, std::pair(20.0, 20.0));
  EXPECT_EQ(calls, 2);
  EXPECT_FALSE(store->HasChangedOnDisk());
}

TEST_F(ConsistentReading, AppendedDayIsSeenWholeOrNotAtAll) {
  int calls = 0;
  std::vector<int32_t> days;
  const auto store = Read([&](const StockStore& opened) {
    days.push_back(opened.Days().Count());
    if (++calls > 1) return;
    StockStore writer = builder_.Open(Access::kWrite);
    ASSERT_TRUE(writer.AppendDay(Day("2020/02/03"), {}));
  });
  ASSERT_TRUE(store) << store.error().message;
  EXPECT_EQ(days, (std::vector<int32_t>{2, 3}));
}

TEST_F(ConsistentReading, StoreThatGoesOnChangingIsToldNotRead) {
  int calls = 0;
  const auto store = Read([&](const StockStore&) { SetPrices(20 + ++calls); });
  ASSERT_FALSE(store);
  EXPECT_THAT(store.error().message, HasSubstr("更新し続けている"));
  EXPECT_THAT(store.error().message,
              HasSubstr(base::PathText(builder_.Location().system_directory)));
  EXPECT_EQ(calls, 3);
}

TEST_F(ConsistentReading, ChangeWithinATickOfTheClockIsSeen) {
  // A reader that opens right after a write must not take the time of the next one for that of
  // the first. Only the file's time shows these writes.
  const auto path = PathOf(builder_.Location(), {FileKind::kDaily, 1});
  const std::string bytes = *base::ReadFile(path);
  const auto write = [&] { std::ofstream(path, std::ios::in | std::ios::binary) << bytes[0]; };
  for (int round = 0; round < 50; ++round) {
    write();
    const StockStore reader = builder_.Open();
    write();
    ASSERT_TRUE(reader.HasChangedOnDisk()) << "round " << round;
  }
}

TEST_F(ConsistentReading, CompanionFilesCountAndTrendLinesDoNot) {
  const auto change = [this](FileKind kind, int16_t number) {
    const auto path = PathOf(builder_.Location(), {kind, number});
    ASSERT_TRUE(base::ReplaceFile(base::NativeFileSystem(), path, "x"));
  };
  for (const StoreFile& file :
       {StoreFile{FileKind::kCompanies, 0}, StoreFile{FileKind::kStatements, 0},
        StoreFile{FileKind::kCredit, 1}, StoreFile{FileKind::kIntraday, 1},
        StoreFile{FileKind::kRanking, 0}, StoreFile{FileKind::kSplits, 0}}) {
    const StockStore reader = builder_.Open();
    change(file.kind, file.number);
    EXPECT_TRUE(reader.HasChangedOnDisk()) << FileName(file);
  }
  const StockStore reader = builder_.Open();
  ASSERT_TRUE(SaveTrendLines(builder_.Location(), reader.Master().Stocks()[0].slot, TrendLines(),
                             base::NativeFileSystem()));
  EXPECT_FALSE(reader.HasChangedOnDisk());
}

TEST_F(ConsistentReading, CopyIsWatchedWhereItWasCopiedFrom) {
  const StockStore original = builder_.Open();
  const StoreLocation location = {builder_.Location().system_directory.parent_path() / "copy",
                                  builder_.Location().system_directory.parent_path() / "copy"};
  for (const auto& from :
       {builder_.Location().system_directory, builder_.Location().data_directory}) {
    std::filesystem::copy(from, location.system_directory);
  }
  auto& files = base::NativeFileSystem();
  const auto copy = StockStore::Open(location, {Access::kRead, {}, &original}, files);
  ASSERT_TRUE(copy) << copy.error().message;
  const auto again = StockStore::Open(location, {Access::kRead, 1, &*copy}, files);
  ASSERT_TRUE(again) << again.error().message;
  EXPECT_EQ(copy->OriginalLocation().system_directory, original.Location().system_directory);
  EXPECT_FALSE(again->HasChangedOnDisk());
  SetPrices(30);
  EXPECT_TRUE(copy->HasChangedOnDisk());
  EXPECT_TRUE(again->HasChangedOnDisk());
}

}  // namespace
}  // namespace orin::store
