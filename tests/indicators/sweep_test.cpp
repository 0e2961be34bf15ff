#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <string_view>
#include <vector>

#include "indicators/bar_table.h"
#include "indicators/indicator.h"

namespace orin::indicators {
namespace {

using base::BarColumns;
using base::BarsView;
using base::Currency;
using base::ValueColumn;

constexpr int32_t kBiggest = std::numeric_limits<int32_t>::max();
constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();
constexpr Currency kFallback = Currency::FromInt(-777);

/// The nearest parameters that the indicator accepts.
Parameters Accepted(const Indicator& indicator, Parameters wanted) {
  for (size_t i = 0; i < indicator.ParameterCount(); ++i) {
    const Parameter& limits = indicator.parameters[i];
    wanted[i] = std::clamp(wanted[i], limits.minimum, limits.maximum);
  }
  return wanted;
}

Parameters RandomParameters(const Indicator& indicator, std::mt19937& random, int32_t most) {
  Parameters parameters = {};
  for (size_t i = 0; i < indicator.ParameterCount(); ++i) {
    const int32_t least = std::max(-most, std::min(1, indicator.parameters[i].minimum));
    parameters[i] = std::uniform_int_distribution<int32_t>(least, most)(random);
  }
  return Accepted(indicator, parameters);
}

void ExpectSame(const ValueColumn& a, size_t place_a, const ValueColumn& b, size_t place_b) {
  ASSERT_EQ(a.Has(place_a), b.Has(place_b));
  if (a.Has(place_a)) {
    EXPECT_EQ(a.At(place_a).ToText(), b.At(place_b).ToText());
  }
}

TEST(IndicatorSweep, RangeGivesWhatEachBarAloneGives) {
  std::mt19937 random(1);
  std::map<std::string_view, int> values;
  for (uint32_t market = 0; market < 30; ++market) {
    const BarColumns columns = support::RandomBars(market, 60);
    const BarsView bars(columns);
    for (const Indicator& indicator : Indicators()) {
      const Parameters parameters = RandomParameters(indicator, random, market % 2 == 0 ? 4 : 20);
      SCOPED_TRACE(std::string(indicator.name) + " market " + std::to_string(market));
      const int32_t first = std::uniform_int_distribution<int32_t>(1, 40)(random);
      ValueColumn range;
      ComputeColumn(indicator, bars, parameters, first, 60, range);
      for (int32_t t = first; t <= 60; ++t) {
        ValueColumn single;
        ComputeColumn(indicator, bars, parameters, t, t, single);
        ExpectSame(range, static_cast<size_t>(t - first), single, 0);
        values[indicator.name] += single.Has(0);
      }
    }
  }
  for (const auto& [name, count] : values) EXPECT_GT(count, 100) << name;
}

TEST(IndicatorSweep, LaterBarsDoNotCount) {
  std::mt19937 random(2);
  for (uint32_t market = 0; market < 20; ++market) {
    const BarColumns columns = support::RandomBars(market, 40);
    const BarsView bars(columns);
    for (const Indicator& indicator : Indicators()) {
      const Parameters parameters = RandomParameters(indicator, random, 8);
      SCOPED_TRACE(indicator.name);
      ValueColumn whole;
      ValueColumn cut;
      ComputeColumn(indicator, bars, parameters, 1, 40, whole);
      ComputeColumn(indicator, bars.Until(25), parameters, 1, 25, cut);
      for (size_t place = 0; place < 25; ++place) ExpectSame(whole, place, cut, place);
    }
  }
}

TEST(IndicatorSweep, HistoryOfTheTableIsAllThatIsRead) {
  std::mt19937 random(3);
  for (uint32_t market = 0; market < 20; ++market) {
    const BarColumns columns = support::RandomBars(market, 40);
    for (const Indicator& indicator : Indicators()) {
      const Parameters parameters = RandomParameters(indicator, random, 8);
      const int64_t history = indicator.history(parameters);
      if (history == Indicator::kUnbounded) continue;
      SCOPED_TRACE(indicator.name);
      const int32_t first = 30 - static_cast<int32_t>(history);
      BarColumns loaded;
      for (int32_t t = first; t <= 40; ++t) loaded.Append(columns.At(static_cast<size_t>(t - 1)));
      ValueColumn whole;
      ValueColumn part;
      ComputeColumn(indicator, BarsView(columns), parameters, 30, 40, whole);
      ComputeColumn(indicator, BarsView(loaded, first), parameters, 30, 40, part);
      for (size_t place = 0; place < 11; ++place) ExpectSame(whole, place, part, place);
    }
  }
}

TEST(IndicatorSweep, OneBarLessThanTheHistoryGivesNothing) {
  const BarColumns columns = support::RandomBars(4, 30);
  for (const Indicator& indicator : Indicators()) {
    const Parameters parameters = Accepted(indicator, {5, 3, 4});
    const int64_t history = indicator.history(parameters);
    if (history == Indicator::kUnbounded) continue;
    SCOPED_TRACE(indicator.name);
    const BarsView bars = BarsView(columns).Until(static_cast<int32_t>(history));
    Currency value = base::kNoValue;
    ComputeInto(indicator, bars, parameters, history, history, Span::kWhole,
                ColumnSink(&value, history));
    EXPECT_EQ(value, base::kNoValue);
  }
}

TEST(IndicatorSweep, SillyParametersGiveTheFallback) {
  for (int count = 0; count <= 20; ++count) {
    const BarColumns columns = support::RandomBars(5, count);
    const BarsView bars(columns);
    for (const Indicator& indicator : Indicators()) {
      if (indicator.ParameterCount() == 0) continue;
      for (const int32_t silly : {0, -1, kSmallest}) {
        for (const Parameters& parameters : {Parameters{silly, 2}, Parameters{silly, silly}}) {
          EXPECT_EQ(ComputeValue(indicator, bars, parameters, 0, kFallback), kFallback)
              << indicator.name;
        }
      }
      const Parameters endless = {kBiggest, kBiggest};
      if (indicator.span == Span::kWhole) {
        EXPECT_EQ(ComputeValue(indicator, bars, endless, 0, kFallback), kFallback);
      }
    }
  }
}

TEST(IndicatorSweep, BarsThatDoNotExistGiveTheFallback) {
  for (int count = 0; count <= 20; ++count) {
    const BarColumns columns = support::RandomBars(6, count);
    const BarsView bars(columns);
    for (const Indicator& indicator : Indicators()) {
      for (const int32_t offset : {1, -count, -count - 1, kBiggest, kSmallest}) {
        EXPECT_EQ(ComputeValue(indicator, bars, {1, 1}, offset, kFallback), kFallback)
            << indicator.name << " " << offset;
      }
      ValueColumn column;
      ComputeColumn(indicator, bars, {2, 2}, -3, count + 3, column);
      ASSERT_EQ(column.Size(), static_cast<size_t>(count + 7));
      for (const size_t outside : {size_t{0}, size_t{3}, column.Size() - 1}) {
        EXPECT_EQ(column.Has(outside), 0);
      }
    }
  }
}

TEST(IndicatorSweep, BoundaryValuesOverflowNothing) {
  constexpr int64_t kLowest = std::numeric_limits<int64_t>::min();
  constexpr int64_t kHighest = std::numeric_limits<int64_t>::max();
  std::mt19937 random(7);
  const auto any = [&random] {
    const int64_t choices[] = {kLowest, kHighest, 0, -10000, 10000, kHighest - 1};
    return Currency::FromRaw(choices[random() % 6]);
  };
  BarColumns columns;
  for (int i = 0; i < 30; ++i) {
    columns.Append({base::Date::FromSerial(40000 + i), any(), any(), any(), any(), any()});
  }
  for (const Indicator& indicator : Indicators()) {
    for (const Parameters& wanted : {Parameters{1, 1, 1}, Parameters{7, 5, 3}}) {
      const Parameters parameters = Accepted(indicator, wanted);
      ValueColumn column;
      ComputeColumn(indicator, BarsView(columns), parameters, 1, 30, column);
      for (size_t place = 0; place < 30; ++place) {
        ValueColumn single;
        const auto t = static_cast<int32_t>(place + 1);
        ComputeColumn(indicator, BarsView(columns), parameters, t, t, single);
        ExpectSame(column, place, single, 0);
      }
    }
  }
}

}  // namespace
}  // namespace orin::indicators
