#include "shell/settings/settings.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "shell/settings/analysis_group.h"
#include "shell/settings/key_table.h"
#include "support/scratch_directory.h"

namespace orin::shell {
namespace {

using base::ProfileFile;

struct BusCase {
  std::string key;
  std::string BusSettings::*member;
  std::string default_value;
};

const std::array kBusCases = {
    BusCase{"update_file", &BusSettings::update_file, "/p\\yahoo\\YahooHtm.txt"},
    BusCase{"csvday_dir", &BusSettings::csvday_dir, "/p\\brand\\"},
    BusCase{"csvweek_dir", &BusSettings::csvweek_dir, "/p\\brand_w\\"},
    BusCase{"datasave_dir", &BusSettings::datasave_dir, "/p\\data\\"},
    BusCase{"systemsave_dir", &BusSettings::systemsave_dir, "/p\\old\\"},
    BusCase{"serial_file", &BusSettings::serial_file, "/p\\patrol\\serial.txt"},
    BusCase{"comp_file", &BusSettings::comp_file, "/p\\patrol\\compare.txt"},
    BusCase{"system_dir", &BusSettings::system_dir, "/p\\"},
    BusCase{"ini_file ", &BusSettings::ini_file, "/s\\orin.ini"},
    BusCase{"picture_file ", &BusSettings::picture_file, "/p\\bmp\\orin.bmp"},
    BusCase{"meisai_file ", &BusSettings::meisai_file, "/s\\orin.trn"},
    BusCase{"random_dir ", &BusSettings::random_dir, "/p\\"},
    BusCase{"daily_random_dir ", &BusSettings::daily_random_dir, "/p\\"},
    BusCase{"ramdisk_dir ", &BusSettings::ramdisk_dir, ""},
};

const SettingsPlaces kPlaces{"/p", "/s/orin.ini"};

TEST(Settings, AnAbsentFileYieldsEveryDefault) {
  const support::ScratchDirectory scratch;
  const auto settings = LoadSettings(SettingsPlaces{scratch.Path(), scratch / "none/orin.ini"});
  ASSERT_TRUE(settings.has_value());
  EXPECT_EQ(settings->bus.serial_file, scratch.Path().string() + "\\patrol\\serial.txt");
  EXPECT_EQ(settings->bus.meisai_file, (scratch / "none").string() + "\\orin.trn");
  EXPECT_TRUE(settings->chart_action.bunkatsu_auto_check);
  EXPECT_EQ(settings->common.analysis_system_first_file, 0);
  EXPECT_EQ(settings->common.analysis_group_file, "orin.chk");
  const BusSettings bus = ReadBus(ProfileFile(), kPlaces);
  for (const BusCase& c : kBusCases) EXPECT_EQ(bus.*c.member, c.default_value) << c.key;
}

TEST(Settings, EveryGroupComesFromTheFile) {
  const support::ScratchDirectory scratch;
  const SettingsPlaces places{"/p", scratch / "my.ini"};
  std::ofstream(places.ini_file) << "[bus]\r\ndatasave_dir=d\r\n[COMMON]\r\n"
                                    "analysissystemfirstfile=3\r\n[chartaction]\r\n"
                                    "bunkatsu_auto_check=0\r\n";
  const auto settings = LoadSettings(places);
  ASSERT_TRUE(settings.has_value());
  EXPECT_EQ(settings->bus.datasave_dir, "d");
  EXPECT_EQ(settings->bus.ini_file, scratch.Path().string() + "\\orin.ini");
  EXPECT_EQ(settings->common.analysis_system_first_file, 3);
  EXPECT_FALSE(settings->chart_action.bunkatsu_auto_check);
  EXPECT_FALSE(LoadSettings(SettingsPlaces{"/p", scratch.Path()}).has_value());
}

TEST(BusSettings, EveryKeyHasItsOwnPlaceAndItsExactName) {
  for (const BusCase& c : kBusCases) {
    const auto profile = ProfileFile::Parse("[Bus]\n" + c.key + "=x\\y\n");
    const BusSettings bus = ReadBus(profile, kPlaces);
    for (const BusCase& other : kBusCases) {
      EXPECT_EQ(bus.*other.member, other.key == c.key ? "x\\y" : other.default_value) << c.key;
    }
  }
}

TEST(BusSettings, WritingTheDefaultsKeepsOneDifferenceAndAllOtherKeys) {
  auto profile = ProfileFile::Parse("[Bus]\r\nunknown_dir=k\r\nsystem_dir=x\r\n[Tax]\r\na=1\r\n");
  WriteBusDefaults(profile, kPlaces);
  std::string expected =
      "[Bus]\r\nunknown_dir=k\r\nsystem_dir=/p\\\r\nupdate_file=html\\StockHtm.txt\r\n";
  for (const BusCase& c : kBusCases) {
    if (c.key == "update_file" || c.key == "system_dir") continue;
    expected += c.key + "=" + c.default_value + "\r\n";
  }
  EXPECT_EQ(profile.Serialize().value(), expected + "[Tax]\r\na=1\r\n");
}

TEST(Settings, WhatIsWrittenIsReadBack) {
  Settings settings;
  int number = 0;
  for (const BusCase& c : kBusCases) settings.bus.*c.member = " 値" + std::to_string(++number);
  settings.chart_action.bunkatsu_auto_check = false;
  settings.common = CommonSettings{12, "群れ\\私の.chk"};
  ProfileFile profile;
  WriteBus(profile, settings.bus);
  WriteChartAction(profile, settings.chart_action);
  WriteCommon(profile, settings.common);
  const auto reread = ProfileFile::Parse(profile.Serialize().value());
  EXPECT_EQ(ReadBus(reread, kPlaces), settings.bus);
  EXPECT_EQ(ReadChartAction(reread), settings.chart_action);
  EXPECT_EQ(ReadCommon(reread), settings.common);
}

TEST(Settings, ANumberThatIsNoneGivesTheDefault) {
  for (const char* text : {"", "x", "1x", "99999999999", "1e3"}) {
    ProfileFile profile;
    profile.Set("Common", "AnalysisSystemFirstFile", text);
    EXPECT_EQ(ReadCommon(profile).analysis_system_first_file, 0) << text;
  }
  for (const char* text : {"junk", "99999999999"}) {
    int32_t value = 0;
    AssignText(value, text, "25");
    EXPECT_EQ(value, 25) << text;
  }
}

TEST(Settings, BoxesAreTickedByOneTrueAndOtherNumbers) {
  for (const char* text : {"1", "True", "TRUE", "true ", "-1", "2", "0.5", "65535"}) {
    EXPECT_TRUE(IsTicked(text)) << text;
  }
  for (const char* text : {"", "0", "False", "-0", "0.0", "on", "１"}) {
    EXPECT_FALSE(IsTicked(text)) << text;
  }
}

TEST(Settings, PathsBecomeNativeFromTheProgramDirectory) {
  EXPECT_EQ(NativeSetting(kPlaces, "patrol\\serial.txt").string(), "/p/patrol/serial.txt");
  EXPECT_EQ(NativeSetting(kPlaces, "/s\\orin.trn").string(), "/s/orin.trn");
  EXPECT_EQ(NativeSetting(kPlaces, "/p\\data\\").string(), "/p/data");
  EXPECT_EQ(ReadBus(ProfileFile(), SettingsPlaces{"/", "/orin.ini"}).datasave_dir, "\\data\\");
  EXPECT_EQ(NativeSetting(SettingsPlaces{"/", "/orin.ini"}, "\\data\\").string(), "/data");
}

TEST(AnalysisGroup, SevenEntriesAreReadFromThreeSections) {
  EXPECT_EQ(ReadAnalysisGroup(ProfileFile()), AnalysisGroup());
  const auto profile = ProfileFile::Parse(
      "[Title]\nchecktitle1=株\nchecktitle7=七\nchecktitle8=八\n[File]\ncheckfile1=a\\b.txt\n"
      "[Check]\ncheck1=True\ncheck2=-1\ncheck3=0\ncheck4=\n");
  const AnalysisGroup group = ReadAnalysisGroup(profile);
  EXPECT_FALSE(LoadAnalysisGroup("/none/orin.chk").has_value());
  EXPECT_EQ(group.entries[0], (AnalysisGroupEntry{"株", "a\\b.txt", "True"}));
  EXPECT_EQ(group.entries[6].title, "七");
  const std::array ticked = {true, true, false, false, false, false, false};
  for (size_t i = 0; i < ticked.size(); ++i) EXPECT_EQ(group.entries[i].IsTicked(), ticked[i]) << i;
}

TEST(AnalysisGroup, ChecksAreWrittenAsOneOrNought) {
  AnalysisGroup group;
  group.entries[0] = AnalysisGroupEntry{"株", "a.txt", "True"};
  group.entries[2] = AnalysisGroupEntry{"ＰＤＩ ", "", "0"};
  ProfileFile profile = ProfileFile::Parse("[Check]\ncheck8=x\n");
  WriteAnalysisGroup(profile, group);
  const auto reread = ProfileFile::Parse(profile.Serialize().value());
  EXPECT_EQ(reread.Get("Check", "check1", ""), "1");
  EXPECT_EQ(reread.Get("Check", "check7", ""), "0");
  EXPECT_EQ(reread.Get("Check", "check8", ""), "x");
  EXPECT_EQ(reread.Get("File", "checkfile1", ""), "a.txt");
  const support::ScratchDirectory scratch;
  ASSERT_TRUE(profile.Save(base::NativeFileSystem(), scratch / "orin.chk"));
  EXPECT_EQ(LoadAnalysisGroup(scratch / "orin.chk")->entries[2].title, "ＰＤＩ ");
}

}  // namespace
}  // namespace orin::shell
