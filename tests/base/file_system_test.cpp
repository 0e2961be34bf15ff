#include "base/file_system.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/cp932.h"
#include "base/file_descriptor.h"
#include "base/temporary_file.h"
#include "support/scratch_directory.h"

namespace orin::base {
namespace {

namespace fs = std::filesystem;
using ::testing::MatchesRegex;

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

/// Does something else just before the n-th operation.
class Interleaved final : public FileSystem {
 public:
  Interleaved(int operation, std::function<void()> other)
      : left_(operation), other_(std::move(other)) {}
  [[nodiscard]] bool WasReached() const { return left_ <= 0; }

  Result<std::unique_ptr<WritableFile>> OpenForUpdate(const fs::path& path) override {
    return Files().OpenForUpdate(path);
  }
  Result<std::unique_ptr<WritableFile>> Create(const fs::path& path) override {
    return Files().Create(path);
  }
  Result<std::unique_ptr<WritableFile>> CreateNew(const fs::path& path) override {
    return Files().CreateNew(path);
  }
  Status Rename(const fs::path& from, const fs::path& to) override {
    return Files().Rename(from, to);
  }
  Status Remove(const fs::path& path) override { return Files().Remove(path); }
  Status MakeDirectory(const fs::path& path) override { return Files().MakeDirectory(path); }
  Status SyncDirectory(const fs::path& path) override { return Files().SyncDirectory(path); }
  Status SetPermissions(const fs::path& path, fs::perms permissions) override {
    return Files().SetPermissions(path, permissions);
  }

 private:
  FileSystem& Files() {
    if (--left_ == 0) other_();
    return NativeFileSystem();
  }

  int left_;
  std::function<void()> other_;
};

TEST_F(FileSystemTest, OfTwoWritersOfOneFileOneStandsWhole) {
  const std::string longer(9000, 'l');
  Put("a", "old");
  for (int operation = 1;; ++operation) {
    Status other = Fail("not run");
    Interleaved files(operation, [&] { other = ReplaceFile(files_, scratch_ / "a", longer); });
    const Status own = ReplaceFile(files, scratch_ / "a", "short");
    if (!files.WasReached()) break;
    EXPECT_TRUE(own) << operation << own.error().message;
    EXPECT_TRUE(other) << operation << other.error().message;
    const std::string bytes = ReadFile(scratch_ / "a").value();
    EXPECT_TRUE(bytes == longer || bytes == "short") << operation << " " << bytes.size();
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch_.Path()), {}), 1) << operation;
  }
}

TEST_F(FileSystemTest, ANewFileIsNeverOneThatIsThere) {
  Put("kept", "kept");
  fs::create_symlink("kept", scratch_ / "link");
  fs::create_symlink("none", scratch_ / "dangling");
  for (const char* name : {"kept", "link", "dangling"}) {
    const auto taken = files_.CreateNew(scratch_ / name);
    ASSERT_TRUE(taken.has_value()) << name;
    EXPECT_EQ(*taken, nullptr) << name;
  }
  EXPECT_EQ(ReadFile(scratch_ / "kept").value(), "kept");
  EXPECT_FALSE(fs::exists(scratch_ / "none"));
  const TemporaryFile first = CreateTemporary(files_, scratch_ / "a").value();
  const TemporaryFile second = CreateTemporary(files_, scratch_ / "a").value();
  EXPECT_NE(first.path, second.path);
}

TEST_F(FileSystemTest, TemporariesOfProcessesThatAreGoneAreRemoved) {
  // A process that has been waited for is gone.
  const pid_t child = fork();
  if (child == 0) _exit(CreateTemporary(files_, scratch_ / "k.txt") ? 0 : 1);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  const std::string gone = std::to_string(child);
  const fs::path left = fs::directory_iterator(scratch_.Path())->path();
  EXPECT_THAT(left.filename().string(), MatchesRegex("k\\.txt\\.orin-" + gone + "-[0-9]+\\.tmp"));
  const std::vector<std::string> kept = {
      "k.txt.orin-" + gone + "-1", "k.txt." + gone + "-1.tmp", "k.txt.orin-" + gone + "-x.tmp",
      "k.txt.orin-1-1.tmp",        ".orin-" + gone + "-1.tmp", "k.txt.orin-" + gone + ".tmp"};
  for (const std::string& name : kept) Put(name, "kept");
  ASSERT_TRUE(RemoveLeftTemporaries(files_, scratch_.Path()));
  EXPECT_TRUE(RemoveLeftTemporaries(files_, scratch_ / "none"));
  EXPECT_FALSE(fs::exists(left));
  for (const std::string& name : kept) EXPECT_TRUE(fs::exists(scratch_ / name)) << name;
}

TEST_F(FileSystemTest, TemporaryThatIsBeingWrittenIsNotRemoved) {
  // The number of this process says nothing: another container may have one of the same number.
  fs::path path;
  {
    const TemporaryFile temporary = CreateTemporary(files_, scratch_ / "a").value();
    path = temporary.path;
    ASSERT_TRUE(RemoveLeftTemporaries(files_, scratch_.Path()));
    EXPECT_TRUE(fs::exists(path));
    ASSERT_TRUE(files_.Rename(path, scratch_ / "a"));
    ASSERT_TRUE(RemoveLeftTemporaries(files_, scratch_.Path()));
    EXPECT_TRUE(fs::exists(scratch_ / "a"));
    ASSERT_TRUE(files_.Rename(scratch_ / "a", path));
  }
  ASSERT_TRUE(RemoveLeftTemporaries(files_, scratch_.Path()));
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(FileSystemTest, LeftTemporariesAreRegularFiles) {
  const std::string number = std::to_string(getpid());
  const auto name = [&](const std::string& stem) { return stem + ".orin-" + number + "-1.tmp"; };
  Put("kept", "kept");
  Put(name("z"), "left");
  fs::create_directory(scratch_ / name("directory"));
  fs::create_symlink("kept", scratch_ / name("link"));
  ASSERT_EQ(mkfifo((scratch_ / name("pipe")).c_str(), 0600), 0);
  const Status removed = RemoveLeftTemporaries(files_, scratch_.Path());
  EXPECT_TRUE(removed) << removed.error().message;
  EXPECT_FALSE(fs::exists(scratch_ / name("z")));
  for (const char* stem : {"directory", "link", "pipe"}) {
    EXPECT_TRUE(fs::exists(scratch_ / name(stem))) << stem;
  }
}

TEST_F(FileSystemTest, TemporaryThatCannotBeRemovedIsNamedAndTheOthersGo) {
  class Stubborn final : public FileSystem {
   public:
    Result<std::unique_ptr<WritableFile>> OpenForUpdate(const fs::path& path) override {
      return files_.OpenForUpdate(path);
    }
    Result<std::unique_ptr<WritableFile>> Create(const fs::path& path) override {
      return files_.Create(path);
    }
    Result<std::unique_ptr<WritableFile>> CreateNew(const fs::path& path) override {
      return files_.CreateNew(path);
    }
    Status Rename(const fs::path& from, const fs::path& to) override {
      return files_.Rename(from, to);
    }
    Status Remove(const fs::path& path) override {
      if (++removals == 1) return Fail("「" + PathText(path) + "」を削除できません。");
      return files_.Remove(path);
    }
    Status MakeDirectory(const fs::path& path) override { return files_.MakeDirectory(path); }
    Status SyncDirectory(const fs::path& path) override { return files_.SyncDirectory(path); }
    int removals = 0;

   private:
    FileSystem& files_ = NativeFileSystem();
  };
  const std::string number = std::to_string(getpid());
  for (const char* stem : {"a", "b", "c"}) Put(stem + (".orin-" + number + "-1.tmp"), "left");
  Stubborn stubborn;
  ExpectFailure(RemoveLeftTemporaries(stubborn, scratch_.Path()), number, "を削除できません");
  EXPECT_EQ(stubborn.removals, 3);
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch_.Path()), {}), 1);
}

TEST_F(FileSystemTest, FileOfTheLongestNameIsReplaced) {
  constexpr size_t kLongestName = 255;
  const std::vector<std::string> names = {std::string(kLongestName, 'a'),
                                          std::string(kLongestName - 29, 'a')};
  for (std::string name : names) {
    ASSERT_TRUE(ReplaceFile(files_, scratch_ / name, "x")) << name.size();
    EXPECT_EQ(ReadFile(scratch_ / name).value(), "x");
  }
  // Names are cut between characters, which some disks insist on.
  for (size_t length = 76; length <= 85; ++length) {
    std::string name = length % 2 == 0 ? "a" : "";
    for (size_t i = 0; i < length; ++i) name += "銘";
    if (name.size() > kLongestName) continue;
    const TemporaryFile temporary = CreateTemporary(files_, scratch_ / name).value();
    const std::string made = temporary.path.filename().string();
    EXPECT_LE(made.size(), kLongestName);
    EXPECT_TRUE(IsValidUtf8(made)) << made;
    EXPECT_TRUE(made.starts_with("銘") || made.starts_with("a銘"));
  }
}

TEST_F(FileSystemTest, WhatIsNoRegularFileIsNotReplaced) {
  ASSERT_EQ(mkfifo((scratch_ / "pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", scratch_ / "to_pipe");
  fs::create_symlink("/dev/null", scratch_ / "to_device");
  fs::create_directory(scratch_ / "directory");
  const auto count = [this] { return std::distance(fs::directory_iterator(scratch_.Path()), {}); };
  const auto before = count();
  for (const char* name : {"pipe", "to_pipe", "to_device"}) {
    ExpectFailure(ReplaceFile(files_, scratch_ / name, "x"), name, "通常のファイルではない");
  }
  ExpectFailure(ReplaceFile(files_, scratch_ / "directory", "x"), "directory", "ディレクトリです");
  EXPECT_TRUE(fs::is_fifo(scratch_ / "pipe"));
  EXPECT_TRUE(fs::is_symlink(scratch_ / "to_device"));
  EXPECT_TRUE(fs::is_character_file(scratch_ / "to_device"));
  EXPECT_EQ(count(), before);
  ExpectFailure(StatusOf(ReadFile(scratch_ / "to_device")), "to_device", "通常のファイル");
}

TEST_F(FileSystemTest, AFileBeyondTheLimitIsNotRead) {
  Put("a", "12345");
  EXPECT_EQ(ReadFile(scratch_ / "a", 5).value(), "12345");
  ExpectFailure(StatusOf(ReadFile(scratch_ / "a", 4)), "/a", "大きすぎる");
  // A hole of a terabyte takes no room on the disk, but would in memory.
  Put("hole", "");
  fs::resize_file(scratch_ / "hole", uintmax_t{1} << 40);
  ExpectFailure(StatusOf(ReadFile(scratch_ / "hole")), "/hole", "大きすぎる");
}

TEST_F(FileSystemTest, AMappedFileThatIsCutShortReadsAsZerosAndIsNotWhole) {
  const std::string bytes(100'000, 'x');
  Put("a", bytes);
  Put("other", bytes);
  const MappedFile mapped = MappedFile::Open(scratch_ / "a").value();
  const MappedFile other = MappedFile::Open(scratch_ / "other").value();
  ASSERT_TRUE(mapped.IsWhole());
  fs::resize_file(scratch_ / "a", 10);
  EXPECT_FALSE(mapped.IsWhole()) << "before anything is read";
  EXPECT_EQ(mapped.Bytes().substr(0, 12), std::string_view("xxxxxxxxxx\0\0", 12));
  EXPECT_EQ(std::ranges::count(mapped.Bytes(), 'x'), 10);
  // Restored to its old length, its lost pages still are.
  Put("a", bytes);
  EXPECT_FALSE(mapped.IsWhole());
  EXPECT_TRUE(other.IsWhole());
  EXPECT_TRUE(MappedFile::Open(scratch_ / "a")->IsWhole());
  fs::remove(scratch_ / "other");
  EXPECT_TRUE(other.IsWhole());
}

TEST_F(FileSystemTest, AnotherBadAddressStillEndsTheProgram) {
  Put("a", "x");
  const MappedFile guarded = MappedFile::Open(scratch_ / "a").value();
  const FileDescriptor file = FileDescriptor::Open(scratch_ / "a", O_RDWR);
  void* data = mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file.Number(), 0);
  ASSERT_NE(data, MAP_FAILED);
  fs::resize_file(scratch_ / "a", 0);
  EXPECT_DEATH(static_cast<void>(*static_cast<const volatile char*>(data)), "");
  munmap(data, 4096);
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
