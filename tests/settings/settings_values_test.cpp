#include <array>
#include <gtest/gtest.h>
#include <string>

#include "base/profile_file.h"
#include "settings/settings_catalogue.h"

namespace orin::settings {
namespace {

const SettingsPlaces kPlaces{"/p", "/s/orin.ini"};

const SettingEntry& Entry(std::string_view key) {
  for (const SettingsGroup& group : SettingsCatalogue()) {
    for (const SettingEntry& entry : group.entries) {
      if (entry.key == key) return entry;
    }
  }
  ADD_FAILURE() << key;
  return SettingsCatalogue().front().entries.front();
}

/// What the program makes of a text that stands in orin.ini.
std::string Read(std::string_view key, std::string_view text) {
  base::ProfileFile profile;
  profile.Set(Entry(key).section, key, text);
  Settings settings;
  settings.tax = ReadTax(profile);
  settings.chart_display = ReadChartDisplay(profile);
  settings.chart_action = ReadChartAction(profile);
  settings.common = ReadCommon(profile);
  settings.orin_simulation = ReadOrinSimulation(profile);
  return Entry(key).text(settings);
}

struct ReadCase {
  const char* key;
  const char* text;
  const char* value;
};

TEST(SettingValues, AreReadFromTextsThatMeanThem) {
  constexpr std::array kCases = {
      ReadCase{"rsi1_number", " 1000 ", "1000"},
      ReadCase{"rsi1_number", "9.5", "10"},
      ReadCase{"syouhi_zeiritu", "10.50", "10.5"},
      ReadCase{"syouhi_zeiritu", "100", "100"},
      ReadCase{"sarafinitial", "0.02499", "0.025"},
      ReadCase{"rsi1_color", "16777215", "16777215"},
      ReadCase{"rsi1_color", "0", "0"},
      ReadCase{"originalmaxminid2", "3", "3"},
      ReadCase{"sim_start_date", "2010/1/9", "2010/01/09"},
      ReadCase{"KabugetReserveTime", "9:05", "09:05:00"},
      ReadCase{"correlation_meigaracode", "", ""},
      ReadCase{"correlation_meigaracode", " AAPL", "AAPL"},
      ReadCase{"original5_analysis", "", ""},
      ReadCase{"TranslateDataFile", "a\tb", "a\tb"},
  };
  for (const ReadCase& c : kCases) EXPECT_EQ(Read(c.key, c.text), c.value) << c.key << c.text;
}

TEST(SettingValues, TextsThatMeanNothingOrTooMuchGiveTheDefault) {
  constexpr std::array kCases = {
      ReadCase{"rsi1_number", "", "14"},
      ReadCase{"rsi1_number", "x", "14"},
      ReadCase{"rsi1_number", "1e3", "14"},
      ReadCase{"rsi1_number", "0", "14"},
      ReadCase{"rsi1_number", "1001", "14"},
      ReadCase{"rsi1_number", "99999999999", "14"},
      ReadCase{"rsi1_check", "", "1"},
      ReadCase{"rsi1_check", "on", "1"},
      ReadCase{"original2_check", "yes", "0"},
      ReadCase{"syouhi_zeiritu", "-0.0001", "5"},
      ReadCase{"syouhi_zeiritu", "5%", "5"},
      ReadCase{"rsi1_color", "16777216", "65280"},
      ReadCase{"rsi1_color", "-1", "65280"},
      ReadCase{"rsi1_color", "#00ff00", "65280"},
      ReadCase{"originalmaxminid", "4", "2"},
      ReadCase{"sim_start_date", "2010/02/30", "1900/01/01"},
      ReadCase{"sim_end_date", "20100101", "2100/01/01"},
      ReadCase{"KabugetReserveTime", "24:00:00", "11:00:00"},
      ReadCase{"KabugetReserveTime", "1:2:3:4", "11:00:00"},
      ReadCase{"KabugetReserveTime", "-1:00", "11:00:00"},
      ReadCase{"correlation_meigaracode", "a,b", "^DJI"},
      ReadCase{"correlation_meigaracode", "NINELONGX", "^DJI"},
  };
  for (const ReadCase& c : kCases) EXPECT_EQ(Read(c.key, c.text), c.value) << c.key << c.text;
}

TEST(SettingValues, FirstPriceFileThatCannotBeIsKeptForWhoeverUsesIt) {
  for (const char* text : {"1000", "-1", "999"}) {
    EXPECT_EQ(Read("AnalysisSystemFirstFile", text), text);
  }
  for (const char* text : {"2147483648", "99999999999999999999999999", "3000000000.5"}) {
    EXPECT_EQ(Read("AnalysisSystemFirstFile", text), "2147483647") << text;
    EXPECT_EQ(Read("AnalysisSystemFirstFile", "-" + std::string(text)), "-2147483648") << text;
  }
  for (const char* text : {"x", "", "-", ".", "1.2.3", "3000000000x"}) {
    EXPECT_EQ(Read("AnalysisSystemFirstFile", text), "0") << text;
  }
}

TEST(SettingValues, BoxesAreTickedByOneTrueAndOtherNumbers) {
  for (const char* text : {"1", "True", "TRUE", "true ", "-1", "2", "0.5", "65535"}) {
    EXPECT_EQ(Read("original2_check", text), "1") << text;
  }
  for (const char* text : {"0", "False", "false", "-0", "0.0"}) {
    EXPECT_EQ(Read("rsi1_check", text), "0") << text;
  }
}

TEST(SettingInput, FullWidthNumbersAreNumbers) {
  Settings settings;
  EXPECT_TRUE(Entry("rsi1_number").assign(settings, "　２５"));
  EXPECT_TRUE(Entry("rsi2_number").assign(settings, " ２６ "));
  EXPECT_TRUE(Entry("RankErrDefault").assign(settings, "－５"));
  EXPECT_TRUE(Entry("sarafmax").assign(settings, "０．２５"));
  EXPECT_TRUE(Entry("sim_start_date").assign(settings, "２０２０／１／３１"));
  EXPECT_TRUE(Entry("KabugetReserveTime").assign(settings, "９：３０"));
  EXPECT_TRUE(Entry("key_second_Text").assign(settings, "＾ＧＳＰＣ"));
  EXPECT_TRUE(Entry("original1_koumoku").assign(settings, "２５"));
  EXPECT_EQ(Entry("rsi1_number").text(settings), "25");
  EXPECT_EQ(Entry("rsi2_number").text(settings), "26");
  EXPECT_EQ(Entry("RankErrDefault").text(settings), "-5");
  EXPECT_EQ(Entry("sarafmax").text(settings), "0.25");
  EXPECT_EQ(Entry("sim_start_date").text(settings), "2020/01/31");
  EXPECT_EQ(Entry("KabugetReserveTime").text(settings), "09:30:00");
  EXPECT_EQ(Entry("key_second_Text").text(settings), "^GSPC");
  EXPECT_EQ(Entry("original1_koumoku").text(settings), "２５");
}

TEST(SettingInput, RefusalsAreOneSentenceAndChangeNothing) {
  constexpr std::array kCases = {
      ReadCase{"rsi1_number", "0", "「ＲＳＩ１の期間」は１～１０００の整数で指定してください。"},
      ReadCase{"rsi1_number", "2.5", "「ＲＳＩ１の期間」は１～１０００の整数で指定してください。"},
      ReadCase{"rsi1_number", "", "「ＲＳＩ１の期間」は１～１０００の整数で指定してください。"},
      ReadCase{"syouhi_zeiritu", "100.5",
               "「消費税率」は０～１００の数（小数は４桁まで）で指定してください。"},
      ReadCase{"syouhi_zeiritu", "1.00001",
               "「消費税率」は０～１００の数（小数は４桁まで）で指定してください。"},
      ReadCase{"sarafmax", "0",
               "「加速因子の最大値」は０．０００１～１の数（小数は４桁まで）で指定してください。"},
      ReadCase{"originalmaxminid", "4",
               "「目盛」は選択肢の番号（０、１、２、３）で指定してください。"},
      ReadCase{"rsi1_check", "yes",
               "「ＲＳＩ１の表示」は１（オン）か０（オフ）で指定してください。"},
      ReadCase{"rsi1_color", "red",
               "「ＲＳＩ１の色」は色の番号（０～１６７７７２１５の整数）で指定してください。"},
      ReadCase{"sim_start_date", "2010/02/30",
               "「開始日」は「2020/01/31」の形の日付で指定してください。"},
      ReadCase{"KabugetReserveTime", "25:00",
               "「予約の時刻」は「09:30:00」の形の時刻で指定してください。"},
      ReadCase{"key_second_Text", "株",
               "「キーで表示する銘柄」は８文字までの銘柄コードで指定してください。"},
      ReadCase{"StockWebSite", "a\nb",
               "「企業情報のアドレス」には改行などの制御文字を指定できません。"},
  };
  const Settings defaults = LoadWhatIsReadable(kPlaces).settings;
  for (const ReadCase& c : kCases) {
    Settings settings = defaults;
    const auto assigned = Entry(c.key).assign(settings, c.text);
    ASSERT_FALSE(assigned) << c.key << c.text;
    EXPECT_EQ(assigned.error().message, c.value);
    EXPECT_EQ(settings, defaults) << c.key << c.text;
  }
}

TEST(SettingInput, CharactersThatTheFilesLackAreNamed) {
  Settings settings;
  const auto assigned = Entry("original_title").assign(settings, "😀");
  ASSERT_FALSE(assigned);
  EXPECT_NE(assigned.error().message.find("「題名」"), std::string::npos);
  EXPECT_NE(assigned.error().message.find("U+1F600"), std::string::npos);
  // What a file in UTF-8 has brought in may stay.
  settings.chart_display.original.charts[0].title = "😀";
  EXPECT_TRUE(Entry("original_title").assign(settings, "😀"));
}

}  // namespace
}  // namespace orin::settings
