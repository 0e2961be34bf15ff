#include "store/splits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/cp932.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using orin::support::BarOf;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::NoBar;
using orin::support::Price;
using orin::support::StoreBuilder;
using orin::support::Weekdays;

constexpr std::string_view kHeader =
    "T:株式分割銘柄,株式減資銘柄\r\nD:2100/01/01\r\n銘柄コード,銘柄名,分割倍率,権利付最終日\r\n";

SplitEvent Event(std::string_view code, double ratio, std::string_view day) {
  return {Code(code), std::string(code), ratio, "", Day(day)};
}

SplitList Parse(const std::string& text, std::vector<std::string>& problems) {
  return SplitList::Parse(text, "株式分割.txt", problems);
}

base::BarColumns ThreeDays() {
  base::BarColumns bars;
  for (const base::Date day : Weekdays("2020/01/06", 3)) {
    base::Bar bar = BarOf(10, 12, 8, 9, 100);
    bar.date = day;
    bars.Append(bar);
  }
  return bars;
}

TEST(SplitList, WritesTheThreeHeaderLinesAndTheEventsInCodePage932) {
  const SplitList list({{Code("AAPL"), "アップル", 7, "7", Day("2014/06/06")},
                        {Code("C"), "CITIGROUP", 0.1, "", Day("2011/05/06")}});
  const std::string text =
      std::string(kHeader) + "AAPL,アップル,7,2014/06/06\r\nC,CITIGROUP,0.1,2011/05/06\r\n";
  EXPECT_EQ(list.Serialize().value(), base::EncodeCp932(text).value());
}

TEST(SplitList, ReadsBothEncodingsAndKeepsTheRatioAsWritten) {
  const std::string text = std::string(kHeader) + "AAPL,アップル,7.000,2014/6/6\r\n\r\n";
  for (const std::string& bytes : {text, base::EncodeCp932(text).value()}) {
    std::vector<std::string> problems;
    const SplitList list = Parse(bytes, problems);
    EXPECT_THAT(problems, ::testing::IsEmpty());
    ASSERT_EQ(list.Events().size(), 1U);
    const SplitEvent& event = list.Events()[0];
    EXPECT_EQ(event.code, Code("AAPL"));
    EXPECT_EQ(event.name, "アップル");
    EXPECT_EQ(event.ratio, 7);
    EXPECT_EQ(event.ratio_text, "7.000");
    EXPECT_EQ(event.last_day_with_rights, Day("2014/06/06"));
  }
}

TEST(SplitList, NameMayHoldCommas) {
  std::vector<std::string> problems;
  const SplitList list = Parse("X,Foo, Inc.,2,2020/01/06\n", problems);
  ASSERT_EQ(list.Events().size(), 1U);
  EXPECT_EQ(list.Events()[0].name, "Foo, Inc.");
}

TEST(SplitList, LineThatIsNoEventIsToldAndPassedOver) {
  for (const std::string line :
       {"X,name,2", "X", ",name,2,2020/01/06", "TOOLONGCODE,n,2,2020/01/06", "X,n,0,2020/01/06",
        "X,n,-2,2020/01/06", "X,n,inf,2020/01/06", "X,n,nan,2020/01/06", "X,n,2x,2020/01/06",
        "X,n,,2020/01/06", "X,n,1e3,2020/01/06", "X,n,2,2020/02/30", "X,n,2,", "X,n,2,20200106",
        "X Y,n,2,2020/01/06", "\xFF\xFE\x80,\x81,2,2020/01/06"}) {
    std::vector<std::string> problems;
    const SplitList list = Parse("A,n,2,2020/01/06\n" + line + "\nB,n,2,2020/01/06\n", problems);
    EXPECT_EQ(list.Events().size(), 2U) << line;
    ASSERT_EQ(problems.size(), 1U) << line;
    EXPECT_THAT(problems[0], ::testing::StartsWith("「株式分割.txt」の2行目：")) << line;
  }
}

TEST(SplitList, LinesThatAreNoEventsAreKeptBehindTheEvents) {
  const std::string kept =
      "A,a,two,2020/01/07\r\n!@@@@@@@@,,1,2020/01/06\r\n!@@@@@@@,,1,2020/01/06\r\n＃メモ\r\n";
  const std::string text =
      std::string(kHeader) + kept + "B,b,2,2020/01/06\r\nT:X,x,3,2020/01/06\r\n";
  const std::string written =
      base::EncodeCp932(std::string(kHeader) + "B,b,2,2020/01/06\r\nT:X,x,3,2020/01/06\r\n" + kept)
          .value();
  for (const std::string& bytes : {text, base::EncodeCp932(text).value()}) {
    std::vector<std::string> problems;
    const SplitList list = Parse(bytes, problems);
    EXPECT_EQ(problems.size(), 2U);  // an emptied entry is no problem
    EXPECT_EQ(list.Events().size(), 2U);
    EXPECT_EQ(list.Serialize().value(), written);
  }
  // Bytes that are no text stay as they are; characters that the code page lacks are told.
  std::vector<std::string> problems;
  EXPECT_THAT(Parse("\x81\xFF,x\n", problems).Serialize().value(),
              ::testing::EndsWith("\r\n\x81\xFF,x\r\n"));
  EXPECT_THAT(Parse("한\n", problems).Serialize().value(), ::testing::EndsWith("\r\nU+D55C\r\n"));
}

TEST(SplitList, TextOutsideTheCodePageIsRefusedByFileAndStock) {
  const auto refused = SplitList({{Code("B"), "한국", 2, "2", Day("2020/01/06")}}).Serialize();
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().message, ::testing::HasSubstr("「株式分割.txt」に書く銘柄B"));
}

TEST(SplitRatio, IsADecimalNumberAboveZero) {
  EXPECT_EQ(ParseSplitRatio(" 2.50 ").value(), 2.5);
  EXPECT_EQ(ParseSplitRatio("0.00001").value(), 0.00001);
  for (const std::string bad : {"", "0", "-1", "1e3", "2x", "２", "1,000", "inf", "+2"}) {
    const auto refused = ParseSplitRatio(bad);
    ASSERT_FALSE(refused) << bad;
    EXPECT_THAT(refused.error().message, ::testing::HasSubstr("「" + bad + "」"));
  }
}

TEST(SplitList, EventsOfAStockComeOldestFirst) {
  const SplitList list({Event("B", 2, "2020/03/02"), Event("A", 4, "2020/02/03"),
                        Event("B", 3, "2020/01/06"), Event("C", 5, "2020/01/06")});
  const auto events = list.EventsOf(Code("B"));
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].ratio, 3);
  EXPECT_EQ(events[1].ratio, 2);
  EXPECT_TRUE(list.EventsOf(Code("D")).empty());
  EXPECT_TRUE(SplitList().EventsOf(Code("A")).empty());
  EXPECT_EQ(list.Events()[0].ratio, 2);
}

TEST(AdjustForSplit, CoversTheLastDayWithRightsAndNothingAfter) {
  base::BarColumns bars = ThreeDays();
  AdjustForSplit(Event("A", 2, "2020/01/07"), bars);
  for (const size_t i : {0U, 1U}) {
    EXPECT_EQ(bars.At(i).open, Price(5));
    EXPECT_EQ(bars.At(i).high, Price(6));
    EXPECT_EQ(bars.At(i).low, Price(4));
    EXPECT_EQ(bars.At(i).close, Price(4.5));
    EXPECT_EQ(bars.At(i).volume, Price(200));
  }
  EXPECT_EQ(bars.At(2), ThreeDays().At(2));
  AdjustForSplit(Event("A", 2, "2020/01/05"), bars);
  EXPECT_EQ(bars.At(0).open, Price(5));
}

TEST(AdjustForSplit, DayWithoutDataStaysAsItIs) {
  base::BarColumns bars = ThreeDays();
  base::Bar none = NoBar();
  none.date = bars.dates[1];
  bars.Put(1, none);
  AdjustForSplit(Event("A", 3, "2020/01/31"), bars);
  EXPECT_EQ(bars.At(1), none);
  EXPECT_EQ(bars.At(0).open, base::Currency::FromRaw(33333));
  EXPECT_EQ(bars.At(0).volume, Price(300));
}

TEST(AdjustForSplit, ValueOutOfRangeMakesADayWithoutData) {
  base::BarColumns bars = ThreeDays();
  bars.volume[0] = base::Currency::FromRaw(INT64_MAX / 2);
  base::Bar none = NoBar();
  none.date = bars.dates[0];
  AdjustForSplit(Event("A", 1e6, "2020/01/31"), bars);
  EXPECT_EQ(bars.At(0), none);
  EXPECT_EQ(bars.At(1).volume, Price(1e8));
}

TEST(AdjustedBars, AllEventsOfTheStockCountInWhateverOrderTheFileHasThem) {
  std::vector<std::vector<base::Bar>> loaded;
  for (const bool reversed : {false, true}) {
    StoreBuilder builder("adjusted");
    builder.Days(Weekdays("2020/01/06", 5)).Stock("A", std::vector(5, FlatBar(60, 10)));
    builder.Stock("B", std::vector(5, FlatBar(60, 10)));
    builder.Split("A", reversed ? 3 : 2, reversed ? "2020/01/08" : "2020/01/06");
    builder.Split("A", reversed ? 2 : 3, reversed ? "2020/01/06" : "2020/01/08");
    const StockStore store = builder.Open();
    base::BarColumns bars;
    for (const StockRecord& stock : store.Master().Stocks()) {
      store.LoadAdjustedBars(stock, base::DayIndex(1), store.Days().Last(), bars);
      std::vector<base::Bar> copied;
      for (size_t i = 0; i < bars.Size(); ++i) copied.push_back(bars.At(i));
      loaded.push_back(copied);
    }
  }
  ASSERT_EQ(loaded.size(), 4U);
  const std::vector<double> expected = {10, 20, 20, 60, 60};
  for (size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(loaded[0][i].close, Price(expected[i]));
    EXPECT_EQ(loaded[0][i].volume, Price(600 / expected[i]));
    EXPECT_EQ(loaded[1][i].close, Price(60));
  }
  EXPECT_EQ(loaded[0], loaded[2]);
}

}  // namespace
}  // namespace orin::store
