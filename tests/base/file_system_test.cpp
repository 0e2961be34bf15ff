#include "base/file_system.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/scratch_directory.h"

namespace orin::base {
namespace {

namespace fs = std::filesystem;

class FileSystemTest : public ::testing::Test {
 protected:
  static void ExpectFailure(const Status& status, std::string_view name, std::string_view reason) {
    ASSERT_FALSE(status.has_value());
    EXPECT_NE(status.error().message.find(name), std::string::npos) << status.error().message;
    EXPECT_NE(status.error().message.find(reason), std::string::npos) << status.error().message;
  }
  template <typename T>
  static Status StatusOf(const Result<T>& result) {
    if (!result) return Forward(result);
    return {};
  }
  void Put(const fs::path& name, std::string_view bytes) {
    std::ofstream(scratch_ / name, std::ios::binary) << bytes;
  }

  support::ScratchDirectory scratch_;
  FileSystem& files_ = NativeFileSystem();
};

TEST_F(FileSystemTest, WritesGoToTheirPlaces) {
  {
    const auto file = files_.Create(scratch_ / "a").value();
    ASSERT_TRUE(file->WriteAt(4, "efgh"));
    ASSERT_TRUE(file->WriteAt(0, "abcd"));
    ASSERT_TRUE(file->WriteAt(2, ""));
    ASSERT_TRUE(file->Truncate(7));
    ASSERT_TRUE(file->Reserve(1 << 20));
    ASSERT_TRUE(file->Sync());
  }
  EXPECT_EQ(ReadFile(scratch_ / "a").value(), "abcdefg");
  ASSERT_TRUE(files_.OpenForUpdate(scratch_ / "a").value()->WriteAt(6, "GH"));
  EXPECT_EQ(ReadFile(scratch_ / "a").value(), "abcdefGH");
  ASSERT_TRUE(files_.Create(scratch_ / "a"));
  EXPECT_EQ(ReadFile(scratch_ / "a").value(), "");
}

TEST_F(FileSystemTest, FailuresNameThePathAndTheReason) {
  Put("file", "x");
  ExpectFailure(StatusOf(files_.OpenForUpdate(scratch_ / "none")), "none", "見つかりません");
  EXPECT_FALSE(fs::exists(scratch_ / "none"));
  ExpectFailure(StatusOf(files_.OpenForUpdate(scratch_.Path())), "TheReason", "ディレクトリです");
  ExpectFailure(StatusOf(files_.Create(scratch_ / "no" / "x")), "no/x", "見つかりません");
  ExpectFailure(StatusOf(files_.Create(scratch_ / "file" / "x")), "file/x", "途中");
  ExpectFailure(files_.Rename(scratch_ / "none", scratch_ / "b"), "none", "見つかりません");
  ExpectFailure(files_.MakeDirectory(scratch_ / "file" / "d"), "file/d", "途中");
  ExpectFailure(files_.MakeDirectory(scratch_ / "file"), "file", "（");
  ExpectFailure(files_.SyncDirectory(scratch_ / "none"), "none", "見つかりません");
  ExpectFailure(files_.Remove(scratch_.Path()), "TheReason", "ディレクトリです");
  ExpectFailure(StatusOf(ReadFile(scratch_ / "none")), "none", "見つかりません");
  ExpectFailure(StatusOf(MappedFile::Open(scratch_.Path())), "TheReason", "ディレクトリです");
}

TEST_F(FileSystemTest, AFullDiskIsReportedAsSuch) {
  const auto full = files_.OpenForUpdate("/dev/full").value();
  ExpectFailure(full->WriteAt(0, "x"), "/dev/full", "ディスクに空きがありません");
}

TEST_F(FileSystemTest, AWriteThatStopsShortGoesOnToItsFailure) {
  const auto file = files_.Create(scratch_ / "a").value();
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto old_action = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limited{1000, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  const Status written = file->WriteAt(0, std::string(1500, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, old_action);
  ExpectFailure(written, "/a", "大きすぎます");
  EXPECT_EQ(ReadFile(scratch_ / "a")->size(), 1000U);
}

TEST_F(FileSystemTest, APipeIsNotReadAsAFile) {
  ASSERT_EQ(mkfifo((scratch_ / "pipe").c_str(), 0600), 0);
  ExpectFailure(StatusOf(ReadFile(scratch_ / "pipe")), "pipe", "通常のファイル");
}

TEST_F(FileSystemTest, RemovingWhatIsNotThereSucceeds) {
  Put("a", "x");
  EXPECT_TRUE(files_.Remove(scratch_ / "a"));
  EXPECT_FALSE(fs::exists(scratch_ / "a"));
  EXPECT_TRUE(files_.Remove(scratch_ / "a"));
}

TEST_F(FileSystemTest, DirectoriesAreMadeWithTheirParents) {
  EXPECT_TRUE(files_.MakeDirectory(scratch_ / "a/b/c"));
  EXPECT_TRUE(files_.MakeDirectory(scratch_ / "a/b/c"));
  EXPECT_TRUE(fs::is_directory(scratch_ / "a/b/c"));
  EXPECT_TRUE(files_.SyncDirectory(scratch_ / "a/b/c"));
}

TEST_F(FileSystemTest, AReplacedFileIsWholeAndAloneInItsDirectory) {
  for (const std::string& bytes : {std::string("new"), std::string(), std::string(1 << 20, 'n')}) {
    ASSERT_TRUE(ReplaceFile(files_, scratch_ / "a", bytes));
    EXPECT_EQ(ReadFile(scratch_ / "a").value(), bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch_.Path()), {}), 1);
  }
  fs::create_directory(scratch_ / "d");
  EXPECT_FALSE(ReplaceFile(files_, scratch_ / "d", "x"));
  EXPECT_FALSE(fs::exists(scratch_ / "d.tmp"));
}

TEST_F(FileSystemTest, AReplacedFileKeepsItsPermissionsAndANewOneHasThoseAskedFor) {
  constexpr auto kOwner = fs::perms::owner_read | fs::perms::owner_write;
  for (const fs::perms permissions :
       {kOwner, kOwner | fs::perms::group_read, fs::perms::owner_read, fs::perms::all}) {
    Put("a", "old");
    fs::permissions(scratch_ / "a", permissions);
    for (const Readers readers : {Readers::kByDefault, Readers::kOwner}) {
      ASSERT_TRUE(ReplaceFile(files_, scratch_ / "a", "new", readers));
      EXPECT_EQ(fs::status(scratch_ / "a").permissions(), permissions);
    }
    fs::remove(scratch_ / "a");
  }
  const mode_t mask = umask(022);
  ASSERT_TRUE(ReplaceFile(files_, scratch_ / "private", "x", Readers::kOwner));
  ASSERT_TRUE(ReplaceFile(files_, scratch_ / "public", "x"));
  umask(mask);
  EXPECT_EQ(fs::status(scratch_ / "private").permissions(), kOwner);
  EXPECT_EQ(fs::status(scratch_ / "public").permissions(),
            kOwner | fs::perms::group_read | fs::perms::others_read);
}

TEST_F(FileSystemTest, AReplacedLinkStaysALink) {
  fs::create_directory(scratch_ / "real");
  Put("real/a", "old");
  fs::create_symlink("real/a", scratch_ / "relative");
  fs::create_symlink(scratch_ / "relative", scratch_ / "chain");
  ASSERT_TRUE(ReplaceFile(files_, scratch_ / "chain", "new"));
  EXPECT_TRUE(fs::is_symlink(scratch_ / "chain"));
  EXPECT_TRUE(fs::is_symlink(scratch_ / "relative"));
  EXPECT_EQ(ReadFile(scratch_ / "real/a").value(), "new");
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch_ / "real"), {}), 1);
  fs::remove(scratch_ / "real/a");
  ASSERT_TRUE(ReplaceFile(files_, scratch_ / "chain", "anew"));
  EXPECT_EQ(ReadFile(scratch_ / "real/a").value(), "anew");
  fs::create_symlink("loop", scratch_ / "loop");
  ExpectFailure(ReplaceFile(files_, scratch_ / "loop", "x"), "loop", "リンクがたどれません");
}

TEST_F(FileSystemTest, AMappingMovesWithItsOwner) {
  Put("a", "mapped");
  Put("empty", "");
  EXPECT_EQ(MappedFile::Open(scratch_ / "empty")->Bytes(), "");
  MappedFile first = MappedFile::Open(scratch_ / "a").value();
  MappedFile second = std::move(first);
  MappedFile third = MappedFile::Open(scratch_ / "empty").value();
  third = std::move(second);
  EXPECT_EQ(third.Bytes(), "mapped");
  fs::remove(scratch_ / "a");
  EXPECT_EQ(third.Bytes(), "mapped");
}

}  // namespace
}  // namespace orin::base
