#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "base/cp932.h"
#include "settings/settings.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"

namespace orin::settings {
namespace {

namespace fs = std::filesystem;
using support::Bytes;
using support::PutFile;
using ::testing::HasSubstr;

class SettingsSaving : public ::testing::Test {
 protected:
  base::Status Save(const Settings& after) {
    return SaveSettings(base::NativeFileSystem(), places_, before_, after);
  }
  /// Reads the settings as they now stand and gives a copy to change.
  Settings Load() { return before_ = LoadWhatIsReadable(places_).settings; }

  support::ScratchDirectory scratch_;
  SettingsPlaces places_{scratch_.Path(), scratch_ / "orin.ini"};
  Settings before_;
};

TEST_F(SettingsSaving, WithoutAChangeTouchesNoFile) {
  EXPECT_TRUE(Save(Load()));
  EXPECT_TRUE(fs::is_empty(scratch_.Path()));
  fs::create_directory(places_.settings_file);
  EXPECT_TRUE(Save(Load())) << "nothing to write, so nothing can fail";
}

TEST_F(SettingsSaving, WritesChangedGroupsAloneAndKeepsUnknownLines) {
  PutFile(places_.settings_file, "; mine\n[Tax]\nsyouhi_zeiritu= 8\nmy_zeiritu=1\n[Mine]\nx=y\n");
  Settings after = Load();
  after.window.theme = 2;
  ASSERT_TRUE(Save(after));
  EXPECT_EQ(Bytes(places_.settings_file),
            "; mine\n[Tax]\nsyouhi_zeiritu= 8\nmy_zeiritu=1\n[Mine]\nx=y\n"
            "[Window]\nTheme=2\nFontPercent=100\nFirstListing=0\n");
  EXPECT_FALSE(fs::exists(scratch_ / "orinsim.ini"));
  EXPECT_FALSE(fs::exists(scratch_ / "orin.chk"));
}

TEST_F(SettingsSaving, KeepsWhatAnotherInstanceHasChangedElsewhere) {
  Settings after = Load();
  PutFile(places_.settings_file, "[Window]\nTheme=1\n[Tax]\nsyouhi_zeiritu=9\n");
  after.tax.consumption_tax = base::Currency::FromInt(10);
  ASSERT_TRUE(Save(after));
  const Settings now = Load();
  EXPECT_EQ(now.window.theme, 1);
  EXPECT_EQ(now.tax.consumption_tax, base::Currency::FromInt(10));
}

TEST_F(SettingsSaving, ExpressionsKeepTheirExactSpacingInTheFile) {
  Settings after = Load();
  after.orin_simulation.option = 1;
  after.chart_display.kagi.rate = 8;
  ASSERT_TRUE(Save(after));
  const std::string simulation = base::DecodeCp932(Bytes(scratch_ / "orinsim.ini"));
  EXPECT_THAT(simulation, HasSubstr("sim_buy_analysis=\"移動平均(66,-1) >= 移動平均(22,-1) And  "
                                    "移動平均(66,0) <= 移動平均(22,0) \"\r\n"));
  EXPECT_THAT(base::DecodeCp932(Bytes(places_.settings_file)),
              HasSubstr("original5_analysis=\"ＰＤＩ(14,0) \"\r\n"));
  EXPECT_EQ(Load(), after);
}

TEST_F(SettingsSaving, TheGroupFileIsTheOneTheSettingNames) {
  Settings after = Load();
  after.analysis_group.entries[0].title = "株";
  after.common.analysis_group_file = "my.chk";
  ASSERT_TRUE(Save(after));
  EXPECT_FALSE(fs::exists(scratch_ / "orin.chk"));
  EXPECT_EQ(Load(), after);
  after.common.analysis_group_file = "";
  after.analysis_group.entries[0].title = "債券";
  const auto saved = Save(after);
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error().message, HasSubstr("AnalysisGroupFile"));
  EXPECT_EQ(Load().common.analysis_group_file, "") << "the other files are saved all the same";
}

TEST_F(SettingsSaving, AFileThatCannotBeReadIsLeftAlone) {
  Settings after = Load();
  fs::create_directory(places_.settings_file);
  after.window.theme = 2;
  after.orin_simulation.option = 1;
  const auto saved = Save(after);
  ASSERT_FALSE(saved);
  EXPECT_THAT(saved.error().message, HasSubstr("orin.ini"));
  EXPECT_TRUE(fs::is_directory(places_.settings_file));
  EXPECT_EQ(Load().orin_simulation.option, 1);
}

TEST_F(SettingsSaving, RubbishIsNotLost) {
  std::mt19937 random(3);
  std::string rubbish(size_t{10} << 20, '\0');
  for (char& byte : rubbish) byte = static_cast<char>(random());
  rubbish += '\n';
  PutFile(places_.settings_file, rubbish);
  Settings after = Load();
  after.window.theme = 2;
  ASSERT_TRUE(Save(after));
  const std::string now = Bytes(places_.settings_file);
  EXPECT_TRUE(now.starts_with(rubbish));
  EXPECT_THAT(now.substr(rubbish.size()), HasSubstr("[Window]\nTheme=2\n"));
}

TEST_F(SettingsSaving, ANewFileIsItsOwnersAloneForItMayHoldAPassword) {
  constexpr auto kOwner = fs::perms::owner_read | fs::perms::owner_write;
  Settings after = Load();
  after.common.daiwa_password = "secret";
  ASSERT_TRUE(Save(after));
  EXPECT_EQ(fs::status(places_.settings_file).permissions(), kOwner);
  fs::permissions(places_.settings_file, kOwner | fs::perms::group_read);
  Load();
  after.common.daiwa_password = "other";
  ASSERT_TRUE(Save(after));
  EXPECT_EQ(fs::status(places_.settings_file).permissions(), kOwner | fs::perms::group_read);
}

TEST_F(SettingsSaving, StoppedAnywhereLeavesEachFileOldOrNew) {
  const Settings old = Load();
  Settings first = old;
  first.window.theme = 1;
  first.orin_simulation.option = 1;
  ASSERT_TRUE(Save(first));
  Settings second = first;
  second.window.theme = 2;
  second.orin_simulation.option = 0;
  for (int64_t n = 1;; ++n) {
    ASSERT_TRUE(SaveSettings(base::NativeFileSystem(), places_, second, first));
    support::FaultyFileSystem files;
    files.DieAt(n);
    const auto saved = SaveSettings(files, places_, first, second);
    EXPECT_EQ(saved.has_value(), !files.IsDead());
    const LoadedSettings now = LoadWhatIsReadable(places_);
    EXPECT_TRUE(now.problems.empty());
    EXPECT_TRUE(now.settings.window == first.window || now.settings.window == second.window) << n;
    if (!files.IsDead()) break;
  }
}

}  // namespace
}  // namespace orin::settings
