#include <algorithm>
#include <cstddef>
#include <vector>

#include "indicators/average_columns.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

/// The bars with data of a window that moves on bar by bar, kept sorted by close: a bar that
/// comes or goes costs one search instead of sorting them all again.
class RankedBars {
 public:
  explicit RankedBars(const BarsView& bars) : bars_(bars) {}

  void Enter(int32_t t) {
    if (!bars_.HasData(t)) return;
    const Place place = {bars_.Close(t), ++entered_};
    places_.insert(std::upper_bound(places_.begin(), places_.end(), place), place);
  }

  /// Bars leave in the order they entered.
  void Leave(int32_t t) {
    if (!bars_.HasData(t)) return;
    const Place place = {bars_.Close(t), ++left_};
    places_.erase(std::lower_bound(places_.begin(), places_.end(), place));
  }

  [[nodiscard]] Int128 Count() const { return static_cast<Int128>(places_.size()); }

  /// Σ (2d)²: a mean rank may end in a half, twice the rank is whole.
  [[nodiscard]] Int128 SquaresOfTwiceTheDifferences() const {
    Int128 sum = 0;
    for (size_t begin = 0; begin < places_.size();) {
      size_t end = begin + 1;
      while (end < places_.size() && places_[end].close == places_[begin].close) ++end;
      const auto twice_close_rank = static_cast<int64_t>(begin + 1 + end);
      for (; begin < end; ++begin) {
        const int64_t difference = 2 * (places_[begin].order - left_) - twice_close_rank;
        sum += Int128{difference} * difference;
      }
    }
    return sum;
  }

 private:
  struct Place {
    Currency close;
    int64_t order;  // among all bars that ever entered

    auto operator<=>(const Place&) const = default;
  };

  BarsView bars_;
  std::vector<Place> places_;
  int64_t entered_ = 0;
  int64_t left_ = 0;
};

}  // namespace

void RankCorrelation(const ColumnTask& task) {
  const int32_t n = task.parameters[0];
  RankedBars ranked(task.bars);
  for (int32_t t = task.first - n + 1; t < task.first; ++t) ranked.Enter(t);
  for (int32_t t = task.first; t <= task.last; ++t) {
    ranked.Enter(t);
    const Int128 m = ranked.Count();
    if (m >= 2 && task.bars.HasData(t - n + 1)) {
      const Int128 whole = 2 * m * (m * m - 1);
      task.sink.Put(t, Percentage(whole - 3 * ranked.SquaresOfTwiceTheDifferences(), whole));
    }
    ranked.Leave(t - n + 1);
  }
}

}  // namespace orin::indicators
