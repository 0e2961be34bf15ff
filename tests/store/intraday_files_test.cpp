#include "store/intraday_files.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "store/file_names.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using support::BarOf;
using support::Day;

void Write(const StoreLocation& location, int16_t number, const std::string& bytes) {
  std::ofstream(PathOf(location, {FileKind::kIntraday, number}), std::ios::binary) << bytes;
}

class IntradayFiles : public testing::Test {
 protected:
  IntradayFiles() : location_{directory_.Path(), directory_.Path()} {}

  support::ScratchDirectory directory_;
  StoreLocation location_;
};

TEST_F(IntradayFiles, NewestDayUpToTheDayAskedForIsReadInOrderOfTime) {
  const std::vector<IntradayBar> bars = {{34500, BarOf(1, 3, 1, 2, 10)},
                                         {34200, BarOf(2, 2, 1, 1, 20)}};
  Write(location_, 2, EncodeIntradayFile(Day("2020/01/09"), {bars, {}}));
  Write(location_, 3, EncodeIntradayFile(Day("2020/01/10"), {bars, bars}));
  Write(location_, 5, EncodeIntradayFile(Day("2020/01/08"), {bars, bars}));
  const auto newest = LoadIntraday(location_, base::SlotRecord(2), Day("2020/01/31"));
  ASSERT_TRUE(newest);
  EXPECT_EQ(newest->date, Day("2020/01/10"));
  ASSERT_EQ(newest->bars.size(), 2U);
  EXPECT_EQ(newest->bars[0].seconds, 34200);
  EXPECT_EQ(newest->bars[1].bar.high, support::Price(3));
  EXPECT_EQ(LoadIntraday(location_, base::SlotRecord(2), Day("2020/01/09"))->date,
            Day("2020/01/09"));
  // The day on which the stock has none is passed over.
  EXPECT_EQ(LoadIntraday(location_, base::SlotRecord(3), Day("2020/01/09"))->date,
            Day("2020/01/08"));
  EXPECT_TRUE(LoadIntraday(location_, base::SlotRecord(9), Day("2020/01/31"))->bars.empty());
}

TEST_F(IntradayFiles, DamagedFilesHaveNoBars) {
  Write(location_, 1, "");
  Write(location_, 2, std::string(kIntradayRecordLength * 3, '\xff'));
  std::string cut = EncodeIntradayFile(Day("2020/01/10"), {{{34200, BarOf(2, 2, 1, 1, 20)}}});
  cut.resize(cut.size() - 1);
  Write(location_, 3, cut);
  EXPECT_EQ(*LoadIntraday(location_, base::SlotRecord(2), Day("2020/01/31")), IntradayDay());
}

}  // namespace
}  // namespace orin::store
