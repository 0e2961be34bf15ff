#include "store/stock_store.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/name_index.h"
#include "store/store_check.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::NoBar;
using orin::support::Price;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<base::Bar> Rising(size_t count) {
  std::vector<base::Bar> bars;
  for (size_t i = 0; i < count; ++i) bars.push_back(FlatBar(static_cast<double>(i + 1)));
  return bars;
}

std::vector<double> Closes(const StockStore& store, std::string_view code) {
  std::vector<double> closes;
  for (const base::Bar& bar : AllBars(store, code)) {
    closes.push_back(bar.HasData() ? bar.close.ToDouble() : -1);
  }
  return closes;
}

NewStock Stock(std::string_view code, std::string name) {
  return NewStock{Code(code), std::move(name), 1, 1, 100};
}

TEST(StockStore, NewStoreIsEmptyAndIsNotMadeTwice) {
  StoreBuilder builder("empty");
  const StockStore store = builder.Open(Access::kWrite);
  EXPECT_TRUE(store.Master().Stocks().empty());
  EXPECT_EQ(store.Days().Count(), 0);
  EXPECT_EQ(fs::file_size(PathOf(store.Location(), {FileKind::kMaster, 0})), 52U);
  EXPECT_THAT(support::FindingsOf(store.Location()), IsEmpty());
  const base::Status again = StockStore::Create(store.Location(), base::NativeFileSystem());
  ASSERT_FALSE(again);
}

TEST(StockStore, LoadsTheDaysAskedForAcrossFiles) {
  StoreBuilder builder("range");
  builder.Days(Weekdays("2020/01/06", 250)).Stock("A").Stock("B", Rising(250));
  const StockStore store = builder.Open();
  base::BarColumns bars;
  bars.Append(FlatBar(99));
  store.LoadBars(support::SlotOf(store, "B"), base::DayIndex(99), base::DayIndex(202), bars);
  ASSERT_EQ(bars.Size(), 104U);
  for (size_t i = 0; i < bars.Size(); ++i) {
    EXPECT_EQ(bars.close[i], Price(static_cast<double>(99 + i)));
    EXPECT_EQ(bars.dates[i], store.Days().Days()[98 + i]);
  }
  store.LoadBars(support::SlotOf(store, "A"), base::DayIndex(250), base::DayIndex(250), bars);
  ASSERT_EQ(bars.Size(), 1U);
  EXPECT_FALSE(bars.At(0).HasData());
}

TEST(StockStore, DayIsAppendedForEveryStock) {
  StoreBuilder builder("append");
  builder.Days(Weekdays("2020/01/06", 2)).Stock("A", Rising(2)).Stock("B", Rising(2));
  StockStore store = builder.Open(Access::kWrite);
  const std::vector<std::pair<base::SlotRecord, base::Bar>> bars = {
      {support::SlotOf(store, "B"), FlatBar(7)}};
  ASSERT_TRUE(store.AppendDay(Day("2020/01/10"), bars));
  EXPECT_EQ(store.Master().Header().date, Day("2020/01/10"));
  EXPECT_EQ(Closes(store, "A"), (std::vector<double>{1, 2, -1}));
  EXPECT_EQ(Closes(store, "B"), (std::vector<double>{1, 2, 7}));
  for (const std::string_view not_newer : {"2020/01/10", "2020/01/09"}) {
    const base::Status refused = store.AppendDay(Day(not_newer), bars);
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message, HasSubstr(std::string(not_newer)));
  }
  const std::vector<std::pair<base::SlotRecord, base::Bar>> elsewhere = {
      {base::SlotRecord(1), FlatBar(7)}};
  EXPECT_FALSE(store.AppendDay(Day("2020/01/13"), elsewhere));
  EXPECT_EQ(store.Days().Count(), 3);
}

TEST(StockStore, InsertedDaysMoveTheLaterOnesWithTheirBars) {
  StoreBuilder builder("insert");
  const auto days = Weekdays("2020/01/06", 230);
  builder.Days(days).Stock("A", Rising(230)).Stock("B");
  StockStore store = builder.Open(Access::kWrite);
  std::vector<base::Date> added = Weekdays("2019/11/01", 30);  // in front
  for (const size_t week : {0U, 7U, 19U, 20U, 35U}) {          // Saturdays in between
    added.push_back(base::Date::FromSerial(days[week * 5].Serial() + 5));
  }
  added.push_back(days[3]);  // there already
  std::ranges::sort(added);
  added.push_back(base::Date::FromSerial(days.back().Serial() + 1));  // newer
  ASSERT_TRUE(store.AddDays(added));
  ASSERT_EQ(store.Days().Count(), 266);
  const std::vector<base::Bar> bars = AllBars(store, "A");
  size_t old = 0;
  for (size_t i = 0; i < bars.size(); ++i) {
    const bool was_there = old < days.size() && bars[i].date == days[old];
    ASSERT_EQ(bars[i].HasData(), was_there) << bars[i].date.ToText();
    if (was_there) ++old;
    ASSERT_EQ(bars[i].close, Price(was_there ? static_cast<double>(old) : 0));
  }
  EXPECT_EQ(old, days.size());
  EXPECT_THAT(support::FindingsOf(store.Location()), IsEmpty());
  EXPECT_FALSE(store.AddDays(std::vector{days[1], days[0]}));
}

TEST(StockStore, AddedStockHasTheNextSlotAndNoDataInAllFiles) {
  StoreBuilder builder("addition");
  builder.Days(Weekdays("2020/01/06", 101)).Stock("A", Rising(101));
  StockStore store = builder.Open(Access::kWrite);
  ASSERT_TRUE(
      store.AddStocks(std::vector{Stock("B", "びっくりＢ社の長すぎる名前"), Stock("C", "")}));
  ASSERT_EQ(store.Master().Stocks().size(), 3U);
  EXPECT_EQ(support::SlotOf(store, "B").Value(), 3);
  EXPECT_EQ(support::SlotOf(store, "C").Value(), 4);
  EXPECT_EQ(store.Master().Stocks()[1].name, "びっくりＢ社の長");
  EXPECT_EQ(Closes(store, "B"), std::vector<double>(101, -1));
  EXPECT_EQ(Closes(store, "A").back(), 101);
  const auto index =
      DecodeNameIndex(base::ReadFile(PathOf(store.Location(), {FileKind::kNameIndex, 0})).value());
  ASSERT_EQ(index.size(), 3U);
  EXPECT_EQ(index[2].company, "びっくりＢ社の長すぎる名前");
  const StockList added =
      DecodeStockList(base::ReadFile(PathOf(store.Location(), {FileKind::kAdded, 0})).value());
  ASSERT_EQ(added.stocks.size(), 3U);
  EXPECT_EQ(added.stocks[2].code, Code("C"));
  EXPECT_EQ(added.stocks[2].record.Value(), 4);
}

TEST(StockStore, StocksThatCannotBeAddedLeaveEverythingAsItWas) {
  StoreBuilder builder("refused");
  builder.Days(Weekdays("2020/01/06", 2)).Stock("A");
  StockStore store = builder.Open(Access::kWrite);
  std::vector<NewStock> too_many;
  for (int i = 0; i < 32767; ++i) too_many.push_back(Stock("X" + std::to_string(i), "x"));
  const std::vector<std::pair<std::vector<NewStock>, std::string>> cases = {
      {{Stock("B", "b"), Stock("A", "a")}, "銘柄コードAはすでに登録されています。"},
      {{Stock("B", "b"), Stock("B", "a")}, "銘柄コードBが2つあります。"},
      {{Stock("B", "한국")}, "銘柄B"},
      {{NewStock()}, "銘柄コードのない"},
      {too_many, "32767"},
  };
  for (const auto& [stocks, message] : cases) {
    const base::Status refused = store.AddStocks(stocks);
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message, HasSubstr(message));
  }
  EXPECT_EQ(store.Master().Stocks().size(), 1U);
  EXPECT_THAT(support::FindingsOf(store.Location()), IsEmpty());
}

TEST(StockStore, ChangedBarsAreOfAnyOrderAndTheLastOneOfADayCounts) {
  StoreBuilder builder("change");
  builder.Days(Weekdays("2020/01/06", 102)).Stock("A", Rising(102)).Stock("B", Rising(102));
  StockStore store = builder.Open(Access::kWrite);
  const base::SlotRecord a = support::SlotOf(store, "A");
  const std::vector<BarChange> changes = {
      {support::SlotOf(store, "B"), base::DayIndex(101), FlatBar(500)},
      {a, base::DayIndex(100), FlatBar(600)},
      {a, base::DayIndex(101), FlatBar(601)},
      {a, base::DayIndex(1), FlatBar(1)},
      {a, base::DayIndex(2), FlatBar(700)},
      {a, base::DayIndex(2), FlatBar(701)},
      {a, base::DayIndex(3), NoBar()}};
  ASSERT_TRUE(store.ChangeBars(changes));
  const std::vector<double> closes = Closes(store, "A");
  EXPECT_THAT(std::vector(closes.begin(), closes.begin() + 4),
              ::testing::ElementsAre(1, 701, -1, 4));
  EXPECT_EQ(closes[99], 600);
  EXPECT_EQ(closes[100], 601);
  EXPECT_EQ(Closes(store, "B")[100], 500);
  EXPECT_FALSE(store.ChangeBars(std::vector<BarChange>{{a, base::DayIndex(103), FlatBar(1)}}));
  EXPECT_FALSE(store.ChangeBars(std::vector<BarChange>{{a, base::DayIndex(0), FlatBar(1)}}));
  for (const int32_t slot : {-1, 0, 1, 4, 40000}) {
    EXPECT_FALSE(store.ChangeBars(
        std::vector<BarChange>{{base::SlotRecord(slot), base::DayIndex(1), FlatBar(1)}}));
  }
}

TEST(StockStore, SplitCorrectionAdjustsTheStoredBarsAndTakesTheEventOffTheList) {
  StoreBuilder builder("correct");
  builder.Days(Weekdays("2020/01/06", 103)).Stock("A", std::vector(103, FlatBar(12, 10)));
  builder.Split("A", 2, "2020/05/22").Split("A", 3, "2020/01/06");
  StockStore store = builder.Open(Access::kWrite);
  const SplitEvent event = store.Splits().Events()[0];
  ASSERT_TRUE(store.CorrectForSplit(event));
  const std::vector<base::Bar> bars = AllBars(store, "A");
  for (const base::Bar& bar : bars) {
    const bool adjusted = bar.date <= Day("2020/05/22");
    EXPECT_EQ(bar.close, Price(adjusted ? 6 : 12));
    EXPECT_EQ(bar.volume, Price(adjusted ? 20 : 10));
  }
  ASSERT_EQ(store.Splits().Events().size(), 1U);
  EXPECT_EQ(store.Splits().Events()[0].ratio, 3);
  const base::Status twice = store.CorrectForSplit(event);
  ASSERT_FALSE(twice);
  EXPECT_THAT(twice.error().message, HasSubstr("2020/05/22"));
}

TEST(StockStore, CalendarBeginsAtTheFirstFileChosen) {
  StoreBuilder builder("first_file");
  const auto days = Weekdays("2020/01/06", 250);
  const StoreLocation location = builder.Days(days).Stock("A", Rising(250)).Build();
  auto& files = base::NativeFileSystem();
  auto store = StockStore::Open(location, {Access::kWrite, int16_t{2}}, files).value();
  EXPECT_EQ(store.FirstFile(), 2);
  ASSERT_EQ(store.Days().Count(), 150);
  EXPECT_EQ(store.Days().DateOf(base::DayIndex(1)), days[100]);
  EXPECT_EQ(Closes(store, "A").front(), 101);
  ASSERT_TRUE(store.ChangeBars(
      std::vector<BarChange>{{support::SlotOf(store, "A"), base::DayIndex(1), FlatBar(7)}}));
  EXPECT_EQ(Closes(store, "A").front(), 7);
  EXPECT_EQ(store.DaysOfFile(1).value(), std::pair(days[0], days[99]));
  EXPECT_EQ(store.DaysOfFile(3).value(), std::pair(days[200], days[249]));
  EXPECT_FALSE(store.DaysOfFile(4));
  EXPECT_FALSE(store.DaysOfFile(0));
  for (const int16_t outside : {int16_t{-1}, int16_t{0}, int16_t{4}}) {
    const auto refused = StockStore::Open(location, {Access::kRead, outside}, files);
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message, HasSubstr("1から3の範囲"));
  }
}

TEST(StockStore, OneWriterAtATimeAndReadersAnyTime) {
  StoreBuilder builder("locking");
  builder.Days(Weekdays("2020/01/06", 2)).Stock("A");
  auto& files = base::NativeFileSystem();
  const OpenOptions writing = {Access::kWrite, {}};
  {
    const StockStore writer = builder.Open(Access::kWrite);
    const auto second = StockStore::Open(builder.Location(), writing, files);
    ASSERT_FALSE(second);
    EXPECT_THAT(second.error().message, HasSubstr("他の処理が株価データを更新中です"));
    auto reader = StockStore::Open(builder.Location(), {}, files);
    ASSERT_TRUE(reader);
    EXPECT_FALSE(reader->AppendDay(Day("2020/02/03"), {}));
    std::ofstream(PathOf(builder.Location(), {FileKind::kJournal, 0})) << "x";
    EXPECT_FALSE(StockStore::Open(builder.Location(), {}, files));
  }
  EXPECT_TRUE(StockStore::Open(builder.Location(), {}, files));
  EXPECT_FALSE(fs::exists(PathOf(builder.Location(), {FileKind::kJournal, 0})));
  EXPECT_TRUE(StockStore::Open(builder.Location(), writing, files));
}

TEST(StockStore, ReaderTellsWhetherAnotherHasChangedTheFiles) {
  StoreBuilder builder("changed");
  builder.Days(Weekdays("2020/01/06", 2)).Stock("A", {FlatBar(10), FlatBar(11)});
  const std::vector<std::function<base::Status(StockStore&)>> changes = {
      [](StockStore& store) { return store.AppendDay(Day("2020/02/03"), {}); },
      [](StockStore& store) {
        // The header of the master stays as it is.
        return store.ChangeBars(std::vector<BarChange>{
            {store.Master().Stocks()[0].slot, base::DayIndex(1), FlatBar(12)}});
      },
      [](StockStore& store) {
        return store.AddStocks(std::vector<NewStock>{{Code("B"), "B"}});
      },
      [](StockStore& store) { return store.SaveSplits(SplitList()); },
  };
  builder.Build();
  for (const auto& change : changes) {
    const StockStore reader = builder.Open();
    EXPECT_FALSE(reader.HasChangedOnDisk());
    {
      StockStore writer = builder.Open(Access::kWrite);
      EXPECT_FALSE(reader.HasChangedOnDisk()) << "the lock alone is no change";
      const base::Status changed = change(writer);
      ASSERT_TRUE(changed) << changed.error().message;
    }
    EXPECT_TRUE(reader.HasChangedOnDisk());
  }
}

/// Makes the file shorter while it is mapped, as a restore that copies over it does.
class CutShort {
 public:
  CutShort(const StoreLocation& location, int16_t file, uintmax_t length)
      : path_(PathOf(location, {FileKind::kDaily, file})),
        bytes_(base::ReadFile(path_).value()),
        time_(fs::last_write_time(path_)) {
    fs::resize_file(path_, length);
  }
  void PutBack() const {
    std::ofstream(path_, std::ios::binary) << bytes_;
    fs::last_write_time(path_, time_);
  }

 private:
  fs::path path_;
  std::string bytes_;
  fs::file_time_type time_;
};

TEST(StockStore, AFileCutShortUnderAReaderIsAChange) {
  StoreBuilder builder("cut_reader");
  builder.Days(Weekdays("2020/01/06", 150)).Stock("A", Rising(150));
  const StockStore reader = builder.Open();
  const CutShort cut(builder.Location(), 1, 0);
  EXPECT_EQ(Closes(reader, "A").size(), 150U);
  EXPECT_TRUE(reader.HasChangedOnDisk());
  cut.PutBack();
  EXPECT_TRUE(reader.HasChangedOnDisk()) << "what it has read was zeros";
}

TEST(StockStore, NothingIsWrittenFromAFileCutShort) {
  StoreBuilder builder("cut_writer");
  builder.Days(Weekdays("2020/01/06", 150)).Stock("A", Rising(150));
  StockStore writer = builder.Open(Access::kWrite);
  const CutShort cut(builder.Location(), 1, 5000);
  const std::vector<base::Date> earlier = {Day("2020/01/03")};
  const base::Status added = writer.AddDays(earlier);
  ASSERT_FALSE(added);
  EXPECT_THAT(added.error().message, HasSubstr("短くされた"));
  EXPECT_FALSE(writer.AddDays(earlier)) << "as long as the file is short";
  cut.PutBack();
  EXPECT_TRUE(writer.AddDays(earlier));
  const std::vector<double> closes = Closes(writer, "A");
  ASSERT_EQ(closes.size(), 151U);
  EXPECT_EQ(closes[1], 1);
  EXPECT_EQ(closes.back(), 150);
  EXPECT_THAT(support::FindingsOf(builder.Location()), IsEmpty());
}

}  // namespace
}  // namespace orin::store
