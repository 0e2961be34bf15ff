#include "chart/ticks.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "support/store_builder.h"

namespace orin::chart {
namespace {

std::vector<std::string> TextsOf(const std::vector<Tick>& ticks) {
  std::vector<std::string> texts;
  for (const Tick& tick : ticks) texts.push_back(tick.text);
  return texts;
}

base::BarColumns BarsOn(const std::vector<base::Date>& dates) {
  base::BarColumns bars;
  for (const base::Date date : dates) {
    bars.Append({date, {}, {}, {}, {}, base::Currency()});
  }
  return bars;
}

std::vector<std::string> DatesOf(const base::BarColumns& bars, store::BarPeriod period,
                                 int32_t width) {
  std::vector<std::string> texts;
  const BarScale scale({1, static_cast<int32_t>(bars.Size()), 0}, 0, width);
  for (const DateTick& tick : DateTicks(base::BarsView(bars), scale, period, 60)) {
    texts.push_back(tick.text);
  }
  return texts;
}

TEST(RoundStep, IsTheNextOfItsSeries) {
  EXPECT_DOUBLE_EQ(RoundStep(1), 1);
  EXPECT_DOUBLE_EQ(RoundStep(1.01), 2);
  EXPECT_DOUBLE_EQ(RoundStep(21), 25);
  EXPECT_DOUBLE_EQ(RoundStep(26), 50);
  EXPECT_DOUBLE_EQ(RoundStep(5.1e11), 1e12);
  // 0.00025 could not be written.
  EXPECT_DOUBLE_EQ(RoundStep(0.00021), 0.0005);
}

TEST(ValueTicks, AreRoundApartAndAllDifferentWhateverTheRange) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> exponent(-4, 12);
  std::uniform_real_distribution<double> part(0.0001, 1);
  for (int i = 0; i < 2000; ++i) {
    const double high = std::pow(10, exponent(random));
    const double low = std::max(0.0001, high * (1 - part(random)));
    if (high - low < 0.0004) continue;
    for (const ScaleForm form :
         {ScaleForm::kLinear, ScaleForm::kLogarithmic, ScaleForm::kPercent}) {
      const ValueScale scale({low, high}, form, 0, 500);
      const auto ticks = ValueTicks(scale, 28, NumberForm::kPrice, low);
      ASSERT_LE(ticks.size(), 20U);
      std::set<std::string> texts;
      for (size_t k = 0; k < ticks.size(); ++k) {
        EXPECT_TRUE(texts.insert(ticks[k].text).second) << ticks[k].text;
        EXPECT_GE(ticks[k].value, low * (1 - 1e-6));
        EXPECT_LE(ticks[k].value, high * (1 + 1e-6));
        if (k == 0) continue;
        EXPECT_GE(scale.Y(ticks[k - 1].value) - scale.Y(ticks[k].value), 27.9)
            << low << " to " << high;
      }
    }
  }
}

TEST(ValueTicks, HaveTheDecimalsAndUnitsTheyNeed) {
  const auto texts = [](double low, double high, NumberForm form) {
    return TextsOf(ValueTicks(ValueScale({low, high}, ScaleForm::kLinear, 0, 200), 50, form));
  };
  EXPECT_EQ(texts(190, 310, NumberForm::kPrice), (std::vector<std::string>{"200", "250", "300"}));
  EXPECT_EQ(texts(1, 2, NumberForm::kPrice), (std::vector<std::string>{"1.0", "1.5", "2.0"}));
  EXPECT_EQ(texts(1, 1.9, NumberForm::kPrice),
            (std::vector<std::string>{"1.00", "1.25", "1.50", "1.75"}));
  EXPECT_EQ(texts(-1, 1, NumberForm::kPercent), (std::vector<std::string>{"-1", "0", "1"}));
  EXPECT_EQ(texts(0, 7e7, NumberForm::kVolume),
            (std::vector<std::string>{"0", "2,000万", "4,000万", "6,000万"}));
  EXPECT_EQ(texts(0, 1e13, NumberForm::kVolume), (std::vector<std::string>{"0", "5兆", "10兆"}));
  EXPECT_EQ(texts(0, 900, NumberForm::kVolume),
            (std::vector<std::string>{"0", "250", "500", "750"}));
  EXPECT_TRUE(
      ValueTicks(ValueScale({0, 1}, ScaleForm::kLinear, 0, 0), 50, NumberForm::kPrice).empty());
}

TEST(ValueTicks, PercentCountsFromTheBase) {
  const ValueScale scale({90, 125}, ScaleForm::kPercent, 0, 200);
  EXPECT_EQ(TextsOf(ValueTicks(scale, 50, NumberForm::kPrice, 100)),
            (std::vector<std::string>{"-10％", "0％", "+10％", "+20％"}));
}

TEST(DateTicks, AreFirstBarsOfMonthsAndYearsInTheFormOfTheBars) {
  const base::BarColumns days = BarsOn(support::Weekdays("2019/01/01", 260));
  EXPECT_EQ(DatesOf(days, store::BarPeriod::kDay, 400),
            (std::vector<std::string>{"1903", "1905", "1907", "1909", "1911"}));
  const base::BarColumns decades = BarsOn(support::Weekdays("1990/01/01", 8000));
  const auto texts = DatesOf(decades, store::BarPeriod::kDay, 500);
  EXPECT_EQ(texts.front(), "9501");
  EXPECT_LE(texts.size(), 7U);
  std::vector<base::Date> months;
  for (int year = 2015; year < 2020; ++year) {
    for (int month = 1; month <= 12; ++month) {
      months.push_back(*base::Date::FromYmd(year, month, 28));
    }
  }
  EXPECT_EQ(DatesOf(BarsOn(months), store::BarPeriod::kMonth, 400),
            (std::vector<std::string>{"2016", "2017", "2018", "2019"}));
}

TEST(DateTicks, FewDaysAreWrittenInFull) {
  const base::BarColumns days = BarsOn(support::Weekdays("2020/01/06", 5));
  EXPECT_EQ(DatesOf(days, store::BarPeriod::kDay, 150),
            (std::vector<std::string>{"20/01/06", "20/01/08", "20/01/10"}));
  EXPECT_TRUE(DatesOf(BarsOn({}), store::BarPeriod::kDay, 150).empty());
}

}  // namespace
}  // namespace orin::chart
