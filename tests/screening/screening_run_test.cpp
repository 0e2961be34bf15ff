#include "screening/screening_run.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/cp932.h"
#include "support/faulty_file_system.h"
#include "support/store_builder.h"

namespace orin::screening {
namespace {

namespace fs = std::filesystem;
using support::Code;
using support::FlatBar;
using support::NoBar;
using support::StoreBuilder;
using support::Weekdays;
using ::testing::HasSubstr;
using ::testing::StartsWith;

store::NewStock Stock(const char* code, const char* name, int16_t listing) {
  store::NewStock stock;
  stock.code = Code(code);
  stock.name = name;
  stock.listing = listing;
  return stock;
}

/// Three days of four stocks, 2020/01/06 to 08.
class ScreeningRunTest : public ::testing::Test {
 protected:
  ScreeningRunTest()
      : builder_(std::string("screen_") + Name()),
        home_(fs::path(::testing::TempDir()) / "screen_home" / Name()) {
    fs::remove_all(home_);
    fs::create_directories(home_ / "patrol");
    builder_.Days(Weekdays("2020/01/06", 3))
        .Stock(Stock("^DJI", "ＮＹダウ", 3), {FlatBar(10), FlatBar(20), FlatBar(30)})
        .Stock(Stock("UP", "上がる株", 1), {FlatBar(1), FlatBar(2), FlatBar(3.5)})
        .Stock(Stock("DOWN", "下がる株", 2), {FlatBar(9), FlatBar(8), FlatBar(7)})
        .Stock(Stock("GONE", "ない株", 1), {FlatBar(1), FlatBar(2), NoBar()});
    builder_.Build();
  }
  static const char* Name() {
    return ::testing::UnitTest::GetInstance()->current_test_info()->name();
  }
  fs::path WriteAnalysis(const std::string& text) const {
    const fs::path path = home_ / "分析.txt";
    std::ofstream(path, std::ios::binary) << "タイトル：試験\n分析結果格納場所：PATROL\\\n" << text;
    return path;
  }
  Outcome<RunResult> Run(const std::string& text,
                         base::FileSystem& files = base::NativeFileSystem()) {
    const auto store = builder_.Open();
    base::SilentProgress progress;
    return RunAnalysisFile(store, WriteAnalysis(text), {home_, true}, files, progress);
  }
  [[nodiscard]] std::string ListText(const char* name = "k20200108.txt") const {
    const auto bytes = base::ReadFile(home_ / "patrol" / name);
    return bytes ? base::DecodeCp932(*bytes) : "";
  }

  StoreBuilder builder_;
  fs::path home_;
};

TEST_F(ScreeningRunTest, WritesTitleDateAndAlignedLines) {
  const auto result = Run("分析日付：2020/01/08\n分析項目：終値(0) > 0\n");
  ASSERT_TRUE(result.has_value()) << result.error().message;
  EXPECT_EQ(result->selected.size(), 3U);
  EXPECT_EQ(result->result_list, home_ / "patrol/k20200108.txt");
  EXPECT_EQ(ListText(),
            "T:試験\r\nD:2020/01/08\r\n"
            "^DJI     ＮＹダウ         他市場          30.0000       +10.0000\r\n"
            "UP       上がる株         ＮＹ市場         3.5000        +1.5000\r\n"
            "DOWN     下がる株         ＮＡ市場         7.0000        -1.0000\r\n");
}

TEST_F(ScreeningRunTest, MarketDateAndSecondStockAreObserved) {
  EXPECT_EQ(Run("分析上場市場：ＮＹ市場銘柄\n分析項目：終値(0) > 0\n")->selected.size(), 1U);
  EXPECT_EQ(Run("分析日付：2020/01/07\n分析項目：終値(0) = 2\n")->selected.size(), 2U);
  EXPECT_NE(ListText("k20200107.txt"), "");
  EXPECT_EQ(
      Run("分析項目：終値(0) * 2 < 第二銘柄終値(-1)\n第二銘柄コード：^DJI\n")->selected.size(), 2U);
  EXPECT_EQ(Run("分析項目：終値(0) < 第二銘柄終値(0)\n")->selected.size(), 0U) << "no second stock";
}

TEST_F(ScreeningRunTest, SelectingNothingLeavesTheTwoHeaderLines) {
  const auto result = Run("分析項目：終値(0) < 0\n");
  EXPECT_EQ(result->selected.size(), 0U);
  EXPECT_EQ(ListText(), "T:試験\r\nD:2020/01/08\r\n");
}

TEST_F(ScreeningRunTest, BareOperandSelectsNothingAndSaysSo) {
  const auto result = Run("分析項目：終値(0)\n");
  EXPECT_EQ(result->selected.size(), 0U);
  EXPECT_FALSE(result->notes.empty());
}

TEST_F(ScreeningRunTest, WhatCannotRunIsOneSentenceAndNoList) {
  std::string too_many = "分析項目：1=1";
  for (int i = 0; i < 100; ++i) too_many += " Or 1=1";
  struct Case {
    std::string text;
    const char* told;
  };
  const Case kCases[] = {
      {"分析日付：2020/01/11\n分析項目：1=1\n", "2020/01/11"},
      {"分析結果格納場所：nowhere\\\n分析項目：1=1\n", "nowhere"},
      {too_many, "100"},
  };
  for (const Case& c : kCases) {
    const auto result = Run(c.text);
    ASSERT_FALSE(result.has_value()) << c.text;
    EXPECT_THAT(result.error().message, HasSubstr(c.told));
    EXPECT_THAT(result.error().message, HasSubstr("分析.txt"));
    EXPECT_TRUE(fs::is_empty(home_ / "patrol")) << c.text;
  }
}

TEST_F(ScreeningRunTest, DefaultResultDirectoryThatCannotBeReadIsNamed) {
  const fs::path file = home_ / "workresultfilename.txt";
  const auto sentence = [this] {
    return FindResultDirectory(AnalysisFile(), "分析.txt", home_).error().message;
  };
  EXPECT_EQ(sentence(), "分析.txt に分析結果格納場所がありません。");
  fs::create_directory(file);
  EXPECT_THAT(sentence(), HasSubstr("workresultfilename.txt"));
  fs::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_THAT(sentence(), HasSubstr("workresultfilename.txt"));
  fs::remove(file);
  std::ofstream(file) << "patrol\\\n" << std::string(kLargestAnalysisFile, ' ');
  EXPECT_THAT(sentence(), HasSubstr("workresultfilename.txt"));
  std::ofstream(file) << "patrol\\\n";
  EXPECT_EQ(*FindResultDirectory(AnalysisFile(), "分析.txt", home_), home_ / "patrol");
}

TEST_F(ScreeningRunTest, KeywordsStandForTheDaysOfTheGroupsFilesInEntryOrder) {
  const auto file = [this](const char* name, const char* text) {
    std::ofstream(home_ / name, std::ios::binary) << text << "\n";
    return home_ / name;
  };
  const std::vector<fs::path> entries = {file("1.txt", "分析日付：2020/01/06"),
                                         {},
                                         file("3.txt", "分析項目：1=1"),
                                         file("4.txt", "分析日付：2020/01/11"),
                                         home_ / "missing.txt",
                                         file("6.txt", "分析日付：いつか"),
                                         file("7.txt", "分析日付：2020/01/07")};
  const auto store = builder_.Open();
  const analysis::RunDays days = DaysOfGroup(store, entries);
  std::string found;
  for (int32_t number = 1; number <= 7; ++number) {
    const auto day = days.Of({analysis::DayKeyword::kAnalysisDate, number});
    found += day ? std::to_string(day->Value()) : "-";
  }
  EXPECT_EQ(found, "1-3---2");

  const fs::path run = WriteAnalysis("分析項目：終値(analysisdate7) < 終値(analysisdate1)\n");
  base::SilentProgress progress;
  const RunOptions options{home_, true, days};
  const auto result = RunAnalysisFile(store, run, options, base::NativeFileSystem(), progress);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->selected.size(), 1U);
  EXPECT_THAT(ListText(), HasSubstr("DOWN"));
}

TEST_F(ScreeningRunTest, AFileRunAloneHasItsOwnDateAsAnalysisdate1) {
  EXPECT_EQ(Run("分析日付：2020/01/07\n分析項目：analysisdate1 = 2\n")->selected.size(), 4U);
  EXPECT_EQ(Run("分析項目：終値(analysisdate1-2) = 終値(-2)\n")->selected.size(), 4U);
  EXPECT_EQ(Run("分析項目：analysisdate2 > 0\n")->selected.size(), 0U);
}

TEST_F(ScreeningRunTest, ResultDirectoryMayComeFromTheDefaultFile) {
  std::ofstream(home_ / "workresultfilename.txt") << "patrol\r\n";
  const fs::path analysis = home_ / "a.txt";
  std::ofstream(analysis) << "分析項目：1=1\n";
  const auto store = builder_.Open();
  base::SilentProgress progress;
  const RunOptions options{home_, true};
  EXPECT_TRUE(RunAnalysisFile(store, analysis, options, base::NativeFileSystem(), progress));
  fs::remove(home_ / "workresultfilename.txt");
  EXPECT_FALSE(RunAnalysisFile(store, analysis, options, base::NativeFileSystem(), progress));
}

TEST_F(ScreeningRunTest, ListIsWrittenWholeOrNotAtAll) {
  ASSERT_TRUE(Run("分析項目：終値(0) < 0\n"));
  const std::string before = ListText();
  support::FaultyFileSystem faulty;
  faulty.LimitGrowth(20);
  EXPECT_FALSE(Run("分析項目：終値(0) > 0\n", faulty).has_value());
  EXPECT_EQ(ListText(), before);
}

TEST_F(ScreeningRunTest, OnlyAConditionThatCannotBeCompiledIsAWrongExpression) {
  EXPECT_EQ(Run("分析項目：1<2<3<4<5<6<7\n").error().kind, RunFailure::Kind::kCannotBeCompiled);
  EXPECT_EQ(Run("分析日付：2020/01/11\n分析項目：1=1\n").error().kind, RunFailure::Kind::kOther);
}

TEST_F(ScreeningRunTest, WhatIsPassedOverOrReplacedIsTold) {
  struct Case {
    const char* text;
    const char* told;
  };
  const Case kCases[] = {
      {"分析項目：終値(0) > 0\nAnd 1=2 \"注：x\"\n", "4行目：項目名「And 1=2 \"注」"},
      {"分析項目：終値(0) > 0 \"注：x\"\n", "3行目：「：」が二つ以上"},
      {"なにか\n分析項目：終値(0) > 0\n", "3行目：「：」がない"},
      {"分析項目：終値(0) > 移動平均(\n", "文字目"},
      {"分析項目：さや(0) > 0\n", "第二銘柄コードがない"},
      {"第二銘柄コード：NONE\n分析項目：さや(0) > 0\n", "第二銘柄コード「NONE」の銘柄がない"},
      {"第二銘柄コード：X Y\n分析項目：さや(0) > 0\n", "3行目：第二銘柄コードの「X Y」は"},
      {"タイトル：絵文字\xF0\x9F\x98\x80\n分析項目：1=1\n", "U+1F600"},
  };
  for (const Case& c : kCases) {
    const auto result = Run(c.text);
    ASSERT_TRUE(result.has_value()) << c.text;
    EXPECT_THAT(result->notes, ::testing::Contains(HasSubstr(c.told))) << c.text;
  }
  EXPECT_TRUE(Run("メモ：知らない項目名\n分析項目：1=1\n")->notes.empty());
  EXPECT_EQ(Run("第二銘柄コード：X Y\n分析項目：さや(0) > 0\n")->notes.size(), 1U);
}

/// Remembers the stages and answers "stop" to the first report where asked to.
class Watcher final : public base::Progress {
 public:
  explicit Watcher(bool stop) : stop_(stop) {}
  bool Report(std::string_view stage, int64_t, int64_t) override {
    stage_ = stage;
    return !stop_;
  }
  [[nodiscard]] const std::string& Stage() const { return stage_; }

 private:
  bool stop_;
  std::string stage_;
};

TEST_F(ScreeningRunTest, StoppedRunKeepsTheListOfBefore) {
  ASSERT_TRUE(Run("分析項目：終値(0) < 0\n"));
  const std::string before = ListText();
  const auto store = builder_.Open();
  const fs::path file = WriteAnalysis("分析項目：終値(0) > 0\n");
  Watcher stop(true);
  const auto stopped = RunAnalysisFile(store, file, {home_, true}, base::NativeFileSystem(), stop);
  ASSERT_FALSE(stopped.has_value());
  EXPECT_THAT(stopped.error().message, HasSubstr("株価分析「試験」を中止しました。"));
  EXPECT_EQ(stop.Stage(), "ミルテ（株価分析：試験）");
  EXPECT_EQ(ListText(), before);
}

TEST_F(ScreeningRunTest, FirstFileIsExplained) {
  EXPECT_EQ(
      *ExplainFirstFile(builder_.Open(), 1),
      "先頭ファイルの番号を大きくすると株価分析のスピードが速くなりますが、株価分析に必要なデータが"
      "ないと、\n"
      "正しく株価分析ができません。\n"
      "先頭ファイルの番号が1の場合、有効な株価データ日付は、2020/01/06～2020/01/08までです。\n"
      "この日付以前のデータを使用して株価分析する必要がある場合、先頭ファイルの番号を小さくして下さ"
      "い。");
}

TEST(FirstFileOfRun, IsAFileOfTheStoreThatLeavesFour) {
  store::MasterHeader header;
  header.first_file = 2;
  header.current_file = 10;
  EXPECT_EQ(*FirstFileOfRun(header, 0), std::nullopt);
  EXPECT_EQ(*FirstFileOfRun(header, 7), 7);
  EXPECT_EQ(*FirstFileOfRun(header, 99, 2), 2) << "the setting does not count";
  const auto sentence = [&header](int32_t setting, std::optional<int32_t> option) {
    return FirstFileOfRun(header, setting, option).error().message;
  };
  EXPECT_EQ(sentence(0, 8), "データファイルは４ファイル以上必要です。");
  EXPECT_EQ(sentence(0, 11), "先頭ファイルの番号11は2から7までの番号ではありません。");
  EXPECT_EQ(sentence(0, 70000), "先頭ファイルの番号70000は2から7までの番号ではありません。");
  EXPECT_THAT(sentence(10, {}), StartsWith("データファイルは４ファイル以上必要です。\n設定 "
                                           "AnalysisSystemFirstFile の値10では"));
  for (const int32_t number : {-1, 1, 11, 1000}) {
    EXPECT_EQ(sentence(number, {}),
              "設定 AnalysisSystemFirstFile の値" + std::to_string(number) +
                  "では株価分析を始められません。先頭ファイルには2から7までの番号か、すべての"
                  "ファイルを読む0を指定してください。");
  }
  header.current_file = 3;
  EXPECT_EQ(*FirstFileOfRun(header, 2), 2) << "all there is";
  EXPECT_EQ(sentence(0, 3), "データファイルは４ファイル以上必要です。");
  header.current_file = 0;
  EXPECT_EQ(*FirstFileOfRun(header, 2), 2);
  EXPECT_FALSE(FirstFileOfRun(header, 3));
}

}  // namespace
}  // namespace orin::screening
