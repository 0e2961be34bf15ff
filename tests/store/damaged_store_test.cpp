#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "base/coding.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/price_format.h"
#include "store/store_check.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::AllBars;
using orin::support::BarOf;
using orin::support::Code;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr size_t kDays = 103;
constexpr size_t kFirstStock = kMasterRecordLength;
constexpr size_t kSecondStock = 2 * kMasterRecordLength;

std::string BarBytes(const base::Bar& bar) {
  std::string bytes(kBarLength, '\0');
  EncodeBar(bar, bytes.data());
  return bytes;
}

class DamagedStore : public ::testing::Test {
 protected:
  void SetUp() override {
    StoreBuilder builder("damaged");
    builder.Days(Weekdays("2020/01/06", kDays)).Split("A", 2, "2020/01/31");
    builder.Stock("A", std::vector(kDays, FlatBar(10))).Stock("B", std::vector(kDays, FlatBar(20)));
    // The rules alone have to find what is wrong.
    location_ = builder.WithoutSums().Build();
  }
  void TearDown() override { fs::remove_all(location_.system_directory.parent_path()); }

  [[nodiscard]] std::string Read(const StoreFile& file) const {
    return base::ReadFile(PathOf(location_, file)).value();
  }
  void Write(const StoreFile& file, const std::string& bytes) const {
    ASSERT_TRUE(base::ReplaceFile(base::NativeFileSystem(), PathOf(location_, file), bytes));
  }
  void Patch(const StoreFile& file, size_t offset, const std::string& bytes) const {
    std::string content = Read(file);
    content.replace(offset, bytes.size(), bytes);
    Write(file, content);
  }
  [[nodiscard]] std::string OpenError() const {
    const auto store = StockStore::Open(location_, {}, base::NativeFileSystem());
    return store ? "" : store.error().message;
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(location_, progress).value();
  }

  StoreLocation location_;
};

TEST_F(DamagedStore, WholeStoreHasNoFindings) {
  EXPECT_THAT(Findings(), IsEmpty());
  EXPECT_EQ(OpenError(), "");
}

TEST_F(DamagedStore, HeaderOutOfRangeIsRefusedWithItsField) {
  const std::string whole = Read(kMasterFile);
  struct Case {
    size_t offset;
    int value;
    std::string message;
  };
  for (const Case& test : std::vector<Case>{
           {header_offset::kDateRecord, 0, "日付レコードの値0が"},
           {header_offset::kFirstFile, 0, "先頭ファイルの値0が1から2の範囲"},
           {header_offset::kFirstFile, 3, "先頭ファイルの値3が1から2の範囲"},
           {header_offset::kCurrentFile, 1000, "カレントファイルの値1000が"},
           {header_offset::kCurrentFile, -1, "カレントファイルの値-1が"},
           {header_offset::kCurrentRecord, 0, "カレントレコードの値0が1から100"},
           {header_offset::kCurrentRecord, 101, "カレントレコードの値101が1から100"},
           {header_offset::kCurrentFile, 3, "orin003.dat」がありません"},
           {header_offset::kCurrentRecord, 4, "の4番目が日付ではありません"},
           {header_offset::kDateRecord, 5, "が短すぎます"},
       }) {
    Write(kMasterFile, whole);
    Patch(kMasterFile, test.offset, support::Int16Bytes(test.value));
    EXPECT_THAT(OpenError(), HasSubstr(test.message));
    EXPECT_THAT(OpenError(), HasSubstr("orin"));
    EXPECT_THAT(Findings(), Not(IsEmpty())) << test.message;
  }
  Write(kMasterFile, whole.substr(0, 51));
  EXPECT_THAT(OpenError(), HasSubstr("51バイト"));
  fs::remove(PathOf(location_, kMasterFile));
  EXPECT_THAT(OpenError(), HasSubstr("初期設定ファイルで指定した場所にorin.sysがありません。"));
}

TEST_F(DamagedStore, DatesOutOfOrderAreRefusedWithTheirPlace) {
  Patch(DailyFile(1), 5 * kDateEntryLength, EncodeDateEntry(Day("2020/01/10")));  // the day before
  EXPECT_THAT(OpenError(), HasSubstr("6番目の日付2020/01/10が前の日付2020/01/10より後"));
  EXPECT_THAT(Findings(), Contains(HasSubstr("6番目の日付2020/01/10")));
  Patch(DailyFile(1), 5 * kDateEntryLength, "garbage!");
  EXPECT_THAT(OpenError(), HasSubstr("6番目が日付ではありません"));
  EXPECT_THAT(Findings(), Contains(HasSubstr("6番目が日付ではありません")));
}

TEST_F(DamagedStore, FileThatLacksAStockTheOthersHaveIsRefused) {
  const std::string whole = Read(DailyFile(2));
  Write(DailyFile(2), whole.substr(0, whole.size() - 1));
  EXPECT_THAT(OpenError(), HasSubstr("3レコード必要なところ2レコード"));
  EXPECT_THAT(Findings(), Contains(HasSubstr("より少ない")));
  EXPECT_THAT(Findings(), Contains(HasSubstr("満たないレコード")));
  Write(DailyFile(2), whole + std::string(kDailyRecordLength, 'x'));
  EXPECT_EQ(OpenError(), "");
  EXPECT_THAT(Findings(), Contains(HasSubstr("より多い")));
}

TEST_F(DamagedStore, OneDamagedStockLeavesTheOthersReadable) {
  for (const int slot : {-5, 0, 1, 4, 32767}) {
    Patch(kMasterFile, kFirstStock + master_offset::kSlot, support::Int16Bytes(slot));
    const auto store = StockStore::Open(location_, {}, base::NativeFileSystem());
    ASSERT_TRUE(store) << store.error().message;
    EXPECT_EQ(AllBars(*store, "B").back().close, FlatBar(20).close);
    EXPECT_FALSE(AllBars(*store, "A").back().HasData());
    EXPECT_THAT(Findings(), Contains(HasSubstr("銘柄レコード" + std::to_string(slot)))) << slot;
  }
  // New stocks go behind the sound ones.
  auto store = StockStore::Open(location_, {Access::kWrite, {}}, base::NativeFileSystem());
  ASSERT_TRUE(store);
  ASSERT_TRUE(store->AddStocks(std::vector{NewStock{Code("C"), "c"}}));
  EXPECT_EQ(store->Master().Stocks().back().slot.Value(), 4);
}

TEST_F(DamagedStore, CheckTellsWhatIsWrongWithTheMaster) {
  Patch(kMasterFile, 0, "20190101");
  Patch(kMasterFile, kSecondStock, "A       ");
  Patch(kMasterFile, kSecondStock + master_offset::kSlot,
        support::Int16Bytes(2) + support::Int16Bytes(7));
  Patch(kMasterFile, kSecondStock + master_offset::kName, "\x81");
  const std::vector<std::string> findings = Findings();
  EXPECT_THAT(findings, Contains(HasSubstr("日付コード20190101")));
  EXPECT_THAT(findings, Contains(HasSubstr("銘柄コードAはレコード2と同じ")));
  EXPECT_THAT(findings, Contains(HasSubstr("銘柄レコード2はレコード2と同じ")));
  EXPECT_THAT(findings, Contains(HasSubstr("上場コード7")));
  EXPECT_THAT(findings, Contains(HasSubstr("読めない文字")));
  EXPECT_THAT(findings, Contains(AllOf(HasSubstr("orin.ind"), HasSubstr("「B」"))));
  Patch(kMasterFile, 0, "2020131x");
  Patch(kMasterFile, kSecondStock, "A B     ");
  EXPECT_THAT(Findings(), Contains(HasSubstr("日付コードが日付ではありません")));
  EXPECT_THAT(Findings(), Contains(HasSubstr("レコード3の銘柄コードが正しくありません")));
}

TEST_F(DamagedStore, CheckTellsImpossibleBarsOnceAStock) {
  const std::vector<std::pair<base::Bar, std::string>> cases = {
      {BarOf(5, 4, 6, 5, 1), "高値が安値より低い"},
      {BarOf(9, 8, 4, 5, 1), "始値か終値が"},
      {BarOf(5, 8, 4, 3, 1), "始値か終値が"},
      {BarOf(-5, 8, -6, 3, 1), "株価が負"},
      {FlatBar(5, -2), "出来高が負"},
      {FlatBar(0, 1), "株価が0"},
      {FlatBar(0, 0), "株価が0"},
  };
  const size_t record = 2 * kDailyRecordLength;  // of B
  for (const auto& [bar, message] : cases) {
    Patch(DailyFile(1), record + 2 * kBarLength, BarBytes(bar) + BarBytes(bar) + BarBytes(bar));
    const auto findings = Findings();
    ASSERT_EQ(findings.size(), 1U) << message;
    EXPECT_THAT(findings[0], HasSubstr("銘柄B（レコード3）の2020/01/08"));
    EXPECT_THAT(findings[0], HasSubstr(message));
    EXPECT_THAT(findings[0], HasSubstr("（ほか2件）"));
  }
  std::string priced = BarBytes(FlatBar(1));
  priced.replace(bar_offset::kVolume, 8, BarBytes(base::Bar()).substr(bar_offset::kVolume));
  Patch(DailyFile(1), record + 2 * kBarLength, priced);
  EXPECT_THAT(Findings(), Contains(HasSubstr("データなしですが")));
}

TEST_F(DamagedStore, CheckTellsWhatIsWrongWithTheOtherFiles) {
  Write({FileKind::kNameIndex, 0}, Read({FileKind::kNameIndex, 0}).substr(0, 115));
  Patch({FileKind::kAdded, 0}, 0, support::Int16Bytes(3));
  fs::remove(PathOf(location_, {FileKind::kDeleted, 0}));
  Write({FileKind::kSplits, 0}, "X,x,2,2020/01/06\r\nA,a,two,2020/01/06\r\n");
  Write({FileKind::kTrendLines, 0}, std::string(321, '\0'));
  Write({FileKind::kJournal, 0}, "x");
  const std::vector<std::string> findings = Findings();
  EXPECT_THAT(findings, Contains(HasSubstr("orin.ind」の銘柄数1がorin.sysの2と違います")));
  EXPECT_THAT(findings, Contains(HasSubstr("110バイトに満たないレコードが5バイト")));
  EXPECT_THAT(findings, Contains(HasSubstr("orin.add」の銘柄数3が0から2")));
  EXPECT_THAT(findings, Contains(HasSubstr("orin.del」がありません")));
  EXPECT_THAT(findings, Contains(HasSubstr("銘柄コードXがorin.sysにありません")));
  EXPECT_THAT(findings, Contains(HasSubstr("「two」が正しくありません")));
  EXPECT_THAT(findings, Contains(HasSubstr("320バイトに満たない")));
  EXPECT_THAT(findings, Contains(HasSubstr("orin.jnl")));
}

TEST_F(DamagedStore, GarbageAndTruncationAreSurvivedWhereverTheyAre) {
  std::mt19937 random(1);
  const auto number = [&random](size_t limit) {
    return std::uniform_int_distribution<size_t>(0, limit - 1)(random);
  };
  const std::vector<StoreFile> files = {kMasterFile,
                                        {FileKind::kNameIndex, 0},
                                        {FileKind::kAdded, 0},
                                        {FileKind::kDeleted, 0},
                                        {FileKind::kSplits, 0},
                                        DailyFile(1),
                                        DailyFile(2)};
  const fs::path root = location_.system_directory.parent_path();
  const fs::path pristine = root.string() + "_pristine";
  fs::remove_all(pristine);
  fs::copy(root, pristine, fs::copy_options::recursive);
  for (int round = 0; round < 120; ++round) {
    const StoreFile& file = files[number(files.size())];
    std::string bytes = Read(file);
    if (round % 4 == 0) bytes.resize(number(bytes.size() + 1));
    const size_t changes = round % 4 == 1 ? bytes.size() : number(20);
    for (size_t i = 0; i < changes && !bytes.empty(); ++i) {
      bytes[number(bytes.size())] = static_cast<char>(number(256));
    }
    Write(file, bytes);
    static_cast<void>(Findings());
    auto store = StockStore::Open(location_, {Access::kWrite, {}}, base::NativeFileSystem());
    if (store) {
      base::BarColumns bars;
      for (const StockRecord& stock : store->Master().Stocks()) {
        store->LoadAdjustedBars(stock, base::DayIndex(1), store->Days().Last(), bars);
      }
      static_cast<void>(store->AddStocks(std::vector{NewStock{Code("NEW"), "n"}}));
      static_cast<void>(store->AppendDay(Day("2040/01/02"), {}));
      static_cast<void>(store->AddDays(std::vector{Day("2020/01/05"), Day("2050/01/03")}));
    } else {
      EXPECT_THAT(store.error().message, HasSubstr("。"));
    }
    fs::remove_all(root);
    fs::copy(pristine, root, fs::copy_options::recursive);
  }
  fs::remove_all(pristine);
}

}  // namespace
}  // namespace orin::store
