#include "store/list_formats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "base/coding.h"
#include "shell/system_files.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::store {
namespace {

using support::Bytes;
using support::Code;
using support::Day;
using support::Price;
using support::PutFile;
using support::ScratchDirectory;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

base::FileSystem& Files() { return base::NativeFileSystem(); }

const std::vector<PersonalStock> kPersonal = {
    {Code("AAPL"), Day("2020/01/06"), Price(310.33), "長期"},
    {Code("^DJI"), base::Date(), base::Currency(), ""}};

const std::vector<Trade> kTrades = {
    {Day("2020/01/06"), Code("AAPL"), TradeSide::kBuy, Price(310.33), Price(100), Price(4.95),
     Price(0.5), "ＸＸ証券", "分割前"},
    {Day("2020/01/08"), Code("AAPL"), TradeSide::kSell, Price(320), Price(50.5), base::Currency(),
     base::Currency(), "", ""}};

template <typename Record>
void ExpectRoundTrip(const RecordFormat<Record>& format, const std::vector<Record>& entries) {
  const ScratchDirectory home;
  ASSERT_TRUE(SaveRecords(Files(), format, home / "list", entries));
  EXPECT_EQ(Bytes(home / "list").size(), (entries.size() + 1) * format.record_length);
  const RecordList<Record> list = LoadRecords(format, home / "list");
  EXPECT_EQ(list.entries, entries);
  EXPECT_EQ(list.problem, std::nullopt);
}

TEST(ListFormats, EveryFileGivesBackWhatWasSaved) {
  ExpectRoundTrip(kSelectionFormat, {{Code("AAPL")}, {Code("BRK.B")}});
  ExpectRoundTrip(kComparisonFormat, {});
  ExpectRoundTrip(kPersonalFormat, kPersonal);
  ExpectRoundTrip(kRecentSeriesFormat, {{"patrol\\serial.txt", "新高値"}, {"C:\\表\\ソ.txt", ""}});
  ExpectRoundTrip(kFeeFormat, {{"ＸＸ証券", Price(0), Price(0.45), Price(5)},
                               {"ＸＸ証券", Price(1e6), Price(0.22), Price(0)}});
  ExpectRoundTrip(kTradeFormat, kTrades);
}

TEST(ListFormats, TradeLiesAtItsDocumentedPlaces) {
  const ScratchDirectory home;
  ASSERT_TRUE(SaveRecords(Files(), kTradeFormat, home / "orin.trn", kTrades));
  const std::string bytes = Bytes(home / "orin.trn");
  EXPECT_EQ(bytes.substr(0, 8), "ORINTRN1");
  EXPECT_EQ(base::GetUint32(bytes.data() + 8), 2U);
  const char* first = bytes.data() + 128;
  EXPECT_EQ(base::GetDouble(first), 43836.0);
  EXPECT_EQ(std::string_view(first + 8, 8), "AAPL    ");
  EXPECT_EQ(base::GetInt16(first + 16), 1);
  EXPECT_EQ(base::GetCurrency(first + 24).Raw(), 3103300);
  EXPECT_EQ(base::GetCurrency(first + 48).Raw(), 5000);
}

struct Damage {
  const char* name;
  std::function<void(std::string&)> change;
  size_t readable;
  const char* sentence;
};

TEST(ListFormats, DamageIsToldAndTheReadableEntriesAreKept) {
  const std::vector<Damage> damages = {
      {"empty", [](std::string& bytes) { bytes.clear(); }, 0, "この版のミルテのファイルではない"},
      {"mark", [](std::string& bytes) { bytes[7] = '2'; }, 0, "この版のミルテのファイルではない"},
      {"cut", [](std::string& bytes) { bytes.resize(bytes.size() - 1); }, 1, "の件数2と合いません"},
      {"longer", [](std::string& bytes) { bytes += bytes.substr(128); }, 2, "の件数2と合いません"},
      {"count", [](std::string& bytes) { bytes.replace(8, 4, "\xff\xff\xff\xff"); }, 2,
       "の件数4294967295と"},
      {"code", [](std::string& bytes) { bytes[128 + 8] = ','; }, 1,
       "レコード2の銘柄コードが壊れて"},
      {"date", [](std::string& bytes) { bytes.replace(256, 8, 8, '\xff'); }, 1,
       "レコード3の日付が"},
      {"side", [](std::string& bytes) { bytes[128 + 16] = 3; }, 1, "レコード2の売買が"},
      {"text", [](std::string& bytes) { bytes[128 + 88] = '\xff'; }, 1, "レコード2のメモが"},
      {"zeros", [](std::string& bytes) { bytes.replace(256, 128, 128, '\0'); }, 1, "レコード3の"},
  };
  for (const Damage& damage : damages) {
    const ScratchDirectory home;
    ASSERT_TRUE(SaveRecords(Files(), kTradeFormat, home / "orin.trn", kTrades));
    std::string bytes = Bytes(home / "orin.trn");
    damage.change(bytes);
    PutFile(home / "orin.trn", bytes);
    const auto list = LoadRecords(kTradeFormat, home / "orin.trn");
    EXPECT_THAT(list.entries, SizeIs(damage.readable)) << damage.name;
    EXPECT_THAT(list.problem, Optional(HasSubstr(damage.sentence))) << damage.name;
    EXPECT_THAT(list.problem, Optional(HasSubstr("orin.trn"))) << damage.name;
  }
}

TEST(ListFormats, SavingOverADamagedFileKeepsItAside) {
  const ScratchDirectory home;
  PutFile(home / "orin.per", "damaged");
  ASSERT_TRUE(SaveRecords(Files(), kPersonalFormat, home / "orin.per", kPersonal));
  EXPECT_EQ(Bytes(home / "orin.per.bad"), "damaged");
  EXPECT_EQ(LoadRecords(kPersonalFormat, home / "orin.per").entries, kPersonal);
}

TEST(ListFormats, PathThatDoesNotFitIsRefusedAndALongMemoIsCutAtACharacter) {
  const ScratchDirectory home;
  const std::vector<RecentFile> long_path = {{std::string(261, 'a'), ""}};
  const auto refused = SaveRecords(Files(), kRecentSeriesFormat, home / "orin.ser", long_path);
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().message, HasSubstr("レコード2のファイル"));
  EXPECT_FALSE(std::filesystem::exists(home / "orin.ser"));
  std::vector<PersonalStock> stocks = {kPersonal[0]};
  stocks[0].memo = "a二三四五六七八九十一二三四五六七八九十一二";
  ASSERT_TRUE(SaveRecords(Files(), kPersonalFormat, home / "orin.per", stocks));
  const auto read = LoadRecords(kPersonalFormat, home / "orin.per").entries;
  ASSERT_THAT(read, SizeIs(1));
  EXPECT_EQ(read[0].memo, "a二三四五六七八九十一二三四五六七八九十");
}

TEST(ListFormats, SaveStoppedAtAnyWriteLeavesTheOldOrTheNewList) {
  for (int64_t operation = 1;; ++operation) {
    const ScratchDirectory home;
    ASSERT_TRUE(SaveRecords(Files(), kTradeFormat, home / "t", std::span(kTrades).first(1)));
    support::FaultyFileSystem files;
    files.DieAt(operation);
    files.LoseOnDeath(support::Loss::kWritesAndNames);
    const auto saved = SaveRecords(files, kTradeFormat, home / "t", kTrades);
    const auto list = LoadRecords(kTradeFormat, home / "t");
    EXPECT_EQ(list.problem, std::nullopt) << operation;
    EXPECT_THAT(list.entries, SizeIs(::testing::Ge(saved ? 2U : 1U))) << operation;
    if (!files.IsDead()) break;
  }
}

TEST(SystemFiles, AbsentFilesAreEmptyAndTheBrokerHasItsName) {
  const ScratchDirectory home;
  std::vector<std::string> problems;
  const shell::SystemFiles loaded = shell::LoadSystemFiles(home.Path(), problems);
  EXPECT_THAT(problems, IsEmpty());
  EXPECT_THAT(loaded.selection, IsEmpty());
  EXPECT_EQ(loaded.fees, std::vector<FeeStep>({{"ＸＸ証券", {}, {}, {}}}));
}

TEST(SystemFiles, NamesAreFoundWithoutRegardToCase) {
  const ScratchDirectory home;
  ASSERT_TRUE(SaveRecords(Files(), kPersonalFormat, home / "ORIN.PER", kPersonal));
  ASSERT_TRUE(SaveRecords(Files(), kSelectionFormat, home / "Orin.SWK", {{{Code("AAPL")}}}));
  PutFile(home / "企業URL.TXT", "AAPL\thttps://apple.example/\n");
  std::vector<std::string> problems;
  const auto load = [&] { return shell::LoadSystemFiles(home.Path(), problems); };
  EXPECT_EQ(load().personal, kPersonal);
  EXPECT_THAT(load().selection, SizeIs(1));
  EXPECT_THAT(load().addresses, SizeIs(1));
  ASSERT_TRUE(SaveRecords(Files(), kPersonalFormat, home / "orin.per", {}));
  EXPECT_FALSE(std::filesystem::exists(home / "orin.per"));
  EXPECT_THAT(load().personal, IsEmpty());
  EXPECT_THAT(problems, IsEmpty());
}

TEST(SystemFiles, GarbageInEveryFileIsASentenceEach) {
  const ScratchDirectory home;
  std::mt19937 random(3);
  const std::vector<std::string> names = {"orin.swk", "orin.cwk", "orin.per", "orin.ser",
                                          "orin.com", "orin.fee", "orin.ana"};
  for (const std::string& name : names) {
    std::string garbage(5000, '\0');
    for (char& byte : garbage) byte = static_cast<char>(random());
    PutFile(home / name, garbage);
  }
  std::filesystem::create_directory(home / "企業url.txt");
  std::vector<std::string> problems;
  const shell::SystemFiles loaded = shell::LoadSystemFiles(home.Path(), problems);
  ASSERT_THAT(problems, SizeIs(names.size() + 1));
  for (size_t i = 0; i < names.size(); ++i) EXPECT_THAT(problems[i], HasSubstr(names[i]));
  EXPECT_THAT(problems.back(), HasSubstr("企業url.txt"));
  EXPECT_THAT(loaded.fees, SizeIs(1));
}

}  // namespace
}  // namespace orin::store
