#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace orin::indicators {

/// The sum of term(u) over the `n` bars up to t, but not over bars before `oldest`. Asked for
/// rising t one by one it rolls; any other t starts anew. Sum needs += and -= and must be exact,
/// so that rolling gives the very value of starting anew. A term may have a state of its own:
/// bars that enter and bars that leave go through two copies, each called for rising bars.
template <typename Sum, typename Term>
class RollingSum {
 public:
  RollingSum(int32_t n, int32_t oldest, Term term)
      : n_(n), oldest_(oldest), entering_(term), leaving_(std::move(term)) {}

  const Sum& At(int32_t t) {
    if (t == at_ + 1) {
      sum_ += entering_(t);
      if (t - n_ >= oldest_) sum_ -= leaving_(t - n_);
    } else {
      sum_ = Sum{};
      for (int32_t u = std::max(oldest_, t - n_ + 1); u <= t; ++u) sum_ += entering_(u);
    }
    at_ = t;
    return sum_;
  }

 private:
  int32_t n_;
  int32_t oldest_;
  Term entering_;
  Term leaving_;
  Sum sum_{};
  int32_t at_ = std::numeric_limits<int32_t>::min();
};

}  // namespace orin::indicators
