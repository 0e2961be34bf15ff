#include "store/calendar.h"

#include <gtest/gtest.h>
#include <random>

#include "store/period_bars.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using orin::support::BarOf;
using orin::support::Day;
using orin::support::FlatBar;
using orin::support::NoBar;
using orin::support::Price;
using orin::support::Weekdays;

std::vector<base::Date> Dates(std::initializer_list<std::string_view> texts) {
  std::vector<base::Date> dates;
  for (const std::string_view text : texts) dates.push_back(Day(text));
  return dates;
}

std::vector<int32_t> FirstDays(const PeriodIndex& periods) {
  std::vector<int32_t> days;
  for (int32_t p = 1; p <= periods.Count(); ++p) days.push_back(periods.FirstDay(p).Value());
  return days;
}

base::BarColumns Columns(const std::vector<base::Date>& dates, std::vector<base::Bar> bars) {
  base::BarColumns columns;
  for (size_t i = 0; i < dates.size(); ++i) {
    bars[i].date = dates[i];
    columns.Append(bars[i]);
  }
  return columns;
}

base::Bar BarAt(const base::BarsView& view, int32_t t) {
  return {view.DateOf(t), view.Open(t), view.High(t), view.Low(t), view.Close(t), view.Volume(t)};
}

base::Bar Dated(base::Bar bar, std::string_view date) {
  bar.date = Day(date);
  return bar;
}

/// Weekdays with some days left out and some bars without data.
struct RandomMarket {
  explicit RandomMarket(uint32_t seed) : random(seed) {
    std::vector<base::Date> days;
    for (const base::Date day : Weekdays("2019/11/20", 90)) {
      if (random() % 5 != 0) days.push_back(day);
    }
    for (const base::Date day : days) {
      base::Bar bar = random() % 4 == 0 ? NoBar() : FlatBar(Number(10, 100), Number(0, 1000));
      if (bar.HasData()) bar.high = Price(bar.high.ToDouble() + Number(0, 5));
      bar.date = day;
      columns.Append(bar);
    }
    calendar = Calendar(std::move(days));
  }
  int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to - 1)(random); }

  std::mt19937 random;
  base::BarColumns columns;
  Calendar calendar;
};

TEST(Calendar, FindsTradingDaysAndNoOthers) {
  const Calendar calendar(Dates({"2020/01/06", "2020/01/07", "2020/01/09"}));
  EXPECT_EQ(calendar.Find(Day("2020/01/06")).Value(), 1);
  EXPECT_EQ(calendar.Find(Day("2020/01/09")).Value(), 3);
  EXPECT_TRUE(calendar.Find(Day("2020/01/08")).IsNone());
  EXPECT_TRUE(calendar.Find(Day("2020/01/10")).IsNone());
  EXPECT_TRUE(calendar.Find(base::Date()).IsNone());
  EXPECT_TRUE(Calendar().Find(Day("2020/01/06")).IsNone());
  EXPECT_EQ(Calendar().Last().Value(), 0);
}

TEST(Calendar, WeekBeginsWhereTheWeekdayIsNotGreaterThanTheDayBefores) {
  // Fri | Mon Wed | Wed (a week later) | Tue | Thu (nine days later, but a greater weekday) Sat |
  // Sun
  const Calendar calendar(Dates({"2020/01/03", "2020/01/06", "2020/01/08", "2020/01/15",
                                 "2020/01/21", "2020/01/30", "2020/02/01", "2020/02/02"}));
  EXPECT_EQ(FirstDays(calendar.Weeks()), (std::vector<int32_t>{1, 2, 4, 5, 8}));
  EXPECT_EQ(calendar.Weeks().PeriodOf(base::DayIndex(3)), 2);
  EXPECT_EQ(calendar.Weeks().PeriodOf(base::DayIndex(8)), 5);
}

TEST(Calendar, MonthBeginsWhereTheMonthNumberChanges) {
  const Calendar calendar(
      Dates({"2019/12/31", "2020/01/02", "2020/01/31", "2020/02/03", "2021/02/03", "2021/03/01"}));
  EXPECT_EQ(FirstDays(calendar.Months()), (std::vector<int32_t>{1, 2, 4, 6}));
}

TEST(PeriodBars, WeekIsMadeOfItsDaysWithData) {
  const auto dates = Dates({"2020/01/06", "2020/01/07", "2020/01/08", "2020/01/09", "2020/01/13",
                            "2020/01/14", "2020/01/20"});
  const base::BarColumns columns =
      Columns(dates, {NoBar(), BarOf(10, 12, 9, 11, 100), BarOf(11, 15, 10, 14, 50), NoBar(),
                      NoBar(), NoBar(), BarOf(3, 4, 2, 3, 1)});
  const Calendar calendar(dates);
  PeriodBars weeks;
  weeks.Build(base::BarsView(columns), calendar.Weeks());
  const base::BarsView view = weeks.AsOf(calendar.Last());
  ASSERT_EQ(view.Count(), 3);
  EXPECT_EQ(BarAt(view, 1), Dated(BarOf(10, 15, 9, 14, 150), "2020/01/09"));
  EXPECT_EQ(BarAt(view, 2), Dated(NoBar(), "2020/01/14"));
  EXPECT_EQ(BarAt(view, 3), Dated(BarOf(3, 4, 2, 3, 1), "2020/01/20"));
}

TEST(PeriodBars, RunningPeriodEndsAtTheDayLookedAt) {
  for (uint32_t seed = 1; seed <= 20; ++seed) {
    RandomMarket market(seed);
    for (const PeriodIndex* periods : {&market.calendar.Weeks(), &market.calendar.Months()}) {
      PeriodBars whole;
      whole.Build(base::BarsView(market.columns), *periods);
      for (int i = 0; i < 60; ++i) {
        const int32_t day = market.Number(1, market.calendar.Count() + 1);
        PeriodBars cut;
        cut.Build(base::BarsView(market.columns).Until(day), *periods);
        const base::BarsView expected = cut.AsOf(base::DayIndex(day));
        const base::BarsView view = whole.AsOf(base::DayIndex(day));
        ASSERT_EQ(view.Count(), expected.Count());
        for (int32_t t = 1; t <= view.Count(); ++t) ASSERT_EQ(BarAt(view, t), BarAt(expected, t));
      }
    }
  }
}

TEST(PeriodBars, PartlyLoadedDaysKeepTheNumbersOfTheirPeriods) {
  RandomMarket market(7);
  const int32_t first = 23;
  base::BarColumns tail;
  for (size_t i = first - 1; i < market.columns.Size(); ++i) tail.Append(market.columns.At(i));
  PeriodBars whole;
  whole.Build(base::BarsView(market.columns), market.calendar.Weeks());
  PeriodBars part;
  part.Build(base::BarsView(tail, first), market.calendar.Weeks());
  const base::BarsView expected = whole.AsOf(market.calendar.Last());
  const base::BarsView view = part.AsOf(market.calendar.Last());
  EXPECT_EQ(view.First(), market.calendar.Weeks().PeriodOf(base::DayIndex(first)));
  ASSERT_EQ(view.Count(), expected.Count());
  for (int32_t t = view.First() + 1; t <= view.Count(); ++t) {
    EXPECT_EQ(BarAt(view, t), BarAt(expected, t));
  }
}

TEST(PeriodBars, VolumesOutOfRangeMakeNoBar) {
  const auto dates = Dates({"2020/01/06", "2020/01/07"});
  base::Bar huge = FlatBar(1);
  huge.volume = base::Currency::FromRaw(INT64_MAX - 5);
  const base::BarColumns columns = Columns(dates, {huge, huge});
  const Calendar calendar(dates);
  PeriodBars months;
  months.Build(base::BarsView(columns), calendar.Months());
  EXPECT_EQ(BarAt(months.AsOf(calendar.Last()), 1), Dated(NoBar(), "2020/01/07"));
  EXPECT_EQ(months.AsOf(base::DayIndex(1)).Volume(1), huge.volume);
}

TEST(PeriodBars, NoDaysMakeNoPeriods) {
  const base::BarColumns none;
  PeriodBars weeks;
  EXPECT_NO_FATAL_FAILURE(weeks.Build(base::BarsView(none), PeriodIndex()));
}

}  // namespace
}  // namespace orin::store
