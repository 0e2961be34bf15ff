#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "program_home.h"
#include "support/faulty_file_system.h"

namespace orin::shell {
namespace {

using support::Bytes;
using support::PutFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A store where the settings name none.
void PutStoreIntoProgramDirectory(const ProgramHome& home) {
  std::filesystem::copy(home.System(), home.Program());
  std::filesystem::copy(home.Store().data_directory, home.Program() / "data");
}

TEST(StartUpSettings, DirectoryInPlaceOfTheSettingsIsOneWarningAndStays) {
  ProgramHome home;
  PutStoreIntoProgramDirectory(home);
  std::filesystem::remove(home.Places().settings_file);
  std::filesystem::create_directory(home.Places().settings_file);
  const auto state = home.Start();
  ASSERT_THAT(home.Screen().Texts(), ElementsAre(HasSubstr("orin.ini")));
  EXPECT_EQ(home.Screen().Questions().Shown().front().icon, base::Icon::kWarning);
  EXPECT_TRUE(state->store);
  EXPECT_EQ(state->settings.common.analysis_group_file, "orin.chk");
  state->settings.bus.comparison_file = "other.txt";
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_TRUE(std::filesystem::is_directory(home.Places().settings_file));
  EXPECT_THAT(home.Log(), HasSubstr("ミルテエラーＮＯ：30\r\n"));
}

TEST(StartUpSettings, SettingsReadableAgainAreNotOverwrittenWithDefaults) {
  ProgramHome home;
  PutStoreIntoProgramDirectory(home);
  const std::string written = Bytes(home.Places().settings_file);
  std::filesystem::remove(home.Places().settings_file);
  std::filesystem::create_directory(home.Places().settings_file);
  const auto state = home.Start();
  std::filesystem::remove(home.Places().settings_file);
  PutFile(home.Places().settings_file, written);
  state->settings.bus.comparison_file = "other.txt";
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_EQ(Bytes(home.Places().settings_file), written);
}

TEST(StartUpSettings, TenMegabytesOfGarbageGiveDefaultsAndStayAsTheyAre) {
  ProgramHome home;
  PutStoreIntoProgramDirectory(home);
  std::mt19937 random(7);
  std::string garbage(size_t{10} << 20, '\0');
  for (char& byte : garbage) byte = static_cast<char>(random());
  PutFile(home.Places().settings_file, garbage);
  const auto state = home.Start();
  EXPECT_THAT(home.Screen().Texts(), IsEmpty());
  EXPECT_TRUE(state->store);
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_EQ(Bytes(home.Places().settings_file), garbage);
}

TEST(StartUpSettings, ShutDownWritesWhatChangedAndNothingElse) {
  ProgramHome home;
  home.WriteSettings("; a comment\r\n");
  const std::string before = Bytes(home.Places().settings_file);
  const auto state = home.Start();
  ASSERT_TRUE(ShutDown(*state));
  EXPECT_EQ(Bytes(home.Places().settings_file), before);
  state->settings.bus.comparison_file = "other.txt";
  ASSERT_TRUE(ShutDown(*state));
  EXPECT_THAT(Bytes(home.Places().settings_file), HasSubstr("; a comment\r\n"));
  const auto saved = settings::LoadSettings(home.Places());
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->bus.comparison_file, "other.txt");
  EXPECT_EQ(*saved, state->settings);
}

TEST(StartUpSettings, SettingsThatCannotBeSavedAreToldAndTheMarkersGo) {
  ProgramHome home;
  support::FaultyFileSystem files;
  const auto state = home.Start(files);
  state->settings.bus.comparison_file = "other.txt";
  files.LimitGrowth(0);
  const base::Status ended = ShutDown(*state);
  ASSERT_FALSE(ended);
  EXPECT_THAT(ended.error().message, HasSubstr("orin.ini"));
  EXPECT_FALSE(std::filesystem::exists(home.Program() / "orin.act"));
  EXPECT_FALSE(std::filesystem::exists(home.SettingsDirectory() / "orinuser.act"));
  EXPECT_NE(state->settings, state->saved_settings);
}

TEST(StartUpSettings, SimulationFileBesideTheSettingsIsCopiedAndToldOnce) {
  ProgramHome home;
  PutFile(home.SettingsDirectory() / "orinsim.ini", "[OrinSimulation]\r\nsim_start_date=2010/2/3");
  const auto state = home.Start();
  EXPECT_EQ(state->settings.orin_simulation.start_date.ToText(), "2010/02/03");
  ASSERT_THAT(home.Screen().Texts(), SizeIs(1));
  EXPECT_EQ(home.Screen().Questions().Shown()[0].icon, base::Icon::kInformation);
  EXPECT_TRUE(ShutDown(*state));
  home.Start();
  EXPECT_THAT(home.Screen().Texts(), SizeIs(1));
}

TEST(StartUpSettings, SimulationFileThatCannotBeCopiedIsUsedWhereItIs) {
  ProgramHome home;
  PutFile(home.SettingsDirectory() / "orinsim.ini", "[OrinSimulation]\r\nsim_start_date=2010/2/3");
  support::FaultyFileSystem files;
  files.LimitGrowth(4);  // enough for the two run markers
  const auto state = home.Start(files);
  EXPECT_EQ(state->settings.orin_simulation.start_date.ToText(), "2010/02/03");
  ASSERT_THAT(home.Screen().Texts(), SizeIs(1));
  EXPECT_THAT(home.Screen().Texts()[0], HasSubstr("orinsim.ini」のものを使います。"));
}

}  // namespace
}  // namespace orin::shell
