#include "acquire/csv_update.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "acquire/csv_files.h"
#include "base/cp932.h"
#include "support/faulty_file_system.h"
#include "support/stop_at.h"
#include "support/store_builder.h"

namespace orin::acquire {
namespace {

namespace fs = std::filesystem;
using support::AllBars;
using support::Code;
using support::FlatBar;
using support::StoreBuilder;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kHeader = "年月日,始値,高値,安値,終値,出来高\n";

/// A directory of CSV files and a store to bring them into.
class CsvUpdateTest : public ::testing::Test {
 protected:
  CsvUpdateTest()
      : builder_(std::string("csv_") + Name()),
        root_(fs::path(::testing::TempDir()) / "csv_in" / Name()) {
    fs::remove_all(root_);
    fs::create_directories(root_ / "day");
  }
  static const char* Name() {
    return ::testing::UnitTest::GetInstance()->current_test_info()->name();
  }
  void Write(const fs::path& name, const std::string& text) const {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name, std::ios::binary) << text;
  }
  /// A daily file whose day k (2020/01/06 + k) closes at prices[k]; 0 for no trade.
  void WriteDaily(const std::string& code, const std::vector<int>& prices) const {
    std::string text = kHeader;
    for (size_t i = 0; i < prices.size(); ++i) {
      const std::string p = std::to_string(prices[i]);
      text +=
          "2020/01/0" + std::to_string(6 + i) + "," + p + "," + p + "," + p + "," + p + ",100\n";
    }
    Write("day/" + code + ".csv", text);
  }
  CsvUpdateSummary Update(base::Progress* progress = nullptr) {
    auto store = builder_.Open(store::Access::kWrite);
    CsvUpdateSource source{root_ / "day", root_ / "week", std::nullopt};
    if (fs::exists(root_ / "list.csv")) source.stock_list = root_ / "list.csv";
    base::SilentProgress silent;
    auto summary = UpdateFromCsv(store, source, base::NativeFileSystem(),
                                 progress != nullptr ? *progress : silent);
    EXPECT_TRUE(summary.has_value()) << (summary ? "" : summary.error().message);
    return summary.value_or(CsvUpdateSummary());
  }
  std::vector<int> Closes(const char* code) {
    std::vector<int> closes;
    for (const base::Bar& bar : AllBars(builder_.Open(), code)) {
      closes.push_back(bar.HasData() ? static_cast<int>(bar.close.ToDouble()) : -1);
    }
    return closes;
  }

  StoreBuilder builder_;
  fs::path root_;
};

TEST_F(CsvUpdateTest, CalendarComesFromTheIndexAndUnknownCodesAreAdded) {
  WriteDaily("^DJI", {1, 2, 3});
  WriteDaily("ZZ", {0, 8, 9});
  WriteDaily("AA", {5});
  Write("list.csv",
        "銘柄コード,銘柄名,上場コード,種別コード,業種コード\nMM,エム,1,1,800\nZZ,ゼット,2,1,300\n");
  const CsvUpdateSummary summary = Update();
  EXPECT_EQ(summary.files, 3);
  EXPECT_EQ(summary.stocks, 3);
  EXPECT_EQ(summary.days, 3);
  EXPECT_EQ(summary.added_stocks, 4);
  EXPECT_TRUE(summary.problems.empty());
  EXPECT_THAT(Closes("ZZ"), ElementsAre(-1, 8, 9));
  EXPECT_THAT(Closes("AA"), ElementsAre(5, -1, -1));

  const auto store = builder_.Open();
  std::string order;
  for (const auto& stock : store.Master().Stocks()) order += std::string(stock.code.Text()) + " ";
  EXPECT_EQ(order, "MM ZZ ^DJI AA ") << "the list's order, then the files'";
  EXPECT_EQ(store.Master().Stock(store.Master().Find(Code("AA"))).listing, 3);
  EXPECT_EQ(store.Master().Stock(store.Master().Find(Code("^DJI"))).kind, store::kKindIndex);
}

TEST_F(CsvUpdateTest, LaterFilesCorrectAndFillButNeverErase) {
  WriteDaily("^DJI", {1, 2, 3});
  WriteDaily("AA", {5, 6});
  Update();
  WriteDaily("AA", {0, 7, 8});
  const CsvUpdateSummary summary = Update();
  EXPECT_EQ(summary.changed_bars, 2);
  EXPECT_THAT(Closes("AA"), ElementsAre(5, 7, 8));
  EXPECT_EQ(Update().changed_bars, 0) << "a finished import has nothing left to do";
}

TEST_F(CsvUpdateTest, NewDaysOfTheIndexMayLieBetweenAndBeforeStoredOnes) {
  WriteDaily("^DJI", {0, 2, 0, 4});
  WriteDaily("AA", {0, 5, 0, 7});
  Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(5, 7));
  WriteDaily("^DJI", {1, 2, 3, 4});
  Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, 5, -1, 7));
  EXPECT_THAT(Closes("^DJI"), ElementsAre(1, 2, 3, 4));
}

TEST_F(CsvUpdateTest, CodeThatIsNoFileNameHasItEncoded) {
  WriteDaily("^DJI", {1, 2});
  WriteDaily("BF%2FB", {3, 4});
  WriteDaily("brk", {5, 6});
  WriteDaily("._AA", {7, 8});
  Update();
  EXPECT_THAT(Closes("BF/B"), ElementsAre(3, 4));
  EXPECT_THAT(Closes("brk"), ElementsAre(5, 6));
  EXPECT_EQ(builder_.Open().Master().Stocks().size(), 3u) << "a hidden file is no stock's";
}

TEST_F(CsvUpdateTest, WhatIsWrongIsLoggedAndTheRestGoesOn) {
  WriteDaily("^DJI", {1, 2});
  Write("day/AA.csv", std::string(kHeader) +
                          "2020/01/06,x,1,1,1,1\n2020/01/07,5,5,5,5,1\n2020/01/08,5,5,5,5,1\n");
  Write("day/..\\BB.csv", std::string(kHeader));
  Write("day/CC.csv", "rubbish\n");
  const CsvUpdateSummary summary = Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, 5));
  EXPECT_EQ(summary.log_file.filename(), "K20200107.LOG");
  const auto log = base::ReadFile(summary.log_file);
  ASSERT_TRUE(log.has_value());
  const std::string text = base::DecodeCp932(*log);
  EXPECT_THAT(text, HasSubstr("AA.csv 2行目：始値「x」"));
  EXPECT_THAT(text, HasSubstr("AA.csv 4行目：年月日「2020/01/08」は取引日ではありません"));
  EXPECT_THAT(text, HasSubstr("..\\BB.csv"));
  EXPECT_THAT(text, HasSubstr("CC.csv 1行目"));
}

TEST_F(CsvUpdateTest, LogThatCannotBeWrittenIsToldWithItsDirectory) {
  WriteDaily("^DJI", {1, 2});
  const fs::path log = Update().log_file;
  fs::remove(log);
  fs::create_directory(log);
  const CsvUpdateSummary summary = Update();
  EXPECT_TRUE(summary.log_file.empty());
  EXPECT_THAT(summary.log_failure, HasSubstr(base::PathText(log.parent_path())));
  EXPECT_THAT(summary.log_failure, HasSubstr("に更新の記録を書き込めません。"));
  EXPECT_EQ(ProblemsSentence(summary), "");
}

TEST_F(CsvUpdateTest, WeeklyBarsFillOnlyWeeksWithoutDailyOnes) {
  std::string index = kHeader;
  for (const char* day : {"02", "03", "06", "07", "08", "09", "10", "13"}) {
    index += "2020/01/" + std::string(day) + ",1,1,1,1,1\n";
  }
  Write("day/^DJI.csv", index);
  Write("day/AA.csv", std::string(kHeader) + "2020/01/13,9,9,9,9,1\n");
  Write("week/AA.csv", std::string(kHeader) +
                           "2020/01/03,2,4,1,3,7\n2020/01/11,5,6,4,5,8\n2020/01/17,8,8,8,8,8\n"
                           "2020/01/24,8,8,8,8,8\n");
  const CsvUpdateSummary summary = Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, 3, -1, -1, -1, -1, 5, 9));
  EXPECT_EQ(summary.files, 3);
  ASSERT_EQ(summary.problems.size(), 1u);
  EXPECT_THAT(summary.problems[0], HasSubstr("AA.csv 5行目"));
}

TEST_F(CsvUpdateTest, WeeklyBarOfTheRunningWeekIsReplacedByALaterOne) {
  WriteDaily("^DJI", {1, 2, 3});
  Write("list.csv", "銘柄コード,銘柄名,上場コード,種別コード,業種コード\nAA,a,1,1,800\n");
  Write("week/AA.csv", std::string(kHeader) + "2020/01/10,5,5,5,5,300\n");
  Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, -1, 5));
  WriteDaily("^DJI", {1, 2, 3, 4});
  Write("week/AA.csv", std::string(kHeader) + "2020/01/10,5,9,3,8,500\n");
  Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, -1, -1, 8));
  WriteDaily("AA", {0, 0, 0, 7});
  Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(-1, -1, -1, 7)) << "the daily file's own bar stays";
}

TEST_F(CsvUpdateTest, OneDoubtfulLineOfTheIndexCostsNoTradingDay) {
  Write("day/^DJI.csv",
        std::string(kHeader) +
            "2020/01/06,1,1,1,1,1\n2020/01/07,1,2,1,2.01,1\n9920/08/01,1,1,1,1,1\n");
  WriteDaily("AA", {5, 6});
  const CsvUpdateSummary summary = Update();
  EXPECT_THAT(Closes("AA"), ElementsAre(5, 6));
  EXPECT_THAT(Closes("^DJI"), ElementsAre(1, -1));
  EXPECT_THAT(summary.problems,
              ElementsAre(HasSubstr("終値「2.01」"), HasSubstr("「9920/08/01」")));
}

TEST_F(CsvUpdateTest, OnlyStocksOfSoundListsAndFilesAreAdded) {
  WriteDaily("^DJI", {1});
  WriteDaily("BBB", {5});
  Write("day/NOISE.csv", "\x01\x02\x03");
  Write("day/EMPTY.csv", "");
  Write("list.csv",
        "銘柄コード,銘柄名,上場コード,種別コード,業種コード\nBBB,ビー,5,1,100\n"
        "CCC,\xF0\x9F\x98\x80,1,1,100\n\"DDD\",\"ディー\",1,1,100,\n");
  const CsvUpdateSummary summary = Update();
  const auto store = builder_.Open();
  std::string codes;
  for (const auto& stock : store.Master().Stocks()) codes += stock.name + " ";
  EXPECT_EQ(codes, "ディー ^DJI ");
  EXPECT_EQ(summary.problems.size(), 5u);
}

TEST_F(CsvUpdateTest, ListWithAWrongHeadingChangesNothing) {
  WriteDaily("^DJI", {1});
  Write("list.csv", "銘柄コード,銘柄名,上場コード,種別コード\nAA,a,1,1\n");
  {
    auto store = builder_.Open(store::Access::kWrite);
    base::SilentProgress progress;
    const auto summary = UpdateFromCsv(store, {root_ / "day", root_ / "week", root_ / "list.csv"},
                                       base::NativeFileSystem(), progress);
    ASSERT_FALSE(summary.has_value());
    EXPECT_THAT(summary.error().message, HasSubstr("list.csv"));
  }
  EXPECT_TRUE(builder_.Open().Master().Stocks().empty());
}

TEST_F(CsvUpdateTest, StoppedRunKeepsWhatItHasAndTheNextOneCompletesIt) {
  WriteDaily("^DJI", {1, 2});
  WriteDaily("AA", {5, 6});
  WriteDaily("BB", {7, 8});
  support::StopAt third_report(3);
  const CsvUpdateSummary stopped = Update(&third_report);
  EXPECT_TRUE(stopped.stopped);
  EXPECT_THAT(third_report.stages, ElementsAre("ミルテ（ＣＳＶ株価更新：日足）"));
  EXPECT_THAT(Closes("AA"), ElementsAre(5, 6));
  EXPECT_THAT(Closes("BB"), ElementsAre(-1, -1));
  EXPECT_FALSE(Update().stopped);
  EXPECT_THAT(Closes("BB"), ElementsAre(7, 8));
}

TEST_F(CsvUpdateTest, WithoutACalendarNothingIsImported) {
  WriteDaily("AA", {5, 6});
  auto store = builder_.Open(store::Access::kWrite);
  base::SilentProgress progress;
  const auto summary = UpdateFromCsv(store, {root_ / "day", root_ / "week", std::nullopt},
                                     base::NativeFileSystem(), progress);
  ASSERT_FALSE(summary.has_value());
  EXPECT_THAT(summary.error().message, HasSubstr("^DJI.csv"));
}

TEST_F(CsvUpdateTest, AFileThatIsTooLargeOrNoFileCostsOnlyItself) {
  WriteDaily("^DJI", {1, 2});
  WriteDaily("AA", {5, 6});
  WriteDaily("BIG", {7, 8});
  fs::resize_file(root_ / "day/BIG.csv", kLargestCsvHistory + 1);
  ASSERT_EQ(mkfifo((root_ / "day/PIPE.csv").c_str(), 0600), 0);
  const CsvUpdateSummary summary = Update();
  EXPECT_EQ(summary.files, 2);
  EXPECT_THAT(Closes("AA"), ElementsAre(5, 6));
  EXPECT_THAT(summary.problems,
              ElementsAre(AllOf(HasSubstr("BIG.csv"), HasSubstr("大きすぎる")),
                          AllOf(HasSubstr("PIPE.csv"), HasSubstr("通常のファイル"))));
}

TEST_F(CsvUpdateTest, ADayThatThePriceFilesCannotHoldCostsNoOther) {
  Write("day/^DJI.csv", std::string(kHeader) + "1850/01/07,1,1,1,1,1\n2020/01/06,2,2,2,2,1\n");
  const CsvUpdateSummary summary = Update();
  EXPECT_EQ(summary.days, 1);
  EXPECT_THAT(Closes("^DJI"), ElementsAre(2));
  EXPECT_THAT(summary.problems, ElementsAre(HasSubstr("「1850/01/07」")));
}

TEST_F(CsvUpdateTest, StocksBeyondTheRoomOfTheStoreCostNoOther) {
  WriteDaily("^DJI", {1});
  WriteDaily("AA", {5});
  std::string list = "銘柄コード,銘柄名,上場コード,種別コード,業種コード\n";
  // The list leaves room for one of the two files, the calendar's.
  for (int i = 1; i < store::kMostStocks; ++i) list += "S" + std::to_string(i) + ",s,1,1,1\n";
  Write("list.csv", list);
  const CsvUpdateSummary summary = Update();
  EXPECT_EQ(summary.added_stocks, store::kMostStocks);
  EXPECT_EQ(summary.files, 1);
  EXPECT_THAT(Closes("^DJI"), ElementsAre(1));
  EXPECT_THAT(summary.problems, ElementsAre(AllOf(HasSubstr("銘柄AAは"), HasSubstr("上限"))));
  EXPECT_EQ(builder_.Open(store::Access::kWrite).RoomForStocks(), 0);
}

TEST(FileProblems, AreCountedBeyondThoseKept) {
  FileProblems problems;
  for (size_t i = 0; i < FileProblems::kKept + 3; ++i) problems.Add("x");
  EXPECT_EQ(problems.Sentences().size(), FileProblems::kKept);
  EXPECT_EQ(problems.Further(), 3);
}

}  // namespace
}  // namespace orin::acquire
