#include "shell/error_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/cp932.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"

namespace orin::shell {
namespace {

using support::Bytes;
using support::PutFile;
using support::ScratchDirectory;

std::string Text(const std::filesystem::path& path) { return base::DecodeCp932(Bytes(path)); }

TEST(ErrorLog, EntryHasNumberTimeStageAndSentence) {
  const ScratchDirectory home;
  const ErrorLog log(home / "orinerr.txt", base::NativeFileSystem());
  ASSERT_TRUE(log.Append(60, "システム情報の読み込み", "「orin.ind」がありません。\n続き。"));
  std::string form = Text(home / "orinerr.txt");
  const size_t time = form.find("\r\n") + 2;
  for (char& c : form) {
    if (&c >= form.data() + time && c >= '0' && c <= '9') c = '9';
  }
  EXPECT_EQ(form,
            "ミルテエラーＮＯ：60\r\n9999/99/99 99:99:99 システム情報の読み込み\r\n"
            "「orin.ind」がありません。\r\n続き。\r\n\r\n");
}

TEST(ErrorLog, EntriesFollowEachOther) {
  const ScratchDirectory home;
  const ErrorLog log(home / "orinerr.txt", base::NativeFileSystem());
  ASSERT_TRUE(log.Append(10, "設定", "一。"));
  ASSERT_TRUE(log.Append(20, "設定", "二。"));
  const std::string text = Text(home / "orinerr.txt");
  EXPECT_TRUE(text.starts_with("ミルテエラーＮＯ：10\r\n"));
  EXPECT_THAT(text, ::testing::HasSubstr("一。\r\n\r\nミルテエラーＮＯ：20\r\n"));
}

TEST(ErrorLog, CharacterOutsideTheCodePageIsWrittenAsNumber) {
  const ScratchDirectory home;
  const ErrorLog log(home / "orinerr.txt", base::NativeFileSystem());
  ASSERT_TRUE(log.Append(10, "設定", "「😀.ini」が読めません。"));
  EXPECT_THAT(Text(home / "orinerr.txt"), ::testing::HasSubstr("「U+1F600.ini」が読めません。"));
}

TEST(ErrorLog, LogBeyondAMegabyteLosesItsOlderHalfAtAnEntry) {
  const ScratchDirectory home;
  const std::string entry = base::EncodeCp932Lossy("ミルテエラーＮＯ：10\r\n古い。\r\n\r\n");
  std::string old;
  while (old.size() <= ErrorLog::kGreatestSize) old += entry;
  PutFile(home / "orinerr.txt", old);
  const ErrorLog log(home / "orinerr.txt", base::NativeFileSystem());
  ASSERT_TRUE(log.Append(20, "設定", "新しい。"));
  const std::string kept = Bytes(home / "orinerr.txt");
  EXPECT_LE(kept.size(), old.size() / 2 + 200);
  EXPECT_GE(kept.size(), old.size() / 2 - 200);
  EXPECT_TRUE(kept.starts_with(entry));
  EXPECT_TRUE(base::DecodeCp932(kept).ends_with("新しい。\r\n\r\n"));
}

TEST(ErrorLog, MegabyteWithoutEntriesIsDroppedWhole) {
  const ScratchDirectory home;
  PutFile(home / "orinerr.txt", std::string(ErrorLog::kGreatestSize + 1, '\x81'));
  const ErrorLog log(home / "orinerr.txt", base::NativeFileSystem());
  ASSERT_TRUE(log.Append(20, "設定", "新しい。"));
  EXPECT_TRUE(Text(home / "orinerr.txt").starts_with("ミルテエラーＮＯ：20\r\n"));
}

TEST(ErrorLog, FullDiskIsAFailureThatNamesTheLog) {
  const ScratchDirectory home;
  support::FaultyFileSystem files;
  files.LimitGrowth(10);
  const base::Status written = ErrorLog(home / "orinerr.txt", files).Append(10, "設定", "一。");
  ASSERT_FALSE(written);
  EXPECT_THAT(written.error().message, ::testing::HasSubstr("orinerr.txt"));
}

}  // namespace
}  // namespace orin::shell
