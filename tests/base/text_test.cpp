#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "base/bars.h"
#include "base/coding.h"
#include "base/record_file.h"

namespace orin::base {
namespace {

using ::testing::ElementsAre;

TEST(Text, SplitKeepsEmptyPieces) {
  EXPECT_THAT(SplitByDelimiter("", ",").value(), ElementsAre(""));
  EXPECT_THAT(SplitByDelimiter(",a,,b,", ",").value(), ElementsAre("", "a", "", "b", ""));
  EXPECT_THAT(SplitByDelimiter("条件：終値(0)：", "：").value(),
              ElementsAre("条件", "終値(0)", ""));
  EXPECT_THAT(SplitByDelimiter("aaaaa", "aa").value(), ElementsAre("", "", "a"));
  EXPECT_THAT(SplitByDelimiter("a b", "").value(), ElementsAre("a b"));
}

TEST(Text, SplitStopsAtAThousandPieces) {
  EXPECT_EQ(SplitByDelimiter(std::string(999, ','), ",")->size(), 1000U);
  const auto split = SplitByDelimiter(std::string(1000, ','), ",");
  ASSERT_FALSE(split.has_value());
  EXPECT_NE(split.error().message.find("1000"), std::string::npos);
}

TEST(Text, LinesEndInEitherWay) {
  EXPECT_THAT(SplitLines(""), ElementsAre());
  EXPECT_THAT(SplitLines("a\r\nb\n\nc"), ElementsAre("a", "b", "", "c"));
  EXPECT_THAT(SplitLines("\r\n"), ElementsAre(""));
  EXPECT_THAT(SplitLines("a\rb\r"), ElementsAre("a\rb"));
}

TEST(Text, TrimTakesHalfWidthBlanksAlone) {
  EXPECT_EQ(TrimBlanks(" \t 株　価 \t"), "株　価");
  EXPECT_EQ(TrimBlanks("　"), "　");
  EXPECT_EQ(TrimBlanks(" \t "), "");
}

TEST(Text, CaseIsIgnoredInAsciiAlone) {
  EXPECT_TRUE(EqualsIgnoreCase("Update_File", "uPDATE_fILE"));
  EXPECT_FALSE(EqualsIgnoreCase("Ａ", "ａ"));
  EXPECT_FALSE(EqualsIgnoreCase("a", "ab"));
  EXPECT_FALSE(EqualsIgnoreCase("@[", "`{"));
}

TEST(Text, PaddingCountsColumns) {
  EXPECT_EQ(PadRight("AAPL", 8), "AAPL    ");
  EXPECT_EQ(PadRight("株ｱ", 5), "株ｱ  ");
  EXPECT_EQ(PadLeft("12", 4), "  12");
  EXPECT_EQ(PadLeft("長い名前", 4), "長い名前");
  EXPECT_EQ(PadRight("Ａ￥", 5), "Ａ￥ ");
  EXPECT_EQ(PadRight("\xFF", 2), "\xFF ");
}

TEST(Coding, NumbersAreLittleEndianWhateverTheirSign) {
  char bytes[8] = {};
  PutUint32(bytes, 0x89ABCDEFU);
  EXPECT_EQ(std::string(bytes, 4), "\xEF\xCD\xAB\x89");
  EXPECT_EQ(GetUint32(bytes), 0x89ABCDEFU);
  PutInt16(bytes, -2);
  EXPECT_EQ(GetInt16(bytes), -2);
  EXPECT_EQ(GetUint16(bytes), 0xFFFE);
  PutCurrency(bytes, kNoDataVolume);
  EXPECT_EQ(std::string(bytes, 8), "\xF0\xD8\xFF\xFF\xFF\xFF\xFF\xFF");
  EXPECT_EQ(GetCurrency(bytes), kNoDataVolume);
  PutDouble(bytes, 43840);
  EXPECT_EQ(std::string(bytes, 8), std::string("\0\0\0\0\0\x68\xE5\x40", 8));
  EXPECT_EQ(GetDouble(bytes), 43840);
}

TEST(Text, TerminalGetsNoBytesThatAreNoTextAndNoControlCharacters) {
  EXPECT_EQ(Printable("銘柄 A-1"), "銘柄 A-1");
  EXPECT_EQ(Printable("\xff\x1b[31m\xe3\x81"), "\\xFF\\x1B[31m\\xE3\\x81");
  EXPECT_EQ(Printable("\xc2\x9b"
                      "2J\x7f\t\r"),
            "\\xC2\\x9B2J\\x7F\\x09\\x0D");
  EXPECT_EQ(Printable("一\n二"), "一\n二");
  EXPECT_EQ(PrintableLine("一\n二"), "一\\x0A二");
}

TEST(RecordView, CountsWholeRecordsAndRefusesOthers) {
  const RecordView view("aabbc", 2);
  EXPECT_EQ(view.Count(), 2);
  EXPECT_TRUE(view.HasPartialRecord());
  EXPECT_EQ(view.Record(1), "aa");
  EXPECT_EQ(view.Record(2), "bb");
  for (const int32_t number : {0, 3, -1}) EXPECT_FALSE(view.Record(number).has_value()) << number;
}

TEST(Bars, ColumnsGrowWithBarsOfNoData) {
  BarColumns columns;
  Bar bar;
  bar.date = Date::FromSerial(43840);
  bar.close = Currency::FromInt(10);
  bar.volume = Currency::FromInt(0);
  columns.Append(bar);
  columns.Resize(3);
  EXPECT_EQ(columns.At(0), bar);
  EXPECT_TRUE(columns.At(0).HasData());
  EXPECT_FALSE(columns.At(2).HasData());
  const BarsView view(columns, 5);
  EXPECT_EQ(view.Count(), 7);
  EXPECT_EQ(view.Close(5), bar.close);
  EXPECT_EQ(view.Until(6).Count(), 6);
  EXPECT_EQ(view.Until(9).Count(), 7);
  EXPECT_EQ(BarsView().Count(), 0);
}

}  // namespace
}  // namespace orin::base
