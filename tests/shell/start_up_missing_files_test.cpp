#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program_home.h"

namespace orin::shell {
namespace {

using support::PutFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MissingFiles : public ::testing::Test {
 protected:
  /// Settings that name a directory without a store.
  void NameWrongPlace() { home_.WriteSettings({home_ / "nowhere", home_ / "nowhere"}); }
  bool CorrectPlace(settings::Settings& settings) {
    settings.bus.system_directory = home_.Store().system_directory.string();
    settings.bus.price_directory = home_.Store().data_directory.string();
    return true;
  }

  ProgramHome home_;
};

TEST_F(MissingFiles, WithoutMasterNoGoesOnWithoutAStore) {
  NameWrongPlace();
  home_.Screen().Questions().WillAnswer(base::Answer::kNo);
  const auto state = home_.Start();
  EXPECT_FALSE(state->store);
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kMissingMaster));
  EXPECT_EQ(home_.Screen().Questions().Shown().front().caption, "ミルテ");
  EXPECT_THAT(home_.Screen().Statuses(), ElementsAre(kSystemStatus, kTradeStatus));
  EXPECT_THAT(state->system_files.fees, SizeIs(1));
}

TEST_F(MissingFiles, WithoutMasterPathsAreCorrectedAndTriedAgain) {
  NameWrongPlace();
  home_.Screen().Questions().WillAnswer(base::Answer::kYes).WillAnswer(base::Answer::kYes);
  home_.Screen()
      .WillEditPaths([](settings::Settings& settings) {
        settings.bus.system_directory += "-still-wrong";
        return true;
      })
      .WillEditPaths([this](settings::Settings& settings) { return CorrectPlace(settings); });
  const auto state = home_.Start();
  ASSERT_TRUE(state->store);
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kMissingMaster, kMissingMaster));
  EXPECT_EQ(state->saved_settings, state->settings);
  EXPECT_TRUE(home_.Screen().IsEveryAnswerUsed());
}

TEST_F(MissingFiles, PathsGivenUpAreAskedForOnce) {
  NameWrongPlace();
  home_.Screen().Questions().WillAnswer(base::Answer::kYes);
  home_.Screen().WillEditPaths([](settings::Settings&) { return false; });
  EXPECT_FALSE(home_.Start()->store);
  EXPECT_THAT(home_.Screen().Texts(), SizeIs(1));
}

TEST_F(MissingFiles, WithoutIndexNoGoesOnWithOneFromTheMaster) {
  std::filesystem::remove(home_.System() / "orin.ind");
  home_.Screen().Questions().WillAnswer(base::Answer::kNo);
  const auto state = home_.Start();
  ASSERT_TRUE(state->store);
  EXPECT_THAT(state->name_index, SizeIs(3));
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kMissingIndex));
  EXPECT_FALSE(std::filesystem::exists(home_.System() / "orin.ind"));
  // The user has said so; an update asks no second time.
  EXPECT_TRUE(LoadStore(*state, home_.Screen()));
  EXPECT_THAT(home_.Screen().Texts(), SizeIs(1));
  EXPECT_THAT(state->name_index, SizeIs(3));
}

TEST_F(MissingFiles, WithoutIndexPathsAreCorrected) {
  support::StoreBuilder other("other");
  other.Stock("MSFT");
  home_.WriteSettings(other.Build());
  std::filesystem::remove(other.Location().system_directory / "orin.ind");
  home_.Screen().Questions().WillAnswer(base::Answer::kYes);
  home_.Screen().WillEditPaths(
      [this](settings::Settings& settings) { return CorrectPlace(settings); });
  const auto state = home_.Start();
  ASSERT_TRUE(state->store);
  EXPECT_EQ(state->store->Master().Stocks().size(), 3U);
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(kMissingIndex));
}

TEST_F(MissingFiles, SplitListIsMadeEmptyAndIsNoChangeOfTheStore) {
  const auto path = home_.Store().system_directory / "株式分割.txt";
  std::filesystem::remove(path);
  const auto state = home_.Start();
  EXPECT_THAT(home_.Screen().Texts(), IsEmpty());
  EXPECT_TRUE(std::filesystem::exists(path));
  ASSERT_TRUE(state->store);
  EXPECT_FALSE(state->store->HasChangedOnDisk());
}

TEST_F(MissingFiles, IndexThatDisagreesIsToldAndReplacedInMemoryAlone) {
  const std::string cut = support::Bytes(home_.System() / "orin.ind").substr(0, 110);
  PutFile(home_.System() / "orin.ind", cut);
  const auto state = home_.Start();
  EXPECT_THAT(state->name_index, SizeIs(3));
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(HasSubstr("orin.ind")));
  EXPECT_EQ(support::Bytes(home_.System() / "orin.ind"), cut);
}

TEST_F(MissingFiles, FirstStartOffersAMarketInsteadOfTheMessage) {
  std::filesystem::remove(home_.Places().settings_file);
  home_.Screen().WillBeOffered([](const ProgramState& state) {
    return store::StockStore::Create(state.StoreLocation(), *state.files).has_value();
  });
  const auto state = home_.Start();
  EXPECT_TRUE(state->store);
  EXPECT_THAT(home_.Screen().Texts(), IsEmpty());
  EXPECT_TRUE(home_.Screen().IsEveryAnswerUsed());
}

TEST_F(MissingFiles, MarketDeclinedOnTheFirstStartIsNoQuestion) {
  std::filesystem::remove(home_.Places().settings_file);
  home_.Screen().WillBeOffered([](const ProgramState&) { return false; });
  EXPECT_FALSE(home_.Start()->store);
  EXPECT_THAT(home_.Screen().Texts(), IsEmpty());
}

TEST_F(MissingFiles, MasterThatIsDamagedIsToldWithoutQuestion) {
  PutFile(home_.System() / "orin.sys", "short");
  EXPECT_FALSE(home_.Start()->store);
  EXPECT_THAT(home_.Screen().Texts(), ElementsAre(HasSubstr("orin.sys")));
  EXPECT_THAT(home_.Log(), HasSubstr("ミルテエラーＮＯ：60\r\n"));
}

}  // namespace
}  // namespace orin::shell
