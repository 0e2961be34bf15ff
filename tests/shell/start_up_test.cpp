#include "shell/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "program_home.h"
#include "store/ranking_files.h"
#include "support/credit_files.h"
#include "support/faulty_file_system.h"

namespace orin::shell {
namespace {

using support::Bytes;
using support::PutFile;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

void PutRanking(const store::StoreLocation& location, std::string_view date) {
  store::RankingContent content;
  content.date = support::Day(date);
  const auto bytes = store::EncodeRanking(content);
  ASSERT_TRUE(bytes);
  PutFile(location.system_directory / "orinm000.rnk", *bytes);
}

TEST(StartUp, StagesAreToldInTheirOrderWithoutAnyMessage) {
  ProgramHome home;
  home.WriteSettings("ramdisk_dir =" + (home / "ram").string() + "\r\n");
  const auto state = home.Start();
  EXPECT_THAT(home.Screen().Statuses(),
              ElementsAre(kSystemStatus, kTradeStatus, kRankingStatus, kRamStatus));
  EXPECT_THAT(home.Screen().Texts(), IsEmpty());
  EXPECT_EQ(home.Log(), "");
}

TEST(StartUp, EverythingIsInMemoryAfterwards) {
  ProgramHome home;
  const auto state = home.Start();
  ASSERT_TRUE(state->store);
  EXPECT_EQ(state->store->Master().Stocks().size(), 3U);
  EXPECT_THAT(state->name_index, SizeIs(3));
  EXPECT_THAT(state->added.stocks, SizeIs(3));
  EXPECT_EQ(state->store->Master().Stock(state->initial_stock).code, support::Code("^DJI"));
  EXPECT_EQ(state->settings, state->saved_settings);
  EXPECT_TRUE(state->program_marker.IsOwn());
  EXPECT_TRUE(state->user_marker.IsOwn());
}

TEST(StartUp, FirstStockIsShownWhereThereIsNoDowJones) {
  ProgramHome home;
  support::StoreBuilder other("other");
  other.Days(support::Weekdays("2020/01/06", 1)).Stock("MSFT", {support::FlatBar(1)});
  home.WriteSettings(other.Build());
  const auto state = home.Start();
  EXPECT_EQ(state->initial_stock, base::MasterRecord(2));
  EXPECT_THAT(home.Screen().Texts(), IsEmpty());
}

TEST(StartUp, StoreWithoutStocksHasNoInitialStock) {
  ProgramHome home;
  home.WriteSettings(support::StoreBuilder("empty").Build());
  const auto state = home.Start();
  ASSERT_TRUE(state->store);
  EXPECT_TRUE(state->initial_stock.IsNone());
  EXPECT_THAT(home.Screen().Texts(), IsEmpty());
}

TEST(StartUp, MissingNewestRankingIsCopiedAndAPresentOneKept) {
  ProgramHome home;
  PutRanking(home.Store(), "2020/01/07");
  const std::string first = Bytes(home.System() / "orinm000.rnk");
  EXPECT_TRUE(ShutDown(*home.Start()));
  EXPECT_EQ(Bytes(home.System() / "orin.rnk"), first);
  PutRanking(home.Store(), "2020/01/08");
  home.Start();
  EXPECT_EQ(Bytes(home.System() / "orin.rnk"), first);
}

TEST(StartUp, RankingOfAnEarlierVersionIsRejectedWithASentence) {
  ProgramHome home;
  PutFile(home.System() / "orin.rnk", "ORINRNK0" + std::string(184, '\0'));
  const auto state = home.Start();
  EXPECT_THAT(
      home.Screen().Texts(),
      ElementsAre(EndsWith("orin.rnk のランキングファイルは以前のバージョンで作成されたランキ"
                           "ングファイルのため使用できません")));
  EXPECT_THAT(home.Log(), HasSubstr("ミルテエラーＮＯ：110\r\n"));
  EXPECT_TRUE(state->store);
}

TEST(StartUp, ManyProblemsAreOneWarningOfTenLines) {
  ProgramHome home;
  std::string splits = "T:x\r\nD:2100/01/01\r\n銘柄コード,銘柄名,分割倍率,権利付最終日\r\n";
  for (int i = 0; i < 25; ++i) splits += "AAPL,x,zero,2020/01/0" + std::to_string(i) + "\r\n";
  PutFile(home.System() / "株式分割.txt", splits);
  home.Start();
  ASSERT_THAT(home.Screen().Texts(), SizeIs(1));
  const base::Message& warning = home.Screen().Questions().Shown().front();
  EXPECT_EQ(warning.icon, base::Icon::kWarning);
  EXPECT_EQ(std::ranges::count(warning.text, '\n'), 10);
  EXPECT_TRUE(warning.text.starts_with("25件のうち10件を示します。")) << warning.text;
}

TEST(StartUp, PriceCompanionsThatAreDamagedOrMissingAreTold) {
  ProgramHome home;
  PutFile(home.Store().data_directory / "orint002.dat", std::string(3521, '\0'));
  PutFile(home.Store().data_directory / "orint003.dat", std::string(3520, '\0'));
  PutFile(home.Store().data_directory / "orint004.dat", std::string(3520, '\xff'));
  support::NameCreditFiles(home.Store(), 1, 3);
  PutFile(home.Store().data_directory / "orins001.dat", std::string(1600, '\xff'));
  support::WriteCreditFile(home.Store(), 3, support::Weekdays("2020/01/06", 1), {});
  home.Start();
  ASSERT_THAT(home.Screen().Texts(), SizeIs(1));
  const std::string warning = home.Screen().Texts()[0];
  EXPECT_EQ(std::ranges::count(warning, '\n'), 3) << warning;
  for (const char* part : {"orint002.dat」の長さ3521バイト", "orint004.dat」の日付が",
                           "orins001.dat", "orins002.dat」がありません。"}) {
    EXPECT_THAT(warning, HasSubstr(part));
  }
  EXPECT_THAT(home.Log(), HasSubstr("ミルテエラーＮＯ：120\r\n"));
}

TEST(StartUp, GarbageInEveryCompanionIsToldOnceAndTheStoreIsUsed) {
  ProgramHome home;
  std::mt19937 random(11);
  for (const char* name : {"orin.ind", "orin.add", "orin.del", "orin.swk", "orin.fee", "orin.fin",
                           "orin.acc", "企業url.txt", "orin.rnk"}) {
    std::string garbage(3001, '\0');
    for (char& byte : garbage) byte = static_cast<char>(random());
    PutFile(home.System() / name, garbage);
  }
  const auto state = home.Start();
  ASSERT_TRUE(state->store);
  EXPECT_THAT(state->name_index, SizeIs(3));
  EXPECT_THAT(home.Screen().Texts(), SizeIs(2));  // system files, ranking
  for (const char* name : {"orin.ind", "orin.add", "orin.del", "orin.swk", "orin.fee", "orin.fin",
                           "企業url.txt", "orin.rnk"}) {
    EXPECT_THAT(home.Log(), HasSubstr(name));
  }
}

TEST(StartUp, FirstStartMakesItsDirectoriesAndSaysNothing) {
  const support::ScratchDirectory root;
  const settings::SettingsPlaces places = {root / "new" / "program",
                                           root / "new" / "user" / "orin.ini"};
  support::AnsweredScreen screen;
  screen.WillBeOffered([](const ProgramState&) { return false; });
  const auto state = StartUp(places, base::NativeFileSystem(), screen);
  EXPECT_THAT(screen.Texts(), IsEmpty());
  EXPECT_TRUE(state->program_marker.IsOwn());
  EXPECT_TRUE(ShutDown(*state));
  EXPECT_TRUE(std::filesystem::is_empty(places.program_directory));
}

TEST(StartUp, HelpFileIsFoundWhateverItsCase) {
  ProgramHome home;
  EXPECT_FALSE(home.Start()->has_help_file);
  PutFile(home.Program() / "help" / "OrinHelp.hlp", "?");
  home.Screen().Questions().WillAnswer(base::Answer::kYes);
  EXPECT_TRUE(home.Start()->has_help_file);
}

TEST(LoadStore, StoreThatIsDamagedMeanwhileIsToldEveryTime) {
  ProgramHome home;
  const auto state = home.Start();
  PutFile(home.System() / "orin.sys", "short");
  EXPECT_FALSE(LoadStore(*state, home.Screen()));
  EXPECT_FALSE(LoadStore(*state, home.Screen()));
  EXPECT_FALSE(state->store);
  EXPECT_THAT(home.Screen().Texts(), ElementsAre(HasSubstr("orin.sys"), HasSubstr("orin.sys")));
}

TEST(LoadStore, ReadsAChangedStoreAnewAndRepeatsNoProblem) {
  ProgramHome home;
  PutFile(home.System() / "株式分割.txt",
          "T:x\r\nD:2100/01/01\r\n銘柄コード,銘柄名,分割倍率,権利付最終日\r\nAAPL,x,zero,2020/01/"
          "06\r\n");
  const auto state = home.Start();
  EXPECT_THAT(home.Screen().Texts(), SizeIs(1));
  {
    auto writer = store::StockStore::Open(home.Store(), {store::Access::kWrite, {}},
                                          base::NativeFileSystem());
    ASSERT_TRUE(writer);
    ASSERT_TRUE(writer->AppendDay(support::Day("2020/01/09"), {}));
  }
  home.Screen().ForgetShown();
  EXPECT_TRUE(LoadStore(*state, home.Screen()));
  EXPECT_EQ(state->store->Days().Count(), 4);
  EXPECT_THAT(home.Screen().Statuses(), ElementsAre(kSystemStatus, kRankingStatus));
  EXPECT_THAT(home.Screen().Texts(), IsEmpty());
}

}  // namespace
}  // namespace orin::shell
