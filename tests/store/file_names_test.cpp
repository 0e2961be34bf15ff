#include "store/file_names.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::store {
namespace {

TEST(FileNames, EveryFileOfTheStoreIsMadeAndParsedAlike) {
  const std::vector<std::pair<StoreFile, std::string>> cases = {
      {{FileKind::kMaster, 0}, "orin.sys"},         {{FileKind::kNameIndex, 0}, "orin.ind"},
      {{FileKind::kAdded, 0}, "orin.add"},          {{FileKind::kDeleted, 0}, "orin.del"},
      {{FileKind::kTrendLines, 0}, "orin.lin"},     {{FileKind::kSplits, 0}, "株式分割.txt"},
      {{FileKind::kCompanies, 0}, "orin.fin"},      {{FileKind::kStatements, 0}, "orin.acc"},
      {{FileKind::kJournal, 0}, "orin.jnl"},        {{FileKind::kDaily, 1}, "orin001.dat"},
      {{FileKind::kSums, 0}, "orin.sum"},           {{FileKind::kDailySums, 25}, "orinc025.dat"},
      {{FileKind::kDaily, 999}, "orin999.dat"},     {{FileKind::kCredit, 12}, "orins012.dat"},
      {{FileKind::kIntraday, 100}, "orint100.dat"}, {{FileKind::kNewestRanking, 0}, "orin.rnk"},
      {{FileKind::kRanking, 0}, "orinm000.rnk"},    {{FileKind::kRanking, 999}, "orinm999.rnk"},
  };
  for (const auto& [file, name] : cases) {
    EXPECT_EQ(FileName(file), name);
    EXPECT_EQ(ParseFileName(name), file) << name;
    EXPECT_EQ(ParseStagedName(name + ".tmp"), file) << name;
    EXPECT_EQ(ParseFileName(support::UpperCase(name)), file) << name;
    EXPECT_EQ(ParseStagedName(support::UpperCase(name) + ".TMP"), file) << name;
  }
}

TEST(FileNames, NoOtherNameIsAStoreFile) {
  for (const std::string name : {"",
                                 "orin",
                                 "orin.",
                                 "orin.dat",
                                 "orin000.dat",
                                 "orin1.dat",
                                 "orin01.dat",
                                 "orin0001.dat",
                                 "orin1000.dat",
                                 "orin-01.dat",
                                 "orin+01.dat",
                                 "orin 01.dat",
                                 "orin00a.dat",
                                 "orins.dat",
                                 "orins000.dat",
                                 "orinx001.dat",
                                 "orin001.rnk",
                                 "orinm001.dat",
                                 "orinm00.rnk",
                                 "orinm0000.rnk",
                                 "orinm.rnk",
                                 "orinm.rnk.rnk",
                                 "orin001.dat ",
                                 " orin001.dat",
                                 "orin001.dat.tmp",
                                 "../orin.sys",
                                 "data/orin001.dat",
                                 "..\\orin001.dat",
                                 "orin.sys\n",
                                 "orin.sysx",
                                 "株式分割",
                                 "株式分割.txt.tmp",
                                 "/etc/passwd"}) {
    EXPECT_FALSE(ParseFileName(name)) << name;
  }
  for (const std::string name : {"orin001.dat", ".tmp", "notes.tmp", "orin001.dat.tmp.tmp"}) {
    EXPECT_FALSE(ParseStagedName(name)) << name;
  }
}

TEST(FileNames, PriceFilesAreInTheDataDirectoryAllElseInTheSystemDirectory) {
  const StoreLocation location = {"/s", "/d"};
  EXPECT_EQ(PathOf(location, {FileKind::kMaster, 0}), "/s/orin.sys");
  EXPECT_EQ(PathOf(location, {FileKind::kSplits, 0}), "/s/株式分割.txt");
  EXPECT_EQ(PathOf(location, {FileKind::kDaily, 7}), "/d/orin007.dat");
  EXPECT_EQ(PathOf(location, {FileKind::kCredit, 7}), "/d/orins007.dat");
  EXPECT_EQ(PathOf(location, {FileKind::kRanking, 7}), "/s/orinm007.rnk");
  EXPECT_EQ(StagedPathOf(location, {FileKind::kIntraday, 7}), "/d/orint007.dat.tmp");
}

TEST(FileNames, StemOfACodeStaysInItsDirectoryAndLeadsBackToIt) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"AAPL", "AAPL"},
      {"^DJI", "^DJI"},
      {"BRK.B", "BRK.B"},
      {"BF-B", "BF-B"},
      {"BF/B", "BF%2FB"},
      {"A\\B", "A%5CB"},
      {"..", "%2E%2E"},
      {".A", "%2EA"},
      {"A.", "A%2E"},
      {".", "%2E"},
      {"../..", "%2E.%2F.%2E"},
      {"A%2FB", "A%252FB"},
      {"%", "%25"},
      {"C:", "C%3A"},
      {"A*?", "A%2A%3F"},
      {"<A>|", "%3CA%3E%7C"},
      {"A\"", "A%22"},
      {"brk", "%62%72%6B"},
      {"!'$&()+", "!'$&()+"},
      {"////////", "%2F%2F%2F%2F%2F%2F%2F%2F"},
  };
  for (const auto& [text, stem] : cases) {
    const StockCode code = support::Code(text);
    EXPECT_EQ(CodeFileStem(code), stem);
    EXPECT_EQ(ParseCodeFileStem(stem), code) << stem;
  }
}

TEST(FileNames, StemWrittenByAnotherProgramIsTakenAsItStands) {
  for (const std::string stem : {"aapl", "A%B", "A%", "%2", "%GG", "A:B"}) {
    ASSERT_TRUE(ParseCodeFileStem(stem)) << stem;
    EXPECT_EQ(ParseCodeFileStem(stem)->Text(), stem);
  }
  EXPECT_EQ(ParseCodeFileStem("BF%2fB"), support::Code("BF/B"));
  // Names that begin with a point are the hidden files of other programs.
  for (const std::string stem : {"", ".A", "._AAPL", "..", "A B", "A%2CB", "A%20", "%00", "A%0A",
                                 "123456789", "%2F%2F%2F%2F%2F%2F%2F%2FA", "あ"}) {
    EXPECT_FALSE(ParseCodeFileStem(stem)) << stem;
  }
}

}  // namespace
}  // namespace orin::store
