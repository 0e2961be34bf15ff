#include "support/credit_files.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/file_names.h"
#include "store/store_check.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using base::DayIndex;
using base::SlotRecord;
using orin::support::Balance;
using orin::support::Day;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using orin::support::WriteCreditFile;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr SlotRecord kSlot(2);
constexpr SlotRecord kOther(3);
constexpr CreditBalance kNone;

/// 104 days from 2020/01/06 in two price files, two stocks.
class CreditFilesTest : public ::testing::Test {
 protected:
  CreditFilesTest() {
    builder_.Days(days_).Stock("A").Stock("B").Build();
    support::NameCreditFiles(builder_.Location(), 3, 4);
  }
  ~CreditFilesTest() override {
    std::filesystem::remove_all(Where().system_directory.parent_path());
  }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  [[nodiscard]] std::vector<base::Date> DaysFrom(size_t first, size_t count) const {
    return {days_.begin() + static_cast<ptrdiff_t>(first),
            days_.begin() + static_cast<ptrdiff_t>(first + count)};
  }
  [[nodiscard]] static std::vector<CreditBalance> Load(const StockStore& store, SlotRecord slot,
                                                       int32_t first, int32_t last) {
    std::vector<CreditBalance> balances = {Balance(9, 9)};
    store.LoadCreditBalances(slot, DayIndex(first), DayIndex(last), balances);
    return balances;
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress).value();
  }

  std::vector<base::Date> days_ = Weekdays("2020/01/06", 104);
  StoreBuilder builder_{"credit"};
};

using Balances = std::vector<CreditBalance>;

TEST_F(CreditFilesTest, BalancesBelongToTheDaysOfTheirDates) {
  // They begin on day 3, lack day 4, and have a day that is no trading day.
  WriteCreditFile(
      Where(), 3, {days_[2], Day("2020/01/11"), days_[5]},
      {{kSlot, {Balance(1, 2), Balance(7, 7), Balance(3, 0)}}, {kOther, {Balance(5, 6)}}});
  WriteCreditFile(Where(), 4, DaysFrom(99, 2), {{kSlot, {Balance(10, 20), Balance(30, 40)}}});
  const StockStore store = builder_.Open();
  EXPECT_EQ(Load(store, kSlot, 1, 7),
            (Balances{kNone, kNone, Balance(1, 2), kNone, kNone, Balance(3, 0), kNone}));
  EXPECT_EQ(Load(store, kSlot, 100, 102), (Balances{Balance(10, 20), Balance(30, 40), kNone}));
  EXPECT_EQ(Load(store, kOther, 3, 3), Balances{Balance(5, 6)});
  EXPECT_EQ(Load(store, kOther, 100, 100), Balances{kNone});
  EXPECT_EQ(Load(store, SlotRecord(1), 3, 3), Balances{kNone});
  EXPECT_EQ(Load(store, SlotRecord(0), 3, 3), Balances{kNone});
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CreditFilesTest, DaysOutsideTheCalendarAreLeftOut) {
  WriteCreditFile(Where(), 3, DaysFrom(0, 2), {{kSlot, {Balance(1, 1), Balance(2, 2)}}});
  const StockStore store = builder_.Open();
  EXPECT_EQ(Load(store, kSlot, -5, 2), (Balances{Balance(1, 1), Balance(2, 2)}));
  EXPECT_EQ(Load(store, kSlot, 104, 200), Balances{kNone});
  EXPECT_THAT(Load(store, kSlot, 105, 200), IsEmpty());
  EXPECT_THAT(Load(store, kSlot, 3, 2), IsEmpty());
}

TEST_F(CreditFilesTest, CalendarFromALaterFileOnStillMeansTheSameDays) {
  WriteCreditFile(Where(), 3, DaysFrom(99, 2), {{kSlot, {Balance(10, 20), Balance(30, 40)}}});
  const auto store =
      StockStore::Open(Where(), {Access::kRead, int16_t{2}}, base::NativeFileSystem());
  ASSERT_TRUE(store);
  EXPECT_EQ(Load(*store, kSlot, 1, 2), (Balances{Balance(30, 40), kNone}));
}

TEST_F(CreditFilesTest, DayAppendedLaterIsMatchedToo) {
  const std::vector<base::Date> longer = Weekdays("2020/01/06", 105);
  WriteCreditFile(Where(), 3, {longer[103], longer[104]},
                  {{kSlot, {Balance(1, 2), Balance(3, 4)}}});
  StockStore store = builder_.Open(Access::kWrite);
  EXPECT_EQ(Load(store, kSlot, 104, 105), Balances{Balance(1, 2)});
  ASSERT_TRUE(store.AppendDay(longer[104], {}));
  EXPECT_EQ(Load(store, kSlot, 104, 105), (Balances{Balance(1, 2), Balance(3, 4)}));
  // A day put in front moves all of them.
  ASSERT_TRUE(store.AddDays(std::vector{Day("2019/12/30")}));
  EXPECT_EQ(Load(store, kSlot, 104, 106), (Balances{kNone, Balance(1, 2), Balance(3, 4)}));
}

TEST_F(CreditFilesTest, MissingAndDamagedFilesAreWithoutBalancesAndTold) {
  WriteCreditFile(Where(), 4, DaysFrom(0, 1), {{kSlot, {Balance(1, 2)}}});
  const StockStore store = builder_.Open();
  EXPECT_EQ(Load(store, kSlot, 1, 2), (Balances{Balance(1, 2), kNone}));
  EXPECT_THAT(Findings(), ::testing::ElementsAre(HasSubstr("orins003.dat」がありません")));

  const auto path = PathOf(Where(), {FileKind::kCredit, 3});
  for (const std::string& garbage :
       {std::string(), std::string(100, 'x'), std::string(4000, '\xff')}) {
    ASSERT_TRUE(base::ReplaceFile(base::NativeFileSystem(), path, garbage));
    EXPECT_EQ(Load(builder_.Open(), kSlot, 1, 2), (Balances{Balance(1, 2), kNone}));
    EXPECT_THAT(Findings(), Contains(HasSubstr("orins003.dat")));
  }
  WriteCreditFile(Where(), 3, {days_[1], days_[0]}, {});
  EXPECT_THAT(Findings(), Contains(HasSubstr("より後ではありません")));
}

}  // namespace
}  // namespace orin::store
