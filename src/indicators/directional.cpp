#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "indicators/columns.h"
#include "indicators/kernel_call.h"
#include "indicators/rolling_sum.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

/// Directional moves and true range of a bar against the bar before, summed.
struct Movement {
  Int128 plus = 0;
  Int128 minus = 0;
  Int128 true_range = 0;

  Movement& operator+=(const Movement& other) {
    plus += other.plus;
    minus += other.minus;
    true_range += other.true_range;
    return *this;
  }
  Movement& operator-=(const Movement& other) {
    plus -= other.plus;
    minus -= other.minus;
    true_range -= other.true_range;
    return *this;
  }
};

struct MovementTerm {
  BarsView bars;

  Movement operator()(int32_t t) const {
    const Int128 high = bars.High(t).Raw();
    const Int128 low = bars.Low(t).Raw();
    const Int128 close_before = bars.Close(t - 1).Raw();
    const Int128 up = high - bars.High(t - 1).Raw();
    const Int128 down = bars.Low(t - 1).Raw() - low;
    Movement movement;
    // At most one of the two: a bar that reaches further both ways moved in the larger direction.
    if (up > down && up > 0) movement.plus = up;
    if (down > up && down > 0) movement.minus = down;
    movement.true_range = std::max({high - low, high - close_before, close_before - low});
    return movement;
  }
};

/// +DI and -DI over n bars, for rising t.
class DirectionalWindow {
 public:
  DirectionalWindow(const BarsView& bars, int32_t n)
      : bars_(bars), n_(n), sum_(n, bars.First(), MovementTerm{bars}) {}

  void MoveTo(int32_t t) {
    total_ = sum_.At(t);
    usable_ = bars_.HasData(t - n_);
  }
  [[nodiscard]] std::optional<Currency> Plus() const { return Index(total_.plus); }
  [[nodiscard]] std::optional<Currency> Minus() const { return Index(total_.minus); }

 private:
  [[nodiscard]] std::optional<Currency> Index(Int128 moves) const {
    return usable_ ? Percentage(moves, total_.true_range) : std::nullopt;
  }

  BarsView bars_;
  int32_t n_;
  RollingSum<Movement, MovementTerm> sum_;
  Movement total_;
  bool usable_ = false;
};

struct DxSum {
  Int128 raw = 0;
  int32_t missing = 0;

  DxSum& operator+=(const DxSum& other) {
    raw += other.raw;
    missing += other.missing;
    return *this;
  }
  DxSum& operator-=(const DxSum& other) {
    raw -= other.raw;
    missing -= other.missing;
    return *this;
  }
};

Int128 Magnitude(Int128 value) { return value < 0 ? -value : value; }

struct DxTerm {
  DirectionalWindow window;

  DxSum operator()(int32_t t) {
    window.MoveTo(t);
    const std::optional<Currency> plus = window.Plus();
    const std::optional<Currency> minus = window.Minus();
    // Counted and not skipped: a mean over fewer bars would be another indicator.
    if (!plus || !minus) return {0, 1};
    const Int128 difference = Int128{plus->Raw()} - minus->Raw();
    const Int128 sum = Int128{plus->Raw()} + minus->Raw();
    const std::optional<double> ratio = Ratio(Magnitude(difference), Magnitude(sum));
    // Rounded before it is summed: the indexes it is made of are shown with four decimals, and a
    // sum of such integers can lose the bars that leave the window, which one of doubles cannot.
    const std::optional<Currency> dx = ratio ? Currency::FromDouble(*ratio) : std::nullopt;
    return dx ? DxSum{dx->Raw(), 0} : DxSum{0, 1};
  }
};

template <typename Index>
void PutDirectional(const ColumnTask& task, Index index) {
  DirectionalWindow window(task.bars, task.parameters[0]);
  for (int32_t t = task.first; t <= task.last; ++t) {
    window.MoveTo(t);
    task.sink.Put(t, index(window));
  }
}

void PutPlusDi(const ColumnTask& task) {
  PutDirectional(task, [](const DirectionalWindow& window) { return window.Plus(); });
}

void PutMinusDi(const ColumnTask& task) {
  PutDirectional(task, [](const DirectionalWindow& window) { return window.Minus(); });
}

void PutAdx(const ColumnTask& task) {
  const int32_t m = task.parameters[0];
  const int32_t n = task.parameters[1];
  RollingSum<DxSum, DxTerm> sum(m, task.bars.First(), DxTerm{DirectionalWindow(task.bars, n)});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const DxSum& total = sum.At(t);
    if (total.missing != 0 || !task.bars.HasData(t - m + 1)) continue;
    const std::optional<Currency> dx = ToCurrency(total.raw);
    if (dx) task.sink.Put(t, Currency::FromDouble(dx->ToDouble() / m * 100));
  }
}

// The fast loops make +DI and -DI together, so that each needs a place for the other.
class OtherPlaces {
 public:
  explicit OtherPlaces(size_t count) {
    if (count > few_.size()) many_.resize(count);
  }
  int64_t* Data() { return many_.empty() ? few_.data() : many_.data(); }

 private:
  std::array<int64_t, 64> few_;
  std::vector<int64_t> many_;
};

bool ComputeAdx(const ColumnTask& task, int64_t* out) {
  // A mean over so many days that their sum is no longer exact is left to the plain way.
  constexpr int32_t kMostDays = 1 << 20;
  const int32_t m = task.parameters[0];
  if (m > kMostDays) return false;
  const size_t before = static_cast<size_t>(m) - 1;
  const size_t count = BarCount(task) + before;
  OtherPlaces plus(count);
  OtherPlaces minus(count);
  if (!task.kernels->directional_indexes(PriceBarsAt(task.bars, task.first - m + 1),
                                         task.parameters[1], count, plus.Data(), minus.Data())) {
    return false;
  }
  task.kernels->directional_movement(plus.Data(), minus.Data(), count);
  task.kernels->average_movement(plus.Data() + before, RawIntegers(task.bars.VolumeAt(task.first)),
                                 m, BarCount(task), out);
  return true;
}

}  // namespace

void PlusDi(const ColumnTask& task) {
  OtherPlaces minus(BarCount(task));
  const auto fast = [&task, &minus](int64_t* out) {
    return task.kernels->directional_indexes(PriceBarsAt(task.bars, task.first), task.parameters[0],
                                             BarCount(task), out, minus.Data());
  };
  ComputeFastOr(task, fast, PutPlusDi);
}

void MinusDi(const ColumnTask& task) {
  OtherPlaces plus(BarCount(task));
  const auto fast = [&task, &plus](int64_t* out) {
    return task.kernels->directional_indexes(PriceBarsAt(task.bars, task.first), task.parameters[0],
                                             BarCount(task), plus.Data(), out);
  };
  ComputeFastOr(task, fast, PutMinusDi);
}

void Adx(const ColumnTask& task) {
  ComputeFastOr(
      task, [&task](int64_t* out) { return ComputeAdx(task, out); }, PutAdx);
}

}  // namespace orin::indicators
