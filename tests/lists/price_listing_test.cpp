#include "lists/price_listing.h"

#include <gtest/gtest.h>

#include "support/store_builder.h"

namespace orin::lists {
namespace {

using support::BarOf;
using support::FlatBar;
using support::NoBar;
using Strings = std::vector<std::string>;

/// Two weeks from Monday 2020/01/06 on, with days without data between, before the first and
/// after the last bar.
std::vector<base::Bar> TwoWeeks() {
  return {BarOf(10, 12, 9, 11, 1000),      NoBar(),
          BarOf(11, 13, 10.5, 12.5, 2000), FlatBar(12.5, 100),
          BarOf(12, 12, 8, 10, 1'500'000), BarOf(10, 11, 10, 11, 50)};
}

base::Table ListingOf(const std::vector<base::Bar>& bars, BarPeriod period = BarPeriod::kDay,
                      bool is_adjusted = false) {
  support::StoreBuilder builder("listing");
  builder.Days(support::Weekdays("2020/01/06", 10)).Stock("X", bars).Split("X", 2, "2020/01/07");
  const store::StockStore store = builder.Open();
  const auto record = store.Master().Find(support::Code("X"));
  return TableOfPrices(store, store.Master().Stock(record), period, is_adjusted);
}

Strings Line(const base::Table& listing, size_t row) {
  Strings line;
  for (size_t column = 0; column < listing.columns.size(); ++column) {
    line.push_back(listing.Text(row, column));
  }
  return line;
}

Strings Column(const base::Table& listing, size_t column) {
  Strings texts;
  for (size_t row = 0; row < listing.rows.size(); ++row) {
    texts.push_back(listing.Text(row, column));
  }
  return texts;
}

TEST(PriceListing, DaysWithDataStandNewestFirstWithTheirChange) {
  const base::Table listing = ListingOf(TwoWeeks());
  ASSERT_EQ(listing.rows.size(), 5U);
  EXPECT_EQ(Line(listing, 0),
            (Strings{"2020/01/13", "10.00", "11.00", "10.00", "11.00", "+1.00", "+10.00％", "50"}));
  EXPECT_EQ(Line(listing, 1), (Strings{"2020/01/10", "12.00", "12.00", "8.00", "10.00", "-2.50",
                                       "-20.00％", "1,500,000"}));
  EXPECT_EQ(Line(listing, 2),
            (Strings{"2020/01/09", "12.50", "12.50", "12.50", "12.50", "0.00", "0.00％", "100"}));
  // The day before has no data: 12.5 against 11.
  EXPECT_EQ(Line(listing, 3), (Strings{"2020/01/08", "11.00", "13.00", "10.50", "12.50", "+1.50",
                                       "+13.64％", "2,000"}));
  EXPECT_EQ(Line(listing, 4),
            (Strings{"2020/01/06", "10.00", "12.00", "9.00", "11.00", "", "", "1,000"}));
}

TEST(PriceListing, WeeksAndMonthsGatherTheirDays) {
  const base::Table weeks = ListingOf(TwoWeeks(), BarPeriod::kWeek);
  ASSERT_EQ(weeks.rows.size(), 2U);
  EXPECT_EQ(Line(weeks, 0),
            (Strings{"2020/01/17", "10.00", "11.00", "10.00", "11.00", "+1.00", "+10.00％", "50"}));
  EXPECT_EQ(Line(weeks, 1),
            (Strings{"2020/01/10", "10.00", "13.00", "8.00", "10.00", "", "", "1,503,100"}));
  const base::Table months = ListingOf(TwoWeeks(), BarPeriod::kMonth);
  ASSERT_EQ(months.rows.size(), 1U);
  EXPECT_EQ(Line(months, 0),
            (Strings{"2020/01/17", "10.00", "13.00", "8.00", "11.00", "", "", "1,503,150"}));
  EXPECT_EQ(weeks.columns[PriceColumn::kChange].heading, "前週比");
  EXPECT_EQ(months.columns[PriceColumn::kChangePercent].heading, "前月比率");
}

TEST(PriceListing, SplitIsAdjustedOnlyWhereWanted) {
  const std::vector<base::Bar> bars = {FlatBar(100, 7), FlatBar(90, 7), FlatBar(50, 7)};
  const base::Table adjusted = ListingOf(bars, BarPeriod::kDay, true);
  EXPECT_EQ(Column(adjusted, PriceColumn::kClose), (Strings{"50.00", "45.00", "50.00"}));
  EXPECT_EQ(Column(adjusted, PriceColumn::kChange), (Strings{"+5.00", "-5.00", ""}));
  EXPECT_EQ(Column(adjusted, PriceColumn::kVolume), (Strings{"7", "14", "14"}));
  const base::Table stored = ListingOf(bars);
  EXPECT_EQ(Column(stored, PriceColumn::kClose), (Strings{"50.00", "90.00", "100.00"}));
}

TEST(PriceListing, PricesHaveTheDecimalsThatAnyOfThemNeeds) {
  const std::vector<std::pair<double, Strings>> cases = {
      {10, {"10.00", "1.00"}},          {10.25, {"10.25", "1.00"}}, {10.125, {"10.125", "1.000"}},
      {10.1234, {"10.1234", "1.0000"}}, {10.1, {"10.10", "1.00"}},
  };
  for (const auto& [price, texts] : cases) {
    const base::Table listing = ListingOf({FlatBar(1), FlatBar(price)});
    EXPECT_EQ(Column(listing, PriceColumn::kClose), texts) << price;
  }
}

TEST(PriceListing, LargeAndImpossibleValuesAreGroupedOrEmpty) {
  const base::Table listing = ListingOf({FlatBar(12345678.9, 1), FlatBar(1, 2.5),
                                         FlatBar(0.01, 3.4), FlatBar(900'000'000'000, 999'999)});
  EXPECT_EQ(Column(listing, PriceColumn::kClose),
            (Strings{"900,000,000,000.00", "0.01", "1.00", "12,345,678.90"}));
  EXPECT_EQ(Column(listing, PriceColumn::kChange),
            (Strings{"+899,999,999,999.99", "-0.99", "-12,345,677.90", ""}));
  // 9 × 10^15 percent is more than the fixed-point numbers hold.
  EXPECT_EQ(Column(listing, PriceColumn::kChangePercent),
            (Strings{"", "-99.00％", "-100.00％", ""}));
  EXPECT_EQ(Column(listing, PriceColumn::kVolume), (Strings{"999,999", "3", "3", "1"}));
}

TEST(PriceListing, SortKeepsRowsWithoutAValueLastAndTheNewestOfEqualsFirst) {
  base::Table listing = ListingOf(TwoWeeks());
  listing.Sort(PriceColumn::kChangePercent, false);
  EXPECT_EQ(Column(listing, PriceColumn::kChangePercent),
            (Strings{"-20.00％", "0.00％", "+10.00％", "+13.64％", ""}));
  listing.Sort(PriceColumn::kChangePercent, true);
  EXPECT_EQ(Column(listing, PriceColumn::kChangePercent),
            (Strings{"+13.64％", "+10.00％", "0.00％", "-20.00％", ""}));
  // The opens of 2020/01/06 and 2020/01/13 are equal.
  listing.Sort(PriceColumn::kOpen, false);
  EXPECT_EQ(Column(listing, PriceColumn::kDate),
            (Strings{"2020/01/13", "2020/01/06", "2020/01/08", "2020/01/10", "2020/01/09"}));
  listing.Sort(PriceColumn::kOpen, true);
  EXPECT_EQ(Column(listing, PriceColumn::kDate),
            (Strings{"2020/01/09", "2020/01/10", "2020/01/08", "2020/01/13", "2020/01/06"}));
  listing.Sort(PriceColumn::kVolume, true);
  EXPECT_EQ(Column(listing, PriceColumn::kVolume),
            (Strings{"1,500,000", "2,000", "1,000", "100", "50"}));
  listing.Sort(PriceColumn::kDate, false);
  EXPECT_EQ(listing.Text(0, PriceColumn::kDate), "2020/01/06");
}

TEST(PriceListing, CsvHasPlainNumbersInTheOrderShown) {
  base::Table listing = ListingOf({FlatBar(1000, 1'234'567), BarOf(1100, 1200, 1050, 1150, 0)});
  listing.Sort(PriceColumn::kDate, false);
  EXPECT_EQ(listing.ToCsv(),
            "年月日,始値,高値,安値,終値,前日比,前日比率,出来高\r\n"
            "2020/01/06,1000.00,1000.00,1000.00,1000.00,,,1234567\r\n"
            "2020/01/07,1100.00,1200.00,1050.00,1150.00,150.00,15.00,0\r\n");
  EXPECT_EQ(listing.ToTabs(std::vector<size_t>{1}),
            "2020/01/07\t1100.00\t1200.00\t1050.00\t1150.00\t150.00\t15.00\t0\n");
  EXPECT_EQ(listing.ToTabs({}), "");
}

TEST(PriceListing, StockOrStoreWithoutPricesHasNoRows) {
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    EXPECT_TRUE(ListingOf({}, period).rows.empty());
    support::StoreBuilder builder("without_days");
    const store::StockStore store = builder.Stock("X").Open();
    const auto& stock = store.Master().Stock(base::MasterRecord(2));
    base::Table listing = TableOfPrices(store, stock, period, true);
    listing.Sort(PriceColumn::kClose, true);
    EXPECT_TRUE(listing.rows.empty());
  }
}

}  // namespace
}  // namespace orin::lists
