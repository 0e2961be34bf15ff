#include "acquire/csv_history.h"

#include <gtest/gtest.h>

namespace orin::acquire {
namespace {

using base::Currency;
using base::Date;

constexpr const char* kHistoryHeader = "年月日,始値,高値,安値,終値,出来高\r\n";

CsvHistory Parse(const std::string& lines) { return ParseCsvHistory(kHistoryHeader + lines); }

TEST(CsvHistory, ReadsPricesAndVolumesBeyond32Bits) {
  const CsvHistory history =
      Parse("2020/01/09,12.5,13,12.00005,12.75,5000000000\r\n2020/01/10,1,1,1,1,0\n");
  ASSERT_EQ(history.bars.size(), 2u);
  const base::Bar& bar = history.bars[0];
  EXPECT_EQ(bar.date, *Date::FromYmd(2020, 1, 9));
  EXPECT_EQ(bar.open, Currency::FromRaw(125000));
  EXPECT_EQ(bar.low, Currency::FromRaw(120000)) << "a half is rounded to even";
  EXPECT_EQ(bar.volume, Currency::FromRaw(50'000'000'000'000));
  EXPECT_EQ(history.lines, (std::vector<int32_t>{2, 3}));
  EXPECT_TRUE(history.problems.Kept().empty());
}

TEST(CsvHistory, DayWithoutTradeIsLeftOutInSilence) {
  const CsvHistory history = Parse(
      "2020/01/08,-,-,-,-,0\r\n2020/01/09,0,0,0,0,0\r\n2020/01/10,1,2,1,0.0000,5\r\n"
      "\r\n2020/01/13,1,2,1,2,-\r\n");
  ASSERT_EQ(history.bars.size(), 1u);
  EXPECT_EQ(history.bars[0].volume, Currency());
  EXPECT_TRUE(history.problems.Kept().empty());
}

struct WrongLine {
  const char* line;
  const char* told;  // a part of the message
};

TEST(CsvHistory, WrongLineIsToldWithItsValueAndTheRestGoesOn) {
  const WrongLine kCases[] = {
      {"2020/02/30,1,1,1,1,1", "年月日「2020/02/30」"},
      {"20200110,1,1,1,1,1", "年月日「20200110」"},
      {"2020/01/10,abc,1,1,1,1", "始値「abc」"},
      {"2020/01/10,1,,1,1,1", "高値「」"},
      {"2020/01/10,1,1,1,1e3,1", "終値「1e3」"},
      {"2020/01/10,1,1,1,1,-1", "出来高「-1」"},
      {"2020/01/10,-1,1,-1,1,1", "始値「-1」が負"},
      {"2020/01/10,1,1,2,1,1", "高値「1」が安値「2」より低く"},
      {"2020/01/10,3,2,1,1,1", "始値「3」が高値と安値の間"},
      {"2020/01/10,1,2,1,0.5,1", "終値「0.5」が高値と安値の間"},
      {"2020/01/10,1,1,1,1", "項目の数が5"},
      {"2020/01/10,1,1,1,1,1,9", "項目の数が7"},
      {"2020/01/10,99999999999999999999,1,1,1,1", "始値「99999999999999999999」"},
      {"2020/01/10,\x01,1,1,1,1", "始値「?」"},
  };
  for (const WrongLine& wrong : kCases) {
    const CsvHistory history =
        Parse("2020/01/08,1,1,1,1,1\r\n" + std::string(wrong.line) + "\r\n2020/01/13,1,1,1,1,1");
    EXPECT_EQ(history.bars.size(), 2u) << wrong.line;
    ASSERT_EQ(history.problems.Kept().size(), 1u) << wrong.line;
    EXPECT_EQ(history.problems.Kept()[0].line, 3) << wrong.line;
    EXPECT_NE(history.problems.Kept()[0].message.find(wrong.told), std::string::npos)
        << history.problems.Kept()[0].message;
  }
}

TEST(CsvHistory, LinesInAnyOrderBecomeAscendingAndTheLastOfADateCounts) {
  const CsvHistory history =
      Parse("2020/01/10,3,3,3,3,1\n2020/01/08,1,1,1,1,1\n2020/01/10,4,4,4,4,1\n");
  ASSERT_EQ(history.bars.size(), 2u);
  EXPECT_EQ(history.bars[0].close, Currency::FromInt(1));
  EXPECT_EQ(history.bars[1].close, Currency::FromInt(4));
  EXPECT_EQ(history.lines[1], 4);
  ASSERT_EQ(history.problems.Kept().size(), 1u);
  EXPECT_NE(history.problems.Kept()[0].message.find("4行目"), std::string::npos);
}

TEST(CsvHistory, WrongHeaderReadsNothing) {
  for (const char* text : {"", "Date,Open,High,Low,Close,Volume\n2020/01/10,1,1,1,1,1\n",
                           "2020/01/10,1,1,1,1,1\n", "\xff\xfe\x00garbage"}) {
    const CsvHistory history = ParseCsvHistory(text);
    EXPECT_TRUE(history.bars.empty());
    ASSERT_EQ(history.problems.Kept().size(), 1u);
    EXPECT_EQ(history.problems.Kept()[0].line, 1);
  }
}

TEST(Quoted, CutsBetweenCharacters) {
  std::string text(58, 'a');
  text += "銘柄銘柄";
  EXPECT_EQ(Quoted(text), "「" + std::string(58, 'a') + "…」");
}

}  // namespace
}  // namespace orin::acquire
