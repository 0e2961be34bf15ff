#include "store/stock_series.h"

#include <gtest/gtest.h>
#include <vector>

#include "support/store_builder.h"

namespace orin::store {
namespace {

using support::FlatBar;
using support::NoBar;

TEST(LoadPeriod, BarsWithoutDataAreIncludedAndAStoreWithoutDaysHasNone) {
  support::StoreBuilder builder("period");
  builder.Days(support::Weekdays("2020/01/06", 11)).Stock("X", {FlatBar(1), NoBar(), FlatBar(2)});
  const StockStore store = builder.Open();
  const StockRecord& stock = store.Master().Stock(base::MasterRecord(2));
  const auto volumes = [&](BarPeriod period) {
    return LoadPeriod(store, stock, period, false).volume;
  };
  EXPECT_EQ(volumes(BarPeriod::kDay).size(), 11U);
  EXPECT_EQ(volumes(BarPeriod::kWeek),
            (std::vector{support::Price(200), base::kNoDataVolume, base::kNoDataVolume}));
  EXPECT_EQ(volumes(BarPeriod::kMonth), std::vector{support::Price(200)});

  support::StoreBuilder dayless("dayless");
  dayless.Stock("X");
  const StockStore empty = dayless.Open();
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    EXPECT_EQ(LoadPeriod(empty, empty.Master().Stock(base::MasterRecord(2)), period, true).Size(),
              0U);
  }
}

TEST(LoadPeriod, LastWeekEndsAtTheDayAskedFor) {
  support::StoreBuilder builder("until");
  builder.Days(support::Weekdays("2020/01/06", 10));
  builder.Stock("X", std::vector<base::Bar>(10, FlatBar(1)));
  const StockStore store = builder.Open();
  const base::BarColumns weeks = LoadPeriod(store, store.Master().Stock(base::MasterRecord(2)),
                                            BarPeriod::kWeek, false, base::DayIndex(7));
  EXPECT_EQ(weeks.dates, (std::vector{support::Day("2020/01/10"), support::Day("2020/01/14")}));
  EXPECT_EQ(weeks.volume, (std::vector{support::Price(500), support::Price(200)}));
}

}  // namespace
}  // namespace orin::store
