#include "shell/ram_disk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program_home.h"
#include "support/faulty_file_system.h"

namespace orin::shell {
namespace {

using support::Bytes;
using support::PutFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class RamDisk : public ::testing::Test {
 protected:
  RamDisk() { UseDirectory(home_ / "ram"); }

  void UseDirectory(const std::filesystem::path& directory) {
    home_.WriteSettings("ramdisk_dir =" + directory.string() + "\r\n");
  }
  base::Result<RamDiskCopy> Copy(base::FileSystem& files = base::NativeFileSystem()) {
    return CopyToRamDisk(home_.Store(), home_ / "ram", files, home_.Screen());
  }
  [[nodiscard]] std::filesystem::path RamFile(const char* name) const {
    return home_ / "ram" / name;
  }
  /// The start has told one problem and reads the store itself.
  void ExpectOriginal(const ProgramState& state, const std::string& sentence) {
    EXPECT_THAT(home_.Screen().Texts(), ElementsAre(HasSubstr(sentence)));
    EXPECT_FALSE(state.ram_disk);
    ASSERT_TRUE(state.store);
    EXPECT_EQ(state.store->Location().system_directory, home_.System());
  }

  ProgramHome home_;
};

TEST_F(RamDisk, StoreIsReadFromItsCopy) {
  const auto state = home_.Start();
  ASSERT_TRUE(state->ram_disk);
  EXPECT_EQ(state->store->Location().data_directory, home_ / "ram");
  EXPECT_EQ(state->StoreLocation().system_directory, home_.System());
  EXPECT_EQ(Bytes(RamFile("orin.sys")), Bytes(home_.System() / "orin.sys"));
  EXPECT_EQ(Bytes(RamFile("orin001.dat")), Bytes(home_.Store().data_directory / "orin001.dat"));
  EXPECT_EQ(support::AllBars(*state->store, "AAPL").size(), 3U);
}

TEST_F(RamDisk, FilesCopiedBeforeAreNotCopiedAgain) {
  ASSERT_EQ(Copy(), RamDiskCopy::kWhole);
  support::FaultyFileSystem files;
  ASSERT_EQ(Copy(files), RamDiskCopy::kWhole);
  const int64_t unchanged = files.Operations();
  PutFile(home_.System() / "orin.lin", std::string(320, '\0'));
  ASSERT_EQ(Copy(files), RamDiskCopy::kWhole);
  EXPECT_GT(files.Operations(), 2 * unchanged);
  EXPECT_LE(unchanged, 4);
}

TEST_F(RamDisk, UpdateOfTheStoreReachesTheCopy) {
  const auto state = home_.Start();
  {
    auto writer = store::StockStore::Open(state->StoreLocation(), {store::Access::kWrite, {}},
                                          base::NativeFileSystem());
    ASSERT_TRUE(writer);
    ASSERT_TRUE(writer->AppendDay(support::Day("2020/01/09"), {}));
  }
  ASSERT_TRUE(LoadStore(*state, home_.Screen()));
  ASSERT_TRUE(state->ram_disk);
  EXPECT_EQ(state->store->Days().Count(), 4);
}

TEST_F(RamDisk, CopyIsComparedWithTheStoreItWasCopiedFrom) {
  const auto state = home_.Start();
  ASSERT_TRUE(state->ram_disk);
  EXPECT_EQ(state->store->OriginalLocation().system_directory, home_.System());
  EXPECT_FALSE(state->store->HasChangedOnDisk());
  int told = 0;
  state->on_store_changed = [&told] { ++told; };
  state->CompareStore();
  EXPECT_EQ(told, 0);
  {
    auto writer = store::StockStore::Open(state->StoreLocation(), {store::Access::kWrite, {}},
                                          base::NativeFileSystem());
    ASSERT_TRUE(writer);
    ASSERT_TRUE(writer->AppendDay(support::Day("2020/01/09"), {}));
  }
  state->CompareStore();
  EXPECT_EQ(told, 1);
}

TEST_F(RamDisk, FileTheStoreNoLongerHasIsRemovedAndStrangersStay) {
  PutFile(home_.System() / "orin.lin", std::string(320, '\0'));
  ASSERT_TRUE(Copy());
  std::filesystem::remove(home_.System() / "orin.lin");
  PutFile(RamFile("orin.jnl"), "left by a crash");
  PutFile(RamFile("note.txt"), "mine");
  ASSERT_TRUE(Copy());
  EXPECT_FALSE(std::filesystem::exists(RamFile("orin.lin")));
  EXPECT_FALSE(std::filesystem::exists(RamFile("orin.jnl")));
  EXPECT_TRUE(std::filesystem::exists(RamFile("note.txt")));
}

TEST_F(RamDisk, FullDiskIsASentenceAndTheOriginalIsUsed) {
  std::filesystem::create_directory(home_ / "ram");
  support::FaultyFileSystem files;
  files.LimitGrowth(3000);
  const auto state = home_.Start(files);
  ExpectOriginal(*state, "ディスクに空きがありません");
}

TEST_F(RamDisk, MissingDiskIsASentence) {
  UseDirectory(home_ / "not-mounted" / "ram");
  const auto state = home_.Start();
  ExpectOriginal(*state, "not-mounted」がない");
}

TEST_F(RamDisk, StoresOwnDirectoryIsRefused) {
  UseDirectory(home_.System());
  const std::string master = Bytes(home_.System() / "orin.sys");
  const auto state = home_.Start();
  ExpectOriginal(*state, "株価データそのものの場所");
  EXPECT_EQ(Bytes(home_.System() / "orin.sys"), master);
}

TEST_F(RamDisk, DirectoryOfAnotherStoreIsNotWrittenOver) {
  PutFile(RamFile("orin.sys"), "precious");
  const auto state = home_.Start();
  ExpectOriginal(*state, "写しでない株価データ");
  EXPECT_EQ(Bytes(RamFile("orin.sys")), "precious");
}

TEST_F(RamDisk, UserMayStopTheCopy) {
  home_.Screen().StopAt(2);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(), IsEmpty());
  EXPECT_FALSE(state->ram_disk);
  EXPECT_TRUE(state->store);
  for (const auto& entry : std::filesystem::directory_iterator(home_ / "ram")) {
    EXPECT_NE(entry.path().extension(), ".tmp");
  }
}

TEST_F(RamDisk, CopyStoppedAtAnyWriteIsMadeWholeByTheNext) {
  for (int64_t operation = 1;; ++operation) {
    std::filesystem::remove_all(home_ / "ram");
    support::FaultyFileSystem files;
    files.DieAt(operation);
    const auto stopped = Copy(files);
    EXPECT_EQ(stopped.has_value(), !files.IsDead());
    ASSERT_EQ(Copy(), RamDiskCopy::kWhole) << operation;
    const auto opened =
        store::StockStore::Open({home_ / "ram", home_ / "ram"}, {}, base::NativeFileSystem());
    ASSERT_TRUE(opened) << operation;
    EXPECT_EQ(support::AllBars(*opened, "^DJI").size(), 3U);
    if (!files.IsDead()) break;
  }
}

}  // namespace
}  // namespace orin::shell
