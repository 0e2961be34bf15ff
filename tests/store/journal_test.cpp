#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "base/coding.h"
#include "store/crc32.h"
#include "store/journal_format.h"
#include "store/transaction.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::FaultyFileSystem;
using orin::support::Loss;
using orin::support::ScratchDirectory;

constexpr StoreFile kDaily = {FileKind::kDaily, 7};

/// Bytes with a right checksum and length, whatever their steps are.
std::string Sealed(std::string bytes) {
  base::PutUint64(bytes.data() + journal_offset::kLength, bytes.size() + 4);
  std::string sum(4, '\0');
  base::PutUint32(sum.data(), Crc32(bytes));
  return bytes + sum;
}

std::string OneStep(const StoreFile& file) {
  JournalWriter writer;
  writer.Add({JournalStep::Kind::kWrite, file, 3, 2, "abc"});
  return writer.Finish();
}

TEST(Journal, ChecksumIsTheCommonCrc32) {
  EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
  EXPECT_EQ(Crc32(""), 0U);
}

TEST(Journal, StepsAreReadAsWritten) {
  JournalWriter writer;
  EXPECT_TRUE(writer.IsEmpty());
  writer.Add({JournalStep::Kind::kWrite, kDaily, 4000, 3, "xyz"});
  writer.Add({JournalStep::Kind::kReplace, kSplitsFile, 0, 1, {}});
  writer.Add({JournalStep::Kind::kRemove, kAddedFile, 0, 1, {}});
  const std::string bytes = writer.Finish();
  const auto steps = DecodeJournal(bytes);
  ASSERT_TRUE(steps);
  ASSERT_EQ(steps->size(), 3U);
  EXPECT_EQ((*steps)[0].file, kDaily);
  EXPECT_EQ((*steps)[0].bytes, "xyz");
  EXPECT_EQ((*steps)[0].End(), 4009);
  EXPECT_EQ((*steps)[1].kind, JournalStep::Kind::kReplace);
  EXPECT_EQ((*steps)[2].file, kAddedFile);
}

TEST(Journal, AnyChangeOfAByteOrLengthIsNoticed) {
  const std::string bytes = OneStep(kMasterFile);
  ASSERT_TRUE(DecodeJournal(bytes));
  for (size_t i = 0; i < bytes.size(); ++i) {
    EXPECT_FALSE(DecodeJournal(bytes.substr(0, i))) << i;
    std::string changed = bytes;
    changed[i] = static_cast<char>(changed[i] ^ 0x10);
    EXPECT_FALSE(DecodeJournal(changed)) << i;
  }
  EXPECT_FALSE(DecodeJournal(bytes + "x"));
}

TEST(Journal, NamesAndPlacesOutsideTheStoreAreRefusedEvenWithARightChecksum) {
  const std::string whole = OneStep(kMasterFile);
  const std::string body = whole.substr(0, whole.size() - 4);
  const size_t name = journal_offset::kSteps + 3;
  const size_t numbers = name + 8;
  EXPECT_TRUE(DecodeJournal(Sealed(body)));
  struct Case {
    size_t offset;
    std::string bytes;
  };
  for (const Case& test : std::vector<Case>{
           {name, "../a.sys"},
           {name, "orin.jnl"},
           {journal_offset::kSteps, std::string(1, '\x09')},
           {journal_offset::kSteps, std::string(1, '\0')},
           {journal_offset::kSteps + 1, "\xFF\xFF"},
           {numbers, std::string(8, '\xFF')},
           {numbers + 7, "\x7F"},
           {numbers + 8, std::string(8, '\0')},
           {numbers + 8, std::string(7, '\xFF') + "\x7F"},
           {numbers + 16, std::string(4, '\0')},
           {numbers + 16, std::string(4, '\xFF')},
       }) {
    std::string changed = body;
    changed.replace(test.offset, test.bytes.size(), test.bytes);
    EXPECT_FALSE(DecodeJournal(Sealed(changed))) << test.offset << " " << test.bytes;
  }
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    std::string garbage = body;
    for (size_t i = journal_offset::kSteps; i < garbage.size(); ++i) {
      if (random() % 4 == 0) garbage[i] = static_cast<char>(random() % 256);
    }
    static_cast<void>(DecodeJournal(Sealed(garbage)));
  }
}

class Transactions : public ::testing::Test {
 protected:
  void Reset() {
    for (const auto& entry : fs::directory_iterator(scratch_.Path())) fs::remove(entry.path());
    auto& files = base::NativeFileSystem();
    for (const StoreFile& file : {kMasterFile, kDaily, kSplitsFile, kAddedFile}) {
      ASSERT_TRUE(base::ReplaceFile(files, PathOf(location_, file), "old content"));
    }
  }
  base::Status Run(base::FileSystem& files) {
    Transaction transaction(location_, files);
    transaction.Write(kMasterFile, 4, "new");
    transaction.Fill(kDaily, 9, "0123456789", 60000);
    transaction.Remove(kAddedFile);
    const base::Status staged = transaction.Replace(kSplitsFile, "new splits");
    return staged ? transaction.Commit() : staged;
  }
  std::string Content() {
    std::string text;
    for (const StoreFile& file : {kMasterFile, kDaily, kSplitsFile, kAddedFile, kJournalFile}) {
      text += base::ReadFile(PathOf(location_, file)).value_or("none") + "|";
    }
    return text;
  }

  ScratchDirectory scratch_;
  StoreLocation location_ = {scratch_.Path(), scratch_.Path()};
};

TEST_F(Transactions, MakesAllChanges) {
  Reset();
  ASSERT_TRUE(Run(base::NativeFileSystem()));
  std::string filled = "old conte";
  for (int i = 0; i < 60000; ++i) filled += "0123456789";
  EXPECT_EQ(Content(), "old newtent|" + filled + "|new splits|none|none|");
}

TEST_F(Transactions, RecoveryStoppedAnywhereIsTakenUpAgain) {
  Reset();
  const std::string before = Content();
  ASSERT_TRUE(Run(base::NativeFileSystem()));
  const std::string after = Content();
  for (int64_t first = 1; first < 40; ++first) {
    for (int64_t second = 1; second < 20; ++second) {
      Reset();
      FaultyFileSystem dying;
      dying.DieAt(first);
      dying.LoseOnDeath(Loss::kWritesAndNames);
      const bool succeeded = Run(dying).has_value();
      FaultyFileSystem recovering;
      recovering.DieAt(second);
      recovering.LoseOnDeath(Loss::kWritesAndNames);
      static_cast<void>(RecoverStore(location_, recovering));
      static_cast<void>(recovering.Remove(scratch_ / "nothing"));
      ASSERT_TRUE(RecoverStore(location_, base::NativeFileSystem()));
      ASSERT_TRUE(RemoveLeftovers(location_, base::NativeFileSystem()));
      const std::string content = Content();
      ASSERT_TRUE(content == after || (content == before && !succeeded)) << first << " " << second;
      if (!recovering.IsDead()) break;
    }
  }
}

TEST_F(Transactions, DamagedJournalIsSetAsideAndOtherFilesStay) {
  Reset();
  const std::string before = Content();
  auto& files = base::NativeFileSystem();
  ASSERT_TRUE(base::ReplaceFile(files, PathOf(location_, kJournalFile), "damaged"));
  ASSERT_TRUE(base::ReplaceFile(files, StagedPathOf(location_, kSplitsFile), "left over"));
  ASSERT_TRUE(base::ReplaceFile(files, scratch_ / "notes.tmp", "the user's"));
  EXPECT_TRUE(HasJournal(location_));
  ASSERT_TRUE(RecoverStore(location_, files));
  ASSERT_TRUE(RemoveLeftovers(location_, files));
  EXPECT_EQ(Content(), before);
  EXPECT_FALSE(fs::exists(StagedPathOf(location_, kSplitsFile)));
  EXPECT_TRUE(fs::exists(scratch_ / "notes.tmp"));
}

}  // namespace
}  // namespace orin::store
