#include "settings/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "settings/test_places.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"

namespace orin::settings {
namespace {

using base::ProfileFile;
using support::Bytes;
using support::PutFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(Settings, AnAbsentFileYieldsDefaultsFromBothDirectories) {
  const support::ScratchDirectory scratch;
  const auto settings = LoadSettings(SettingsPlaces{scratch.Path(), scratch / "none/orin.ini"});
  ASSERT_TRUE(settings.has_value());
  EXPECT_EQ(settings->bus.stock_list_file, scratch.Path().string() + "\\patrol\\serial.txt");
  EXPECT_EQ(settings->bus.trade_journal_file, (scratch / "none").string() + "\\orin.trn");
  EXPECT_TRUE(settings->chart_action.adjusts_for_splits);
  EXPECT_EQ(settings->chart_display.day.averages[1].period, 75);
  EXPECT_EQ(settings->orin_simulation.start_date, base::Date::FromYmd(1900, 1, 1));
  EXPECT_EQ(ReadBus(ProfileFile(), SettingsPlaces{"/", "/orin.ini"}).price_directory, "\\data\\");
}

TEST(Settings, EveryGroupComesFromItsFile) {
  const support::ScratchDirectory scratch;
  const SettingsPlaces places{scratch / "p", scratch / "my.ini"};
  PutFile(places.settings_file,
          "[bus]\r\ndatasave_dir=d\r\n[COMMON]\r\nanalysissystemfirstfile=3\r\n"
          "AnalysisGroupFile=lists\\my.chk\r\n[chartaction]\r\nbunkatsu_auto_check=0\r\n");
  std::filesystem::create_directories(scratch / "p/lists");
  PutFile(scratch / "p/orinsim.ini", "[OrinSimulation]\r\nsim_start_date=2010/2/3\r\n");
  PutFile(scratch / "p/lists/my.chk", "[Title]\r\nchecktitle2=b\r\n");
  const auto settings = LoadSettings(places);
  ASSERT_TRUE(settings.has_value());
  EXPECT_EQ(settings->bus.price_directory, "d");
  EXPECT_EQ(settings->bus.settings_file, scratch.Path().string() + "\\orin.ini");
  EXPECT_EQ(settings->common.first_price_file, 3);
  EXPECT_FALSE(settings->chart_action.adjusts_for_splits);
  EXPECT_EQ(settings->orin_simulation.start_date.ToText(), "2010/02/03");
  EXPECT_EQ(settings->analysis_group.entries[1].title, "b");
}

TEST(Settings, SimulationFileBesideAnotherSettingsFileIsUsedAndCopiedOnce) {
  const support::ScratchDirectory scratch;
  const SettingsPlaces places{scratch / "program", scratch / "user/orin.ini"};
  std::filesystem::create_directories(places.program_directory);
  std::filesystem::create_directories(scratch / "user");
  const std::string text = "[OrinSimulation]\r\nsim_start_date=2010/2/3\r\nmine=1\r\n";
  PutFile(scratch / "user/orinsim.ini", text);
  const auto start = [&] { return LoadSettings(places)->orin_simulation.start_date.ToText(); };
  EXPECT_EQ(start(), "2010/02/03");

  // Without a copy a change goes to the program directory, with all that the file held.
  auto& files = base::NativeFileSystem();
  const Settings before = *LoadSettings(places);
  Settings after = before;
  after.orin_simulation.start_date = *base::Date::FromYmd(2011, 4, 5);
  ASSERT_TRUE(SaveSettings(files, places, before, after));
  EXPECT_THAT(Bytes(SimulationFile(places)), HasSubstr("mine=1"));
  EXPECT_EQ(start(), "2011/04/05");
  EXPECT_EQ(Bytes(scratch / "user/orinsim.ini"), text);
  EXPECT_EQ(*AdoptSimulationFile(files, places), std::nullopt);

  std::filesystem::remove(SimulationFile(places));
  const auto adopted = AdoptSimulationFile(files, places);
  ASSERT_TRUE(adopted && *adopted);
  EXPECT_THAT(**adopted, HasSubstr((scratch / "user/orinsim.ini").string()));
  EXPECT_EQ(Bytes(SimulationFile(places)), text);
  EXPECT_EQ(*AdoptSimulationFile(files, places), std::nullopt);
  std::filesystem::remove(scratch / "user/orinsim.ini");
  EXPECT_EQ(start(), "2010/02/03");
}

TEST(Settings, FilesThatCannotBeReadAreNamedAndHaveDefaults) {
  const support::ScratchDirectory scratch;
  const SettingsPlaces places{scratch.Path(), scratch / "orin.ini"};
  for (const char* name : {"orin.ini", "orinsim.ini", "orin.chk"}) {
    std::filesystem::create_directory(scratch / name);
  }
  const LoadedSettings loaded = LoadWhatIsReadable(places);
  EXPECT_THAT(loaded.problems,
              ElementsAre(HasSubstr("orin.ini"), HasSubstr("orinsim.ini"), HasSubstr("orin.chk")));
  EXPECT_EQ(loaded.settings, LoadWhatIsReadable({scratch.Path(), scratch / "orin.ini"}).settings);
  EXPECT_EQ(loaded.settings.window.font_percent, 100);
  EXPECT_FALSE(LoadSettings(places).has_value());
  std::filesystem::remove(scratch / "orin.ini");
  EXPECT_TRUE(LoadSettings(places).has_value()) << "the further files are no reason to stop";
}

TEST(Settings, WritingTheBusDefaultsKeepsOneDifferenceAndAllOtherKeys) {
  auto profile = ProfileFile::Parse("[Bus]\r\nunknown_dir=k\r\nsystem_dir=x\r\n[Tax]\r\na=1\r\n");
  WriteBusDefaults(profile, kPlaces);
  EXPECT_EQ(profile.Serialize().value(),
            "[Bus]\r\nunknown_dir=k\r\nsystem_dir=/p\\\r\nupdate_file=html\\StockHtm.txt\r\n"
            "csvday_dir=/p\\brand\\\r\ncsvweek_dir=/p\\brand_w\\\r\ndatasave_dir=/p\\data\\\r\n"
            "systemsave_dir=/p\\old\\\r\nserial_file=/p\\patrol\\serial.txt\r\n"
            "comp_file=/p\\patrol\\compare.txt\r\nini_file =/s\\orin.ini\r\n"
            "picture_file =/p\\bmp\\orin.bmp\r\nmeisai_file =/s\\orin.trn\r\n"
            "random_dir =/p\\\r\ndaily_random_dir =/p\\\r\nramdisk_dir =\r\n[Tax]\r\na=1\r\n");
}

TEST(Settings, PathsBecomeNativeFromTheProgramDirectory) {
  EXPECT_EQ(NativeSetting(kPlaces, "patrol\\serial.txt").string(), "/p/patrol/serial.txt");
  EXPECT_EQ(NativeSetting(kPlaces, "/s\\orin.trn").string(), "/s/orin.trn");
  EXPECT_EQ(NativeSetting(kPlaces, "/p\\data\\").string(), "/p/data");
  EXPECT_EQ(NativeSetting(SettingsPlaces{"/", "/orin.ini"}, "\\data\\").string(), "/data");
}

TEST(AnalysisGroup, SevenEntriesAreReadFromThreeSections) {
  EXPECT_EQ(ReadAnalysisGroup(ProfileFile()), AnalysisGroup());
  const auto profile = ProfileFile::Parse(
      "[Title]\nchecktitle1=株\nchecktitle7=七\nchecktitle8=八\n[File]\ncheckfile1=a\\b.txt\n"
      "[Check]\ncheck1=True\ncheck2=-1\ncheck3=0\ncheck4=\ncheck5=on\n");
  const AnalysisGroup group = ReadAnalysisGroup(profile);
  EXPECT_FALSE(LoadAnalysisGroup("/none/orin.chk").has_value());
  EXPECT_EQ(group.entries[0], (AnalysisGroupEntry{"株", "a\\b.txt", true}));
  EXPECT_EQ(group.entries[1], (AnalysisGroupEntry{"", "", true}));
  for (size_t i = 2; i < 6; ++i) EXPECT_EQ(group.entries[i], AnalysisGroupEntry()) << i;
  EXPECT_EQ(group.entries[6].title, "七");
}

TEST(AnalysisGroup, ChecksAreWrittenAsOneOrNoughtAndOtherLinesStay) {
  AnalysisGroup group;
  group.entries[0] = AnalysisGroupEntry{"株", "a.txt", true};
  group.entries[2] = AnalysisGroupEntry{"ＰＤＩ ", "", false};
  ProfileFile profile = ProfileFile::Parse("[Check]\ncheck8=x\n");
  WriteAnalysisGroup(profile, group);
  const auto reread = ProfileFile::Parse(profile.Serialize().value());
  EXPECT_EQ(reread.Get("Check", "check1", ""), "1");
  EXPECT_EQ(reread.Get("Check", "check7", ""), "0");
  EXPECT_EQ(reread.Get("Check", "check8", ""), "x");
  EXPECT_EQ(reread.Get("File", "checkfile1", ""), "a.txt");
  EXPECT_EQ(ReadAnalysisGroup(reread), group);
}

TEST(AnalysisGroup, ColumnsAreKeptWithTheGroupBesideWhatElseTheFileHolds) {
  const support::ScratchDirectory scratch;
  const auto file = scratch / "my.chk";
  AnalysisGroup group;
  group.entries[0] = {"株", "a.txt", true};
  group.columns[4] = {"倍", "終値(0) * 2"};
  ASSERT_TRUE(SaveAnalysisGroup(base::NativeFileSystem(), file, group)) << "a missing file is made";
  EXPECT_EQ(*LoadAnalysisGroup(file), group);
  PutFile(file, "; memo\r\n[Mine]\r\nkey=1\r\n[Column]\r\ncolumn1=1\r\n");
  ASSERT_TRUE(SaveAnalysisGroup(base::NativeFileSystem(), file, group));
  EXPECT_EQ(*LoadAnalysisGroup(file), group);
  EXPECT_THAT(*base::ReadFile(file), HasSubstr("; memo\r\n[Mine]\r\nkey=1"));
}

}  // namespace
}  // namespace orin::settings
