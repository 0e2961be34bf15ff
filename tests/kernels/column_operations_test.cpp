#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "base/currency.h"
#include "base/value_column.h"
#include "kernels/kernels.h"

namespace orin::kernels {
namespace {

using base::Currency;

constexpr int64_t kHighest = std::numeric_limits<int64_t>::max();

/// Every pair of the edges of the range, zero and its neighbours, and places without a value.
struct Pairs {
  std::vector<int64_t> left;
  std::vector<int64_t> right;

  Pairs() {
    const int64_t edges[] = {kNone, -kHighest, -kHighest + 1, -10001,       -1,
                             0,     1,         10000,         kHighest - 1, kHighest};
    for (const int64_t a : edges) {
      for (const int64_t b : edges) {
        left.push_back(a);
        right.push_back(b);
      }
    }
  }
};

class ColumnOperations : public testing::TestWithParam<Level> {
 protected:
  const Kernels& kernels() { return *GetParam().kernels; }
  Pairs pairs_;
  size_t count_ = pairs_.left.size();
  std::vector<int64_t> out_ = std::vector<int64_t>(count_);
};

TEST_P(ColumnOperations, SumsAndDifferencesStayInTheRangeOrHaveNoValue) {
  const auto expected = [this](size_t i, bool adds) {
    if (pairs_.left[i] == kNone || pairs_.right[i] == kNone) return kNone;
    const Currency left = Currency::FromRaw(pairs_.left[i]);
    const Currency right = Currency::FromRaw(pairs_.right[i]);
    return (adds ? left.Plus(right) : left.Minus(right)).value_or(base::kNoValue).Raw();
  };
  kernels().add(pairs_.left.data(), pairs_.right.data(), count_, out_.data());
  for (size_t i = 0; i < count_; ++i) {
    EXPECT_EQ(out_[i], expected(i, true)) << pairs_.left[i] << " + " << pairs_.right[i];
  }
  kernels().subtract(pairs_.left.data(), pairs_.right.data(), count_, out_.data());
  for (size_t i = 0; i < count_; ++i) {
    EXPECT_EQ(out_[i], expected(i, false)) << pairs_.left[i] << " - " << pairs_.right[i];
  }
}

TEST_P(ColumnOperations, NarrowingKeepsOpenDaysWhoseComparisonIsTrue) {
  for (unsigned outcomes = 0; outcomes < 8; ++outcomes) {
    const Outcomes when = {(outcomes & 1) != 0 ? -1 : 0, (outcomes & 2) != 0 ? -1 : 0,
                           (outcomes & 4) != 0 ? -1 : 0};
    for (size_t i = 0; i < count_; ++i) out_[i] = i % 3 == 0 ? 0 : -1;
    const bool any =
        kernels().narrow(pairs_.left.data(), when, pairs_.right.data(), count_, out_.data());
    bool expected_any = false;
    for (size_t i = 0; i < count_; ++i) {
      const int64_t a = pairs_.left[i];
      const int64_t b = pairs_.right[i];
      const int64_t outcome = a < b ? when.less : a == b ? when.equal : when.greater;
      const int64_t expected = i % 3 == 0 || a == kNone || b == kNone ? 0 : outcome;
      EXPECT_EQ(out_[i], expected) << a << " " << b << " " << outcomes;
      expected_any = expected_any || expected != 0;
    }
    EXPECT_EQ(any, expected_any);
  }
}

TEST_P(ColumnOperations, DoublesAreRoundedHalvesToEven) {
  const double values[] = {0.5, 1.5, -2.5, 33.4, 1e15, std::numeric_limits<double>::quiet_NaN()};
  const int64_t expected[] = {0, 2, -2, 33, 1'000'000'000'000'000, kNone};
  int64_t out[std::size(values)];
  ASSERT_TRUE(kernels().rounded(values, std::size(values), out));
  for (size_t i = 0; i < std::size(values); ++i) EXPECT_EQ(out[i], expected[i]) << values[i];
  const double too_large[] = {1, 3e15};
  EXPECT_FALSE(kernels().rounded(too_large, 2, out));
}

INSTANTIATE_TEST_SUITE_P(Levels, ColumnOperations,
                         testing::ValuesIn(Levels().begin(), Levels().end()),
                         [](const auto& level) { return "Level" + std::to_string(level.index); });

}  // namespace
}  // namespace orin::kernels
