#include "shell/run_marker.h"

#include <gtest/gtest.h>

#include "program_home.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"

namespace orin::shell {
namespace {

using support::Bytes;
using support::PutFile;
using support::ScratchDirectory;

struct MarkerCase {
  std::string bytes;
  bool is_in_use;
};

TEST(RunMarker, FreeMarkerIsClaimedAndRemovedAtTheEnd) {
  const ScratchDirectory home;
  RunMarker marker(home / "orin.act");
  ASSERT_TRUE(marker.Claim(base::NativeFileSystem()));
  EXPECT_TRUE(marker.IsOwn());
  EXPECT_EQ(Bytes(marker.Path()), kInUse);
  ASSERT_TRUE(marker.Release(base::NativeFileSystem()));
  EXPECT_FALSE(std::filesystem::exists(marker.Path()));
  EXPECT_FALSE(marker.IsOwn());
}

TEST(RunMarker, OnlyZeroAndAFileTooShortAreFree) {
  const ScratchDirectory home;
  const std::vector<MarkerCase> cases = {
      {"", false},
      {std::string(1, '\xff'), false},
      {std::string(2, '\0'), false},
      {std::string("\0\0\xff\xff", 4), false},  // record 1 counts
      {kInUse, true},
      {std::string("\1\0", 2), true},
      {std::string("\0\x80", 2), true},
      {kInUse + std::string(2, '\0'), true},
  };
  for (const MarkerCase& one : cases) {
    PutFile(home / "orin.act", one.bytes);
    RunMarker marker(home / "orin.act");
    ASSERT_TRUE(marker.Claim(base::NativeFileSystem()));
    EXPECT_EQ(marker.IsOfAnother(), one.is_in_use) << ::testing::PrintToString(one.bytes);
    EXPECT_EQ(marker.IsOwn(), !one.is_in_use) << ::testing::PrintToString(one.bytes);
    EXPECT_EQ(Bytes(home / "orin.act"), one.is_in_use ? one.bytes : kInUse);
  }
}

TEST(RunMarker, MarkerOfAnotherInstanceSurvivesRelease) {
  const ScratchDirectory home;
  RunMarker first(home / "orin.act");
  RunMarker second(home / "orin.act");
  ASSERT_TRUE(first.Claim(base::NativeFileSystem()));
  ASSERT_TRUE(second.Claim(base::NativeFileSystem()));
  ASSERT_TRUE(second.Release(base::NativeFileSystem()));
  EXPECT_EQ(Bytes(home / "orin.act"), kInUse);
}

TEST(RunMarker, ResetTakesTheMarkerOver) {
  const ScratchDirectory home;
  PutFile(home / "orin.act", kInUse);
  RunMarker marker(home / "orin.act");
  ASSERT_TRUE(marker.Claim(base::NativeFileSystem()));
  ASSERT_TRUE(marker.Reset(base::NativeFileSystem()));
  EXPECT_TRUE(marker.IsOwn());
  EXPECT_FALSE(marker.IsOfAnother());
  ASSERT_TRUE(marker.Release(base::NativeFileSystem()));
  EXPECT_FALSE(std::filesystem::exists(marker.Path()));
}

TEST(RunMarker, MarkerThatCannotBeWrittenIsNobodys) {
  for (int64_t operation = 1; operation <= 3; ++operation) {
    const ScratchDirectory home;
    support::FaultyFileSystem files;
    files.DieAt(operation);
    RunMarker marker(home / "orin.act");
    EXPECT_FALSE(marker.Claim(files)) << operation;
    EXPECT_FALSE(marker.IsOwn());
    EXPECT_FALSE(marker.IsOfAnother());
  }
}

TEST(RunMarker, FullDiskLeavesNoMarkerInUse) {
  const ScratchDirectory home;
  support::FaultyFileSystem files;
  files.LimitGrowth(1);
  RunMarker marker(home / "orin.act");
  const base::Status claimed = marker.Claim(files);
  ASSERT_FALSE(claimed);
  EXPECT_NE(claimed.error().message.find("orin.act"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(home / "orin.act"));
}

TEST(RunMarker, DirectoryInItsPlaceIsAFailureAndNobodys) {
  const ScratchDirectory home;
  std::filesystem::create_directory(home / "orin.act");
  RunMarker marker(home / "orin.act");
  EXPECT_FALSE(marker.Claim(base::NativeFileSystem()));
  EXPECT_FALSE(marker.IsOwn());
  EXPECT_FALSE(marker.IsOfAnother());
}

}  // namespace
}  // namespace orin::shell
