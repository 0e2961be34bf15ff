#include "base/date.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace orin::base {
namespace {

TEST(Date, SerialsOfKnownDays) {
  struct Case {
    const char* text;
    const char* compact;
    int32_t serial;
    int weekday;
  };
  constexpr std::array cases = {
      Case{"1899/12/30", "18991230", 0, 7},       Case{"1899/12/31", "18991231", 1, 1},
      Case{"1900/01/01", "19000101", 2, 2},       Case{"1970/01/01", "19700101", 25569, 5},
      Case{"2000/02/29", "20000229", 36585, 3},   Case{"2020/01/10", "20200110", 43840, 6},
      Case{"0100/01/01", "01000101", -657434, 6}, Case{"9999/12/31", "99991231", 2958465, 6},
  };
  for (const Case& c : cases) {
    const auto date = Date::Parse(c.text);
    ASSERT_TRUE(date.has_value()) << c.text;
    EXPECT_EQ(date->Serial(), c.serial) << c.text;
    EXPECT_EQ(date->Weekday(), c.weekday) << c.text;
    EXPECT_EQ(date->ToText(), c.text);
    EXPECT_EQ(date->ToCompact(), c.compact);
    EXPECT_EQ(Date::ParseCompact(c.compact), date);
    EXPECT_EQ(Date::FromFile(c.serial), date);
  }
}

TEST(Date, EveryDayFollowsTheOneBefore) {
  std::optional<Date> before = Date::FromYmd(1895, 12, 31);
  ASSERT_TRUE(before.has_value());
  for (int year = 1896; year <= 2105; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= 31; ++day) {
        const auto date = Date::FromYmd(year, month, day);
        if (!date) continue;
        ASSERT_EQ(date->Serial(), before->Serial() + 1) << date->ToText();
        ASSERT_EQ(date->Weekday(), before->Weekday() % 7 + 1);
        ASSERT_EQ(date->Year() * 100 + date->Month(), year * 100 + month);
        before = date;
      }
    }
  }
}

TEST(Date, LeapDaysExistInLeapYearsAlone) {
  for (const int year : {1904, 2000, 2020, 2400}) EXPECT_TRUE(Date::FromYmd(year, 2, 29)) << year;
  for (const int year : {1900, 2019, 2100, 2023}) EXPECT_FALSE(Date::FromYmd(year, 2, 29)) << year;
  for (const int month : {4, 6, 9, 11}) EXPECT_FALSE(Date::FromYmd(2020, month, 31)) << month;
}

TEST(Date, TextThatIsNoDayIsRefused) {
  for (const char* text : {"",
                           "/",
                           "//",
                           "2020",
                           "2020/01",
                           "2020/01/",
                           "2020//10",
                           "2020/13/01",
                           "2020/00/10",
                           "2020/01/00",
                           "2020/01/32",
                           "2020/-1/10",
                           "2020/+1/10",
                           "2020/1/-0",
                           "20/01/10",
                           "999/01/10",
                           "02020/01/10",
                           "-020/01/10",
                           "0099/12/31",
                           "2020/01/10 ",
                           " 2020/01/10",
                           "2020/01/10/",
                           "2020-01-10",
                           "2020/001/10",
                           "2020/ 1/10",
                           "２０２０/01/10"}) {
    EXPECT_FALSE(Date::Parse(text).has_value()) << text;
  }
  for (const char* text : {"", "2020011", "202001100", "20201301", "2020/1/1", "2020-1-1",
                           "00991231", "2020 110", "20200230"}) {
    EXPECT_FALSE(Date::ParseCompact(text).has_value()) << text;
  }
  EXPECT_EQ(Date::Parse("2020/1/5"), Date::FromYmd(2020, 1, 5));
}

TEST(Date, StoredDatesAreWholeDaysWithinTheRange) {
  for (const double stored :
       {43840.5, 2958466.0, -657435.0, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(Date::FromFile(stored).has_value()) << stored;
  }
  EXPECT_TRUE(Date::FromFile(0.0)->IsNone());
}

TEST(Date, ASerialOutOfRangeStillHasSomeText) {
  for (const int32_t serial :
       {std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min()}) {
    const Date date = Date::FromSerial(serial);
    EXPECT_FALSE(date.ToText().empty());
    EXPECT_GE(date.Weekday(), 1);
    EXPECT_LE(date.Weekday(), 7);
  }
}

}  // namespace
}  // namespace orin::base
