#include "support/faulty_file_system.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "support/scratch_directory.h"

namespace orin::support {
namespace {

namespace fs = std::filesystem;

class FaultyFileSystemTest : public ::testing::Test {
 protected:
  void Put(const fs::path& name, std::string_view bytes) {
    std::ofstream(scratch_ / name, std::ios::binary) << bytes;
  }
  [[nodiscard]] std::string Bytes(const fs::path& name) const {
    return base::ReadFile(scratch_ / name).value_or("(missing)");
  }

  ScratchDirectory scratch_;
  FaultyFileSystem files_;
};

TEST_F(FaultyFileSystemTest, NothingHappensFromTheDeathOn) {
  files_.DieAt(3);
  const auto file = files_.Create(scratch_ / "a").value();
  EXPECT_TRUE(file->WriteAt(0, "one"));
  EXPECT_FALSE(files_.IsDead());
  EXPECT_FALSE(file->WriteAt(3, "two"));
  EXPECT_TRUE(files_.IsDead());
  EXPECT_FALSE(file->WriteAt(3, "three"));
  EXPECT_FALSE(file->Truncate(0));
  EXPECT_FALSE(file->Reserve(10));
  EXPECT_FALSE(file->Sync());
  EXPECT_FALSE(files_.Create(scratch_ / "b"));
  EXPECT_FALSE(files_.OpenForUpdate(scratch_ / "a"));
  EXPECT_FALSE(files_.Rename(scratch_ / "a", scratch_ / "b"));
  EXPECT_FALSE(files_.Remove(scratch_ / "a"));
  EXPECT_FALSE(files_.MakeDirectory(scratch_ / "d"));
  EXPECT_FALSE(files_.SyncDirectory(scratch_.Path()));
  EXPECT_EQ(Bytes("a"), "one");
  EXPECT_EQ(files_.Operations(), 13);
}

TEST_F(FaultyFileSystemTest, ALongWriteIsTornAndAShortOneIsNot) {
  for (const size_t size : {512U, 1000U}) {
    FaultyFileSystem files;
    files.DieAt(2);
    files.TearLastWrite();
    const auto file = files.Create(scratch_ / "a").value();
    EXPECT_FALSE(file->WriteAt(0, std::string(size, 'x')));
    EXPECT_FALSE(file->WriteAt(0, std::string(size, 'y')));
    EXPECT_EQ(Bytes("a"), std::string(size > 512 ? size / 2 : 0, 'x'));
  }
}

TEST_F(FaultyFileSystemTest, GrowthEndsWhereTheSpaceEnds) {
  Put("a", "12345");
  files_.LimitGrowth(4);
  const auto file = files_.OpenForUpdate(scratch_ / "a").value();
  EXPECT_TRUE(file->WriteAt(0, "abcde"));
  EXPECT_TRUE(file->Reserve(8));
  EXPECT_TRUE(file->WriteAt(4, "efgh"));
  EXPECT_FALSE(file->Reserve(12));
  const auto other = files_.Create(scratch_ / "b").value();
  EXPECT_FALSE(other->WriteAt(0, "xyz"));
  EXPECT_TRUE(file->WriteAt(0, "A"));
  EXPECT_TRUE(files_.Rename(scratch_ / "b", scratch_ / "c"));
  EXPECT_EQ(Bytes("a"), "Abcdefgh");
  EXPECT_EQ(Bytes("c"), "x");
}

TEST_F(FaultyFileSystemTest, APowerFailureTakesBackWhatWasNotSynced) {
  Put("a", "old bytes");
  Put("b", "second");
  files_.LoseOnDeath(Loss::kWrites);
  const auto a = files_.OpenForUpdate(scratch_ / "a").value();
  ASSERT_TRUE(a->WriteAt(0, "OLD"));
  ASSERT_TRUE(a->Sync());
  ASSERT_TRUE(a->WriteAt(4, "BYTES and more"));
  ASSERT_TRUE(a->WriteAt(0, "new"));
  ASSERT_TRUE(a->Truncate(2));
  const auto b = files_.Create(scratch_ / "b").value();
  ASSERT_TRUE(b->WriteAt(0, "other"));
  ASSERT_TRUE(files_.Rename(scratch_ / "b", scratch_ / "c"));
  files_.DieAt(files_.Operations() + 1);
  EXPECT_FALSE(a->Sync());
  EXPECT_EQ(Bytes("a"), "OLD bytes");
  EXPECT_EQ(Bytes("b"), "(missing)");
  EXPECT_EQ(Bytes("c"), "second");
}

TEST_F(FaultyFileSystemTest, APowerFailureTakesBackNamesWhoseDirectoryWasNotSynced) {
  for (const bool synced : {false, true}) {
    Put("target", "old");
    Put("removed", "kept");
    fs::remove(scratch_ / "made");
    FaultyFileSystem files;
    files.LoseOnDeath(Loss::kWritesAndNames);
    const auto made = files.Create(scratch_ / "made").value();
    ASSERT_TRUE(made->WriteAt(0, "new"));
    ASSERT_TRUE(made->Sync());
    ASSERT_TRUE(files.Rename(scratch_ / "made", scratch_ / "target"));
    ASSERT_TRUE(files.Remove(scratch_ / "removed"));
    if (synced) {
      ASSERT_TRUE(files.SyncDirectory(scratch_.Path()));
    }
    files.DieAt(files.Operations() + 1);
    EXPECT_FALSE(files.MakeDirectory(scratch_ / "d"));
    EXPECT_EQ(Bytes("target"), synced ? "new" : "old");
    EXPECT_EQ(Bytes("removed"), synced ? "(missing)" : "kept");
    EXPECT_FALSE(fs::exists(scratch_ / "made"));
  }
}

TEST_F(FaultyFileSystemTest, WritesToAReplacedFileAreNotTakenBackFromItsSuccessor) {
  Put("target", "old");
  Put("new", "successor");
  files_.LoseOnDeath(Loss::kWrites);
  ASSERT_TRUE(files_.OpenForUpdate(scratch_ / "target").value()->WriteAt(0, "OLD"));
  ASSERT_TRUE(files_.Rename(scratch_ / "new", scratch_ / "target"));
  files_.DieAt(files_.Operations() + 1);
  EXPECT_FALSE(files_.SyncDirectory(scratch_.Path()));
  EXPECT_EQ(Bytes("target"), "successor");
}

TEST_F(FaultyFileSystemTest, ASaveWithoutFlushIsCaught) {
  Put("a", "old");
  files_.LoseOnDeath(Loss::kWrites);
  ASSERT_TRUE(files_.Create(scratch_ / "t").value()->WriteAt(0, "new"));
  ASSERT_TRUE(files_.Rename(scratch_ / "t", scratch_ / "a"));
  files_.DieAt(files_.Operations() + 1);
  EXPECT_FALSE(files_.SyncDirectory(scratch_.Path()));
  EXPECT_EQ(Bytes("a"), "");
}

}  // namespace
}  // namespace orin::support
