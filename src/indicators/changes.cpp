#include "indicators/columns.h"
#include "indicators/kernel_call.h"
#include "indicators/rolling_sum.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

constexpr int kRise = 1;
constexpr int kFall = -1;

Int128 Change(const BarsView& bars, int32_t t) {
  return Int128{bars.Close(t).Raw()} - bars.Close(t - 1).Raw();
}

/// What a bar adds to a sum over the rises or the falls: Measure, where its close moved that way.
template <int kDirection, typename Measure>
struct MoveTerm {
  BarsView bars;

  Int128 operator()(int32_t t) const {
    if (!bars.HasData(t) || !bars.HasData(t - 1)) return 0;
    const Int128 move = Change(bars, t) * kDirection;
    return move > 0 ? Measure::Of(bars, t, move) : 0;
  }
};

struct MoveVolume {
  static Int128 Of(const BarsView& bars, int32_t t, Int128) { return bars.Volume(t).Raw(); }
};
struct MoveSize {
  static Int128 Of(const BarsView&, int32_t, Int128 move) { return move; }
};
struct MoveCount {
  static Int128 Of(const BarsView&, int32_t, Int128) { return Currency::kScale; }
};

// The bar before the span is the base of its first change, so that it is the one tested.
template <int kDirection, typename Measure>
void PutMoves(const ColumnTask& task) {
  using Term = MoveTerm<kDirection, Measure>;
  const int32_t n = task.parameters[0];
  RollingSum<Int128, Term> sum(n, task.bars.First(), Term{task.bars});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const Int128 total = sum.At(t);
    if (task.bars.HasData(t - n)) task.sink.Put(t, ToCurrency(total));
  }
}

struct RisesAndFalls {
  Int128 rises = 0;
  Int128 falls = 0;

  RisesAndFalls& operator+=(const RisesAndFalls& other) {
    rises += other.rises;
    falls += other.falls;
    return *this;
  }
  RisesAndFalls& operator-=(const RisesAndFalls& other) {
    rises -= other.rises;
    falls -= other.falls;
    return *this;
  }
};

/// Bars without data are summed like others, unlike in MoveTerm.
struct ChangeTerm {
  BarsView bars;

  RisesAndFalls operator()(int32_t t) const {
    const Int128 change = Change(bars, t);
    return change > 0 ? RisesAndFalls{change, 0} : RisesAndFalls{0, -change};
  }
};

void PutRsi(const ColumnTask& task) {
  const int32_t n = task.parameters[0];
  RollingSum<RisesAndFalls, ChangeTerm> sum(n, task.bars.First(), ChangeTerm{task.bars});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const RisesAndFalls& total = sum.At(t);
    if (!task.bars.HasData(t - n + 1)) continue;
    task.sink.Put(t, RoundedPercentage(total.rises, total.rises + total.falls));
  }
}

}  // namespace

void VolumeOfRises(const ColumnTask& task) { PutMoves<kRise, MoveVolume>(task); }
void VolumeOfFalls(const ColumnTask& task) { PutMoves<kFall, MoveVolume>(task); }
void SumOfRises(const ColumnTask& task) { PutMoves<kRise, MoveSize>(task); }
void SumOfFalls(const ColumnTask& task) { PutMoves<kFall, MoveSize>(task); }
void CountOfRises(const ColumnTask& task) { PutMoves<kRise, MoveCount>(task); }
void CountOfFalls(const ColumnTask& task) { PutMoves<kFall, MoveCount>(task); }

void Rsi(const ColumnTask& task) {
  const auto fast = [&task](int64_t* out) {
    return task.kernels->relative_strength(RawIntegers(task.bars.CloseAt(task.first)),
                                           RawIntegers(task.bars.VolumeAt(task.first)),
                                           task.parameters[0], BarCount(task), out);
  };
  ComputeFastOr(task, fast, PutRsi);
}

}  // namespace orin::indicators
