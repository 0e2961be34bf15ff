#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "base/currency.h"

namespace orin::indicators {

struct Highest {
  static bool Beats(base::Currency later, base::Currency earlier) { return later >= earlier; }
};
struct Lowest {
  static bool Beats(base::Currency later, base::Currency earlier) { return later <= earlier; }
};

/// An extreme value and the bar that holds it; among equal values the newest.
struct Extreme {
  int32_t bar = 0;  // 0: none
  base::Currency value;
};

/// The extreme of source(u), an optional value, over a window of bars. The first few windows are
/// searched one by one without memory of their own; who goes on bar by bar gets a queue of the
/// bars that can still become the extreme. `oldest` must never fall while t rises by one.
template <typename Order, typename Source>
class WindowExtreme {
 public:
  explicit WindowExtreme(Source source) : source_(std::move(source)) {}

  /// Over the bars oldest..t, which may be none.
  Extreme At(int32_t oldest, int32_t t) {
    run_ = t == at_ + 1 ? run_ + 1 : 1;
    at_ = t;
    if (run_ <= kSearched) return Search(oldest, t);
    if (run_ == kSearched + 1) {
      queue_.clear();
      head_ = 0;
      for (int32_t u = oldest; u < t; ++u) Push(u);
    }
    Push(t);
    while (head_ < queue_.size() && queue_[head_].bar < oldest) ++head_;
    return head_ < queue_.size() ? queue_[head_] : Extreme{};
  }

 private:
  static constexpr int32_t kSearched = 6;

  Extreme Search(int32_t oldest, int32_t t) {
    Extreme best;
    for (int32_t u = oldest; u <= t; ++u) {
      const std::optional<base::Currency> value = source_(u);
      if (value && (best.bar == 0 || Order::Beats(*value, best.value))) best = {u, *value};
    }
    return best;
  }

  void Push(int32_t u) {
    const std::optional<base::Currency> value = source_(u);
    if (!value) return;
    while (queue_.size() > head_ && Order::Beats(*value, queue_.back().value)) queue_.pop_back();
    queue_.push_back({u, *value});
  }

  Source source_;
  std::vector<Extreme> queue_;  // from head_ on: oldest first, each beaten by none after it
  size_t head_ = 0;
  int32_t run_ = 0;
  int32_t at_ = std::numeric_limits<int32_t>::min();
};

}  // namespace orin::indicators
