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

const std::string kInUse = "\xff\xff";
constexpr const char* kQuestion =
    "ミルテが複数起動されてるか、または、ミルテの異常状態です。\n"
    "ミルテは複数起動されていますか？\n"
    "はい　：そのままミルテを使用します。\n"
    "いいえ：異常状態を回復します。";

class MultipleStart : public ::testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path ProgramMarker() const { return home_.Program() / "orin.act"; }
  [[nodiscard]] std::filesystem::path UserMarker() const {
    return home_.SettingsDirectory() / "orinuser.act";
  }
  void LeaveMarkers() {
    PutFile(ProgramMarker(), kInUse);
    PutFile(UserMarker(), kInUse);
  }

  ProgramHome home_;
};

TEST_F(MultipleStart, MarkersOfAKilledRunAskAndYesLeavesThem) {
  LeaveMarkers();
  home_.Screen().Questions().WillAnswer(base::Answer::kYes);
  const auto state = home_.Start();
  ASSERT_THAT(home_.Screen().Texts(), ElementsAre(kQuestion));
  EXPECT_EQ(home_.Screen().Questions().Shown().front().caption,
            "ミルテ（複数起動、異常状態チェック）");
  EXPECT_TRUE(state->store);
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_EQ(Bytes(ProgramMarker()), kInUse);
  EXPECT_EQ(Bytes(UserMarker()), kInUse);
}

TEST_F(MultipleStart, NoTakesTheMarkersOver) {
  LeaveMarkers();
  home_.Screen().Questions().WillAnswer(base::Answer::kNo);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kQuestion));
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_FALSE(std::filesystem::exists(ProgramMarker()));
  EXPECT_FALSE(std::filesystem::exists(UserMarker()));
}

TEST_F(MultipleStart, OneMarkerOfAnotherIsEnoughToAsk) {
  PutFile(UserMarker(), kInUse);
  home_.Screen().Questions().WillAnswer(base::Answer::kYes);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kQuestion));
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_FALSE(std::filesystem::exists(ProgramMarker()));
  EXPECT_EQ(Bytes(UserMarker()), kInUse);
}

TEST_F(MultipleStart, SecondInstanceLeavesTheMarkersOfTheFirst) {
  const auto first = home_.Start();
  home_.Screen().Questions().WillAnswer(base::Answer::kYes);
  const auto second = home_.Start();
  EXPECT_TRUE(ShutDown(*second));
  EXPECT_EQ(Bytes(ProgramMarker()), kInUse);
  EXPECT_EQ(Bytes(UserMarker()), kInUse);
  EXPECT_TRUE(ShutDown(*first));
  EXPECT_FALSE(std::filesystem::exists(ProgramMarker()));
}

TEST_F(MultipleStart, RecoveryRemovesWhatAKilledWriterLeft) {
  LeaveMarkers();
  std::vector<std::filesystem::path> leftovers = {home_.Places().settings_file.string() + ".tmp",
                                                  home_.SettingsDirectory() / "orin.trn.tmp",
                                                  home_.SettingsDirectory() / "orinsim.ini.tmp",
                                                  home_.Program() / "orinsim.ini.tmp",
                                                  home_.System() / "orin.fee.tmp",
                                                  home_.System() / "企業url.txt.tmp",
                                                  home_.Store().data_directory / "orin002.dat.tmp"};
  // No process has a number this high.
  leftovers.push_back(home_.System() / "orin.fee.orin-999999999-1.tmp");
  leftovers.push_back(home_.SettingsDirectory() / "orin.chk.orin-999999999-1.tmp");
  leftovers.push_back(home_.Store().data_directory / "K20200107.LOG.orin-999999999-1.tmp");
  for (const auto& leftover : leftovers) PutFile(leftover, "half");
  PutFile(home_.System() / "ORIN.SWK", "");
  leftovers.push_back(home_.System() / "ORIN.SWK.tmp");
  PutFile(leftovers.back(), "half");
  PutFile(home_.System() / "mine.tmp", "kept");
  home_.Screen().Questions().WillAnswer(base::Answer::kNo);
  home_.Start();
  for (const auto& leftover : leftovers) {
    EXPECT_FALSE(std::filesystem::exists(leftover)) << leftover;
  }
  EXPECT_TRUE(std::filesystem::exists(home_.System() / "mine.tmp"));
}

TEST_F(MultipleStart, RecoveryMakesAMissingIndexAnewAndReadsIt) {
  LeaveMarkers();
  std::filesystem::remove(home_.System() / "orin.ind");
  home_.Screen().Questions().WillAnswer(base::Answer::kNo).WillAnswer(base::Answer::kNo);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(),
              ElementsAre(kMissingIndex, kQuestion, HasSubstr("作り直しました。")));
  EXPECT_TRUE(std::filesystem::exists(home_.System() / "orin.ind"));
  EXPECT_THAT(state->name_index, ::testing::SizeIs(3));
  EXPECT_THAT(home_.Screen().Statuses(),
              ElementsAre(kSystemStatus, kTradeStatus, kSystemStatus, kRankingStatus));
}

TEST_F(MultipleStart, RecoveryBesideALiveWriterIsASentence) {
  LeaveMarkers();
  const auto writer =
      store::StockStore::Open(home_.Store(), {store::Access::kWrite, {}}, base::NativeFileSystem());
  ASSERT_TRUE(writer);
  home_.Screen().Questions().WillAnswer(base::Answer::kNo);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(),
              ElementsAre(kQuestion, HasSubstr("他の処理が株価データを更新中です")));
  EXPECT_TRUE(state->store);
}

TEST_F(MultipleStart, MarkersThatCannotBeWrittenAreASentenceAndNoQuestion) {
  // Its copy fails as well, which matters to nobody before a change.
  PutFile(home_.SettingsDirectory() / "orinsim.ini", "[OrinSimulation]\r\n");
  support::FaultyFileSystem files;
  files.DieAt(1);
  const auto state = home_.Start(files);
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(::testing::Not(HasSubstr("orinsim.ini"))));
  EXPECT_EQ(home_.Screen().Questions().Shown().front().icon, base::Icon::kWarning);
  EXPECT_TRUE(state->store);
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_FALSE(std::filesystem::exists(ProgramMarker()));
}

TEST_F(MultipleStart, StartStoppedAtAnyWriteIsFollowedByAWholeStart) {
  for (int64_t operation = 1;; ++operation) {
    support::FaultyFileSystem files;
    files.DieAt(operation);
    files.LoseOnDeath(support::Loss::kWritesAndNames);
    support::AnsweredScreen first;
    // Of the start that was stopped nothing but the files counts.
    StartUp(home_.Places(), files, first);
    support::AnsweredScreen second;
    if (Bytes(ProgramMarker()) == kInUse || Bytes(UserMarker()) == kInUse) {
      second.Questions().WillAnswer(base::Answer::kNo);
    }
    const auto state = StartUp(home_.Places(), base::NativeFileSystem(), second);
    EXPECT_TRUE(state->store);
    EXPECT_TRUE(second.IsEveryAnswerUsed());
    EXPECT_TRUE(ShutDown(*state));
    EXPECT_FALSE(std::filesystem::exists(ProgramMarker()));
    EXPECT_FALSE(std::filesystem::exists(UserMarker()));
    if (!files.IsDead()) break;
  }
}

}  // namespace
}  // namespace orin::shell
