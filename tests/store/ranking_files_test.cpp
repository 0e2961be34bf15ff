#include "store/ranking_files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/coding.h"
#include "base/file_system.h"
#include "base/value_column.h"
#include "store/file_names.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using base::Currency;
using support::Code;
using support::Day;

/// All values of a stock are its number, of the week + 100, of the month + 200; a number below 0
/// leaves the stock out.
RankedStock Ranked(std::string_view code, int16_t listing, int32_t number) {
  RankedStock stock{Code(code), listing, {}};
  for (size_t period = 0; period < kRankingPeriods; ++period) {
    const auto shift = static_cast<int32_t>(period) * 100;
    stock.values[period].fill(number < 0 ? base::kNoValue : Currency::FromInt(number + shift));
  }
  return stock;
}

RankingContent ContentOf(std::string_view date) {
  RankingContent content;
  content.date = Day(date);
  content.titles[0] = "出来高ランキング";
  content.titles[6] = std::string(60, 'x');
  content.stocks = {Ranked("ZZ", 1, 5), Ranked("AA", 1, 7), Ranked("^DJI", 3, -1),
                    Ranked("B", 2, 7),  Ranked("C", 2, 9),  Ranked("D", 1, 3)};
  return content;
}

class RankingFilesTest : public ::testing::Test {
 protected:
  base::Status Write(std::string_view date, int32_t keep = 5) {
    return WriteRankingFile(base::NativeFileSystem(), location_, ContentOf(date), keep);
  }
  [[nodiscard]] std::filesystem::path Path(const char* name) const { return scratch_ / name; }
  [[nodiscard]] std::string Bytes(const char* name) const {
    return base::ReadFile(Path(name)).value_or("");
  }
  void Replace(const char* name, std::string_view bytes) {
    EXPECT_TRUE(base::ReplaceFile(base::NativeFileSystem(), Path(name), bytes));
  }
  /// "0:2020/01/08 1:2020/01/07"
  [[nodiscard]] std::string Numbered() const {
    std::string text;
    for (int16_t number = 0; number < 12; ++number) {
      const auto file = RankingFile::Open(PathOf(location_, {FileKind::kRanking, number}));
      if (file) text += std::to_string(number) + ":" + file->Date().ToText().substr(5) + " ";
    }
    return text;
  }

  support::ScratchDirectory scratch_;
  StoreLocation location_{scratch_.Path(), scratch_.Path()};
};

TEST_F(RankingFilesTest, HoldWhatWasWrittenAndPlacesFollowFromTheValues) {
  ASSERT_TRUE(Write("2020/01/06"));
  const RankingFiles files = RankingFiles::Open(location_);
  const RankingFile* file = files.OfDate(Day("2020/01/06"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Count(), 6);
  EXPECT_EQ(file->Title(1), "出来高ランキング");
  EXPECT_EQ(file->Title(2), "");
  EXPECT_EQ(file->Title(7), std::string(60, 'x'));
  EXPECT_EQ(file->Value(Code("AA"), 3, RankingPeriod::kWeek), Currency::FromInt(107));
  EXPECT_EQ(file->Value(Code("AA"), 7, RankingPeriod::kMonth), Currency::FromInt(207));
  EXPECT_EQ(file->Value(Code("^DJI"), 1, RankingPeriod::kDay), std::nullopt);
  EXPECT_EQ(file->Value(Code("AAA"), 1, RankingPeriod::kDay), std::nullopt);

  struct Case {
    const char* code;
    int32_t all_descending, all_ascending, own_descending, own_ascending;
  };
  for (const Case& c : {Case{"C", 1, 5, 1, 2}, Case{"AA", 2, 3, 1, 3}, Case{"B", 2, 3, 2, 1},
                        Case{"ZZ", 4, 2, 2, 2}, Case{"D", 5, 1, 3, 1}}) {
    for (const RankingPeriod period : {RankingPeriod::kDay, RankingPeriod::kMonth}) {
      const auto place = [&](bool own, bool descending) {
        return file->PlaceOf(Code(c.code), {2, period, own, descending}).value_or(-1);
      };
      EXPECT_EQ(place(false, true), c.all_descending) << c.code;
      EXPECT_EQ(place(false, false), c.all_ascending) << c.code;
      EXPECT_EQ(place(true, true), c.own_descending) << c.code;
      EXPECT_EQ(place(true, false), c.own_ascending) << c.code;
    }
  }
  EXPECT_EQ(file->PlaceOf(Code("^DJI"), {}), std::nullopt);
  EXPECT_EQ(file->PlaceOf(Code("NONE"), {}), std::nullopt);
}

TEST_F(RankingFilesTest, NewestIsNumberZeroAndOlderOnesMoveUpAsFarAsTheyAreKept) {
  for (const char* date : {"2020/01/06", "2020/01/07", "2020/01/08", "2020/01/09"}) {
    ASSERT_TRUE(Write(date, 3));
    EXPECT_EQ(Bytes("orin.rnk"), Bytes("orinm000.rnk"));
  }
  EXPECT_EQ(Numbered(), "0:01/09 1:01/08 2:01/07 ");
  // The file of the same day is replaced; one in between takes its place among the others.
  ASSERT_TRUE(Write("2020/01/08", 3));
  EXPECT_EQ(Numbered(), "0:01/09 1:01/08 2:01/07 ");
  ASSERT_TRUE(Write("2020/01/10", 2));
  EXPECT_EQ(Numbered(), "0:01/10 1:01/09 ");
  ASSERT_TRUE(Write("2020/01/07", 9));
  EXPECT_EQ(Numbered(), "0:01/10 1:01/09 2:01/07 ");
  ASSERT_TRUE(Write("2020/01/08", 9));
  EXPECT_EQ(Numbered(), "0:01/10 1:01/09 2:01/08 3:01/07 ");
  const auto too_old = Write("2020/01/06", 2);
  ASSERT_FALSE(too_old);
  EXPECT_NE(too_old.error().message.find("2020/01/06"), std::string::npos);
  // A gap is filled before anything else moves.
  std::filesystem::remove(Path("orinm002.rnk"));
  ASSERT_TRUE(Write("2020/01/14", 9));
  EXPECT_EQ(Numbered(), "0:01/14 1:01/10 2:01/09 3:01/07 ");
}

TEST_F(RankingFilesTest, AreFoundByDateTheLowestNumberFirst) {
  ASSERT_TRUE(Write("2020/01/06"));
  ASSERT_TRUE(Write("2020/01/08"));
  std::filesystem::copy_file(Path("orinm001.rnk"), Path("orinm777.rnk"));
  const RankingFiles files = RankingFiles::Open(location_);
  EXPECT_EQ(files.Count(), 2U);
  EXPECT_TRUE(files.Problems().empty());
  EXPECT_EQ(files.OfDate(Day("2020/01/07")), nullptr);
  const auto newest = [&files](const char* first, const char* last) {
    const RankingFile* file = files.NewestOf(Day(first), Day(last));
    return file == nullptr ? "none" : file->Date().ToText();
  };
  EXPECT_EQ(newest("2020/01/06", "2020/01/10"), "2020/01/08");
  EXPECT_EQ(newest("2020/01/06", "2020/01/07"), "2020/01/06");
  EXPECT_EQ(newest("2020/01/07", "2020/01/07"), "none");
  EXPECT_EQ(newest("2020/01/01", "2020/01/05"), "none");
  EXPECT_EQ(newest("2020/01/09", "2020/01/20"), "none");
}

TEST_F(RankingFilesTest, OtherVersionsAndDamagedFilesAreNamedAndLeftOut) {
  ASSERT_TRUE(Write("2020/01/06"));
  ASSERT_TRUE(Write("2020/01/07"));
  const std::string good = Bytes("orinm001.rnk");
  std::string old = good;
  old[7] = '0';
  Replace("orinm001.rnk", old);
  const RankingFiles files = RankingFiles::Open(location_);
  EXPECT_EQ(files.Count(), 1U);
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_TRUE(files.Problems()[0].ends_with(
      "のランキングファイルは以前のバージョンで作成されたランキングファイルのため使用できません"));
  EXPECT_NE(files.Problems()[0].find("orinm001.rnk"), std::string::npos);

  std::string no_date = good;
  base::PutDouble(no_date.data() + ranking_header_offset::kDate, 0.5);
  std::string many = good;
  base::PutUint32(many.data() + ranking_header_offset::kCount, 0xffffffff);
  std::string other_mark = good;
  other_mark[3] = 'X';
  std::string later = good;
  later[7] = '2';
  for (const std::string& bytes :
       {std::string(), good.substr(0, 8), good.substr(0, 192), good.substr(0, good.size() - 1),
        good + "x", no_date, many, other_mark, later, std::string(good.size(), 'x'),
        old.substr(0, 100)}) {
    Replace("orinm001.rnk", bytes);
    const RankingFiles rest = RankingFiles::Open(location_);
    EXPECT_EQ(rest.Count(), 1U);
    ASSERT_EQ(rest.Problems().size(), 1U);
    EXPECT_EQ(rest.Problems()[0], base::PathText(Path("orinm001.rnk")) +
                                      " のランキングファイルは壊れているため使用できません。");
  }
}

TEST_F(RankingFilesTest, CopyOfTheNewestIsMadeWhereItIsMissingOrAnother) {
  EXPECT_TRUE(CopyNewestRanking(base::NativeFileSystem(), location_));
  EXPECT_FALSE(std::filesystem::exists(Path("orin.rnk")));
  ASSERT_TRUE(Write("2020/01/06"));
  for (const bool remains : {false, true}) {
    std::filesystem::remove(Path("orin.rnk"));
    if (remains) Replace("orin.rnk", "old");
    EXPECT_TRUE(CopyNewestRanking(base::NativeFileSystem(), location_));
    EXPECT_EQ(Bytes("orin.rnk"), Bytes("orinm000.rnk"));
  }
  // Without any numbered file it is read itself.
  std::filesystem::remove(Path("orinm000.rnk"));
  EXPECT_NE(RankingFiles::Open(location_).OfDate(Day("2020/01/06")), nullptr);
}

TEST_F(RankingFilesTest, AWriterStoppedAnywhereDamagesNoFileAndLosesNone) {
  for (const support::Loss loss :
       {support::Loss::kNothing, support::Loss::kWrites, support::Loss::kWritesAndNames}) {
    for (int64_t operation = 1;; ++operation) {
      for (const auto& entry : std::filesystem::directory_iterator(scratch_.Path())) {
        std::filesystem::remove(entry);
      }
      for (const char* date : {"2020/01/06", "2020/01/07", "2020/01/08"}) {
        ASSERT_TRUE(Write(date, 3));
      }
      bool is_dead = false;
      {
        support::FaultyFileSystem files;
        files.DieAt(operation);
        files.LoseOnDeath(loss);
        static_cast<void>(WriteRankingFile(files, location_, ContentOf("2020/01/09"), 3));
        is_dead = files.IsDead();
      }
      const RankingFiles found = RankingFiles::Open(location_);
      EXPECT_TRUE(found.Problems().empty()) << operation;
      for (const char* kept : {"2020/01/07", "2020/01/08"}) {
        EXPECT_NE(found.OfDate(Day(kept)), nullptr) << operation << " " << kept;
      }
      // The next one repairs the numbers.
      ASSERT_TRUE(Write("2020/01/10", 3));
      EXPECT_EQ(Numbered().substr(0, 8), "0:01/10 ");
      EXPECT_EQ(Bytes("orin.rnk"), Bytes("orinm000.rnk"));
      if (!is_dead) break;
    }
  }
}

TEST_F(RankingFilesTest, ATitleThatCannotBeWrittenLeavesTheFilesAlone) {
  ASSERT_TRUE(Write("2020/01/06"));
  RankingContent content = ContentOf("2020/01/07");
  content.titles[2] = "\xF0\x9F\x98\x80";
  EXPECT_FALSE(WriteRankingFile(base::NativeFileSystem(), location_, content, 5));
  EXPECT_EQ(Numbered(), "0:01/06 ");
}

}  // namespace
}  // namespace orin::store
