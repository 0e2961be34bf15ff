#include "indicators/parabolic.h"

#include <algorithm>
#include <array>

#include "indicators/trend_columns.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;

namespace {

constexpr int32_t kSeedBars = 3;

/// Follows the stop over bars with data, one after the other.
class ParabolicWalk {
 public:
  explicit ParabolicWalk(const ParabolicFactors& factors) : factors_(factors) { ResetFactor(); }

  void Take(Currency high, Currency low) {
    if (taken_ < kSeedBars) {
      Seed(high, low);
    } else {
      Move(high, low);
    }
    before_ = {before_[1], {high, low}};
  }

  [[nodiscard]] bool HasStop() const { return taken_ == kSeedBars; }
  [[nodiscard]] ParabolicStop Stop() const {
    return {Shown(), rising_ ? StopSide::kBuy : StopSide::kSell};
  }

 private:
  struct Range {
    Currency high;
    Currency low;
  };

  void Seed(Currency high, Currency low) {
    stop_ = taken_ == 0 ? high.ToDouble() : std::max(stop_, high.ToDouble());
    extreme_ = taken_ == 0 ? low : std::min(extreme_, low);
    ++taken_;
  }

  void Move(Currency high, Currency low) {
    stop_ += factor_.ToDouble() * (extreme_.ToDouble() - stop_);
    KeepOutOfBarsBefore();
    const bool reached = rising_ ? low <= Shown() : high >= Shown();
    if (reached) return Reverse(high, low);
    const bool new_extreme = rising_ ? high > extreme_ : low < extreme_;
    if (!new_extreme) return;
    extreme_ = rising_ ? high : low;
    factor_ = std::min(Currency::FromRaw(factor_.Raw() + factors_.step.Raw()), factors_.maximum);
  }

  void KeepOutOfBarsBefore() {
    if (rising_) {
      stop_ = std::min(stop_, std::min(before_[0].low, before_[1].low).ToDouble());
    } else {
      stop_ = std::max(stop_, std::max(before_[0].high, before_[1].high).ToDouble());
    }
  }

  // A bar that goes beyond the old extreme and reaches the stop as well would otherwise have its
  // new stop inside itself.
  void Reverse(Currency high, Currency low) {
    stop_ = (rising_ ? std::max(extreme_, high) : std::min(extreme_, low)).ToDouble();
    extreme_ = rising_ ? low : high;
    rising_ = !rising_;
    ResetFactor();
  }

  void ResetFactor() { factor_ = std::min(factors_.initial, factors_.maximum); }

  [[nodiscard]] Currency Shown() const {
    return Currency::FromDouble(stop_).value_or(base::kNoValue);
  }

  ParabolicFactors factors_;
  int32_t taken_ = 0;  // of the bars the first stop is made of
  bool rising_ = false;
  double stop_ = 0;
  Currency extreme_;
  Currency factor_;
  std::array<Range, 2> before_;
};

/// Calls show(t, stop) for every bar up to `last` that has a stop.
template <typename Show>
void WalkStops(const BarsView& bars, int32_t last, const ParabolicFactors& factors, Show show) {
  ParabolicWalk walk(factors);
  for (int32_t t = bars.First(); t <= last; ++t) {
    if (bars.HasData(t)) walk.Take(bars.High(t), bars.Low(t));
    if (walk.HasStop()) show(t, walk);
  }
}

Currency Hundredths(int32_t count) { return Currency::FromRaw(count * (Currency::kScale / 100)); }

}  // namespace

bool ParabolicFactors::AreValid() const {
  constexpr Currency kZero;
  constexpr Currency kOne = Currency::FromInt(1);
  return initial > kZero && initial <= kOne && step >= kZero && step <= kOne && maximum > kZero &&
         maximum <= kOne;
}

ParabolicPath BuildParabolic(const BarsView& bars, const ParabolicFactors& factors) {
  ParabolicPath path;
  if (!factors.AreValid()) return path;
  WalkStops(bars, bars.Count(), factors, [&path](int32_t t, const ParabolicWalk& walk) {
    if (path.stops.empty()) path.first_bar = t;
    path.stops.push_back(walk.Stop());
  });
  return path;
}

void ParabolicSar(const ColumnTask& task) {
  const Parameters& p = task.parameters;
  const ParabolicFactors factors = {Hundredths(p[0]), Hundredths(p[1]), Hundredths(p[2])};
  WalkStops(task.bars, task.last, factors, [&task](int32_t t, const ParabolicWalk& walk) {
    if (t >= task.first) task.sink.Put(t, walk.Stop().stop);
  });
}

}  // namespace orin::indicators
