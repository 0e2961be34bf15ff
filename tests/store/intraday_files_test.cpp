#include "store/intraday_files.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/file_names.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using support::BarOf;
using support::Day;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

void Write(const StoreLocation& location, int16_t number, const std::string& bytes) {
  std::ofstream(PathOf(location, {FileKind::kIntraday, number}), std::ios::binary) << bytes;
}

class IntradayFilesTest : public testing::Test {
 protected:
  IntradayFilesTest() : location_{directory_.Path(), directory_.Path()} {}

  [[nodiscard]] IntradayDay Newest(int32_t slot, std::string_view last) const {
    const auto newest = IntradayFiles::Open(location_).Newest(base::SlotRecord(slot), Day(last));
    EXPECT_TRUE(newest) << newest.error().message;
    return newest.value_or(IntradayDay());
  }
  [[nodiscard]] std::vector<std::string> Problems() const {
    return IntradayFiles::Open(location_).Problems();
  }

  support::ScratchDirectory directory_;
  StoreLocation location_;
};

TEST_F(IntradayFilesTest, NewestDayUpToTheDayAskedForIsReadInOrderOfTime) {
  const std::vector<IntradayBar> bars = {{34500, BarOf(1, 3, 1, 2, 10)},
                                         {34200, BarOf(2, 2, 1, 1, 20)}};
  Write(location_, 2, EncodeIntradayFile(Day("2020/01/09"), {bars, {}}));
  Write(location_, 3, EncodeIntradayFile(Day("2020/01/10"), {bars, bars}));
  Write(location_, 5, EncodeIntradayFile(Day("2020/01/08"), {bars, bars}));
  const auto newest = Newest(2, "2020/01/31");
  EXPECT_EQ(newest.date, Day("2020/01/10"));
  ASSERT_EQ(newest.bars.size(), 2U);
  EXPECT_EQ(newest.bars[0].seconds, 34200);
  EXPECT_EQ(newest.bars[1].bar.high, support::Price(3));
  EXPECT_EQ(Newest(2, "2020/01/09").date, Day("2020/01/09"));
  // The day on which the stock has none is passed over.
  EXPECT_EQ(Newest(3, "2020/01/09").date, Day("2020/01/08"));
  EXPECT_TRUE(Newest(9, "2020/01/31").bars.empty());
}

TEST_F(IntradayFilesTest, DamagedFilesHaveNoBarsAndAreTold) {
  Write(location_, 1, "");
  Write(location_, 2, std::string(kIntradayRecordLength * 3, '\xff'));
  std::string cut = EncodeIntradayFile(Day("2020/01/10"), {{{34200, BarOf(2, 2, 1, 1, 20)}}});
  cut.resize(cut.size() - 1);
  Write(location_, 3, cut);
  Write(location_, 4, std::string(kIntradayRecordLength * 2, '\0'));  // not in use
  EXPECT_EQ(Newest(2, "2020/01/31"), IntradayDay());
  EXPECT_THAT(Problems(),
              ElementsAre(HasSubstr("orint001.dat」は空"),
                          HasSubstr("orint002.dat」の日付が日付ではありません。"),
                          HasSubstr("orint003.dat」の長さ7039バイトがレコード長3520で割り切れ")));
}

TEST_F(IntradayFilesTest, FileThatCannotBeReadIsToldAndNoDayIsTakenForTheNewest) {
  Write(location_, 1, EncodeIntradayFile(Day("2020/01/10"), {{{34200, BarOf(2, 2, 1, 1, 20)}}}));
  std::filesystem::create_directory(PathOf(location_, {FileKind::kIntraday, 2}));
  const IntradayFiles files = IntradayFiles::Open(location_);
  EXPECT_THAT(files.Problems(), ElementsAre(HasSubstr("orint002.dat")));
  const auto newest = files.Newest(base::SlotRecord(2), Day("2020/01/31"));
  ASSERT_FALSE(newest);
  EXPECT_EQ(newest.error().message, files.Problems()[0]);
}

}  // namespace
}  // namespace orin::store
