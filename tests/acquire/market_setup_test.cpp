#include "acquire/market_setup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "base/cp932.h"
#include "store/stock_store.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/stop_at.h"
#include "support/test_files.h"

namespace orin::acquire {
namespace {

namespace fs = std::filesystem;
using support::Bytes;
using support::PutFile;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kHistory =
    "年月日,始値,高値,安値,終値,出来高\n"
    "2020/01/09,10,12,9,11,100\n"
    "2020/01/10,11,13,10,12,200\n";

/// Every file below the directory with its bytes.
std::map<fs::path, std::string> FilesOf(const fs::path& directory) {
  std::map<fs::path, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    if (entry.is_regular_file()) files[entry.path()] = Bytes(entry.path());
  }
  return files;
}

/// A place for a store in which the user has files already, and quotes for it.
class MarketSetup : public testing::Test {
 protected:
  MarketSetup() {
    PutFile(quotes_ / "^DJI.csv", kHistory);
    PutFile(quotes_ / "AAA.csv", kHistory);
    PutFile(home_ / "mine.txt", "kept");
    PutFile(home_ / "orin.ini", "[Bus]\r\n");
    PutFile(home_ / "data" / "K20200110.LOG", "old log");
  }

  base::Result<MarketSummary> SetUpFrom(const MarketSource& source,
                                        base::FileSystem& files = base::NativeFileSystem()) {
    base::SilentProgress progress;
    return SetUpMarket(location_, source, files, progress);
  }
  [[nodiscard]] base::Result<store::StockStore> Open() const {
    return store::StockStore::Open(location_, {}, base::NativeFileSystem());
  }

  support::ScratchDirectory scratch_;
  fs::path quotes_ = scratch_ / "quotes";
  fs::path home_ = scratch_ / "home";
  store::StoreLocation location_{home_, home_ / "data"};
};

TEST_F(MarketSetup, QuotesOfADirectoryFillTheNewStore) {
  PutFile(quotes_ / "list.csv",
          "銘柄コード,銘柄名,上場コード,種別コード,業種コード\nAAA,ALPHA,1,1,0\nBBB,BETA,2,1,0\n");
  const auto made = SetUpFrom({quotes_, quotes_ / "list.csv"});
  ASSERT_TRUE(made) << made.error().message;
  EXPECT_EQ(made->stocks, 3);
  EXPECT_EQ(made->days, 2);
  EXPECT_FALSE(made->stopped);
  const auto store = Open();
  ASSERT_TRUE(store) << store.error().message;
  EXPECT_EQ(store->Days().Count(), 2);
  EXPECT_EQ(store->Master().Stocks().front().name, "ALPHA");
}

TEST_F(MarketSetup, WithoutQuotesTheStoreIsEmpty) {
  const auto made = SetUpFrom({});
  ASSERT_TRUE(made) << made.error().message;
  EXPECT_EQ(made->stocks, 0);
  const auto store = Open();
  ASSERT_TRUE(store) << store.error().message;
  EXPECT_THAT(store->Master().Stocks(), IsEmpty());
}

TEST_F(MarketSetup, LineThatCannotBeReadIsToldAndTheRestImported) {
  PutFile(quotes_ / "AAA.csv", std::string(kHistory) + "2020/02/30,1,1,1,1,1\n");
  const auto made = SetUpFrom({quotes_, {}});
  ASSERT_TRUE(made) << made.error().message;
  ASSERT_EQ(made->problems.size(), 1U);
  EXPECT_THAT(made->problems[0], HasSubstr("AAA.csv"));
  EXPECT_EQ(made->stocks, 2);
}

TEST_F(MarketSetup, QuotesThatCannotBeUsedLeaveThePlaceAsItWas) {
  const auto before = FilesOf(home_);
  const auto nowhere = SetUpFrom({scratch_ / "nowhere", {}});
  ASSERT_FALSE(nowhere);
  EXPECT_THAT(nowhere.error().message, HasSubstr("nowhere"));

  PutFile(quotes_ / "broken.lst", "no heading\nAAA\n");
  EXPECT_FALSE(SetUpFrom({quotes_, quotes_ / "broken.lst"}));
  EXPECT_FALSE(SetUpFrom({quotes_, quotes_ / "missing.lst"}));

  fs::remove(quotes_ / "^DJI.csv");
  const auto without_calendar = SetUpFrom({quotes_, {}});
  ASSERT_FALSE(without_calendar);
  EXPECT_THAT(without_calendar.error().message, HasSubstr("^DJI.csv"));

  EXPECT_EQ(FilesOf(home_), before);
  PutFile(quotes_ / "^DJI.csv", kHistory);
  EXPECT_TRUE(SetUpFrom({quotes_, {}}));
}

TEST_F(MarketSetup, UsersSplitListOutlivesAFailure) {
  const auto list = base::EncodeCp932("AAA,2,2020/01/09\r\n");
  PutFile(home_ / "株式分割.txt", *list);
  const auto before = FilesOf(home_);
  ASSERT_FALSE(SetUpFrom({scratch_ / "nowhere", {}}));
  EXPECT_EQ(FilesOf(home_), before);
}

TEST_F(MarketSetup, ExistingStoreIsRefusedAndNotTouched) {
  ASSERT_TRUE(SetUpFrom({quotes_, {}}));
  const auto before = FilesOf(home_);
  const auto again = SetUpFrom({quotes_, {}});
  ASSERT_FALSE(again);
  EXPECT_THAT(again.error().message, HasSubstr("がすでにあります"));
  // A store whose orin.sys was lost is no empty place either.
  fs::remove(home_ / "orin.sys");
  EXPECT_FALSE(SetUpFrom({quotes_, {}}));
  PutFile(home_ / "orin.sys", before.at(home_ / "orin.sys"));
  EXPECT_EQ(FilesOf(home_), before);
}

TEST_F(MarketSetup, FullDiskLeavesThePlaceAsItWas) {
  const auto before = FilesOf(home_);
  bool is_done = false;
  int failures = 0;
  for (int64_t space = 0; !is_done; space = space * 3 / 2 + 50) {
    ASSERT_LT(space, int64_t{1} << 32);
    support::FaultyFileSystem files;
    files.LimitGrowth(space);
    const auto made = SetUpFrom({quotes_, {}}, files);
    is_done = made.has_value();
    if (is_done) continue;
    ++failures;
    EXPECT_FALSE(made.error().message.empty());
    ASSERT_EQ(FilesOf(home_), before) << space;
  }
  EXPECT_GT(failures, 5);
  EXPECT_TRUE(Open());
}

TEST_F(MarketSetup, RemainsOfAKilledSetUpAreNoObstacle) {
  const auto before = FilesOf(home_);
  bool is_alive = false;
  for (int64_t n = 1; !is_alive; ++n) {
    support::FaultyFileSystem files;
    files.DieAt(n);
    static_cast<void>(SetUpFrom({}, files));
    is_alive = !files.IsDead();
    // Once orin.sys is there, there is a store; before, the place is as good as new, whether the
    // next set-up fails or not.
    if (fs::exists(home_ / "orin.sys")) {
      EXPECT_TRUE(Open()) << n;
    } else {
      ASSERT_FALSE(SetUpFrom({scratch_ / "nowhere", {}})) << n;
      ASSERT_FALSE(fs::exists(home_ / "orin.sys")) << n;
      ASSERT_TRUE(SetUpFrom({quotes_, {}})) << n;
    }
    for (const auto& [path, bytes] : FilesOf(home_)) {
      if (!before.contains(path)) fs::remove(path);
    }
  }
}

TEST_F(MarketSetup, StoppingKeepsWhatWasImported) {
  support::StopAt stop(1);
  const auto made = SetUpMarket(location_, {quotes_, {}}, base::NativeFileSystem(), stop);
  ASSERT_TRUE(made) << made.error().message;
  EXPECT_TRUE(made->stopped);
  EXPECT_TRUE(Open());
}

/// A demo of one analysis file and an empty program directory for it.
class DemoFiles : public testing::Test {
 protected:
  DemoFiles() {
    PutFile(demo_ / "orin.ini", "[Bus]\r\n");
    PutFile(demo_ / "analysis" / "週足.txt", "タイトル");
    PutFile(demo_ / "brand" / "^DJI.csv", kHistory);
    fs::create_directories(home_);
  }

  support::ScratchDirectory scratch_;
  fs::path demo_ = scratch_ / "demo";
  fs::path home_ = scratch_ / "home";
};

TEST_F(DemoFiles, AreCopiedWithADirectoryForEveryResultList) {
  ASSERT_TRUE(CopyDemoFiles(demo_, home_, base::NativeFileSystem()));
  EXPECT_EQ(Bytes(home_ / "orin.ini"), "[Bus]\r\n");
  EXPECT_EQ(Bytes(home_ / "brand" / "^DJI.csv"), kHistory);
  EXPECT_TRUE(fs::is_directory(home_ / "patrol" / "週足"));
}

TEST_F(DemoFiles, FilesOfTheUserAreKept) {
  PutFile(home_ / "orin.ini", "mine");
  ASSERT_TRUE(CopyDemoFiles(demo_, home_, base::NativeFileSystem()));
  EXPECT_EQ(Bytes(home_ / "orin.ini"), "mine");
  EXPECT_EQ(Bytes(home_ / "analysis" / "週足.txt"), "タイトル");
}

TEST_F(DemoFiles, FullDiskLeavesNoneAndTheUsersOwn) {
  PutFile(home_ / "orin.ini", "mine");
  support::FaultyFileSystem files;
  files.LimitGrowth(20);
  const auto copied = CopyDemoFiles(demo_, home_, files);
  ASSERT_FALSE(copied);
  EXPECT_EQ(FilesOf(home_), (std::map<fs::path, std::string>{{home_ / "orin.ini", "mine"}}));
}

TEST_F(DemoFiles, MissingDemoIsASentence) {
  const auto copied = CopyDemoFiles(scratch_ / "nowhere", home_, base::NativeFileSystem());
  ASSERT_FALSE(copied);
  EXPECT_THAT(copied.error().message, HasSubstr("nowhere"));
}

}  // namespace
}  // namespace orin::acquire
