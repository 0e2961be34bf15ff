#include "indicators/kagi.h"

#include <optional>

#include "indicators/trend_columns.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;

namespace {

/// Follows the line over closes, one after the other.
class KagiWalk {
 public:
  // Half of the last decimal less: a move that rounds to the rate, ties to even, is the rate.
  explicit KagiWalk(int32_t rate) : least_move_(rate * double{Currency::kScale} - 0.5) {}

  void Take(int32_t t, Currency close) {
    if (close >= highest_.price) {
      highest_ = {t, close};
    } else if (direction_ != Direction::kFalling && Move(close, highest_) <= -least_move_) {
      return Begin(Direction::kFalling, highest_, t, close);
    }
    if (close <= lowest_.price) {
      lowest_ = {t, close};
    } else if (direction_ != Direction::kRising && Move(close, lowest_) >= least_move_) {
      Begin(Direction::kRising, lowest_, t, close);
    }
  }

  /// To the state before the first close.
  void Restart() {
    direction_ = Direction::kNone;
    corners_.clear();
    highest_ = kHighestStart;
    lowest_ = kLowestStart;
  }

  [[nodiscard]] bool HasLine() const { return direction_ != Direction::kNone; }
  [[nodiscard]] bool IsRising() const { return direction_ == Direction::kRising; }
  /// Only where there is a line.
  [[nodiscard]] const KagiPoint& End() const { return IsRising() ? highest_ : lowest_; }
  /// The beginning and the turning points.
  [[nodiscard]] const std::vector<KagiPoint>& Corners() const { return corners_; }
  [[nodiscard]] int32_t Turns() const {
    return HasLine() ? static_cast<int32_t>(corners_.size()) - 1 : 0;
  }

 private:
  enum class Direction : uint8_t { kNone, kRising, kFalling };

  static constexpr KagiPoint kHighestStart = {0, Currency::FromInt(0)};
  static constexpr KagiPoint kLowestStart = {0, Currency::FromInt(999'999'999)};

  /// In per cent × 10000; 0 from an extreme that is no price.
  static double Move(Currency close, const KagiPoint& extreme) {
    if (extreme.bar == 0 || extreme.price <= Currency()) return 0;
    const double ratio =
        static_cast<double>(close.Raw()) / static_cast<double>(extreme.price.Raw());
    return (ratio - 1) * 100 * Currency::kScale;
  }

  void Begin(Direction direction, const KagiPoint& corner, int32_t t, Currency close) {
    corners_.push_back(corner);
    direction_ = direction;
    highest_ = {t, close};
    lowest_ = {t, close};
  }

  double least_move_;
  Direction direction_ = Direction::kNone;
  KagiPoint highest_ = kHighestStart;
  KagiPoint lowest_ = kLowestStart;
  std::vector<KagiPoint> corners_;
};

void TakeBars(KagiWalk& walk, const BarsView& bars, int32_t first, int32_t last) {
  for (int32_t t = first; t <= last; ++t) {
    if (bars.HasData(t)) walk.Take(t, bars.Close(t));
  }
}

/// Puts result(walk) over the n bars up to each bar. Where a line turns depends on the bar it is
/// followed from, so that every span is walked for itself.
template <typename Result>
void PutLines(const ColumnTask& task, Result result) {
  const int32_t n = task.parameters[0];
  KagiWalk walk(task.parameters[1]);
  for (int32_t t = task.first; t <= task.last; ++t) {
    const int32_t oldest = t - n + 1;
    if (!task.bars.HasData(oldest)) continue;
    walk.Restart();
    TakeBars(walk, task.bars, oldest, t);
    task.sink.Put(t, result(walk));
  }
}

std::optional<Currency> TurningPrice(const KagiWalk& walk, int32_t turn) {
  if (-turn > walk.Turns() || !walk.HasLine()) return std::nullopt;
  if (turn == 0) return walk.End().price;
  return walk.Corners().end()[turn].price;
}

}  // namespace

KagiLine BuildKagi(const BarsView& bars, int32_t rate) {
  if (rate < 1) return {};
  KagiWalk walk(rate);
  TakeBars(walk, bars, bars.First(), bars.Count());
  if (!walk.HasLine()) return {};
  KagiLine line = {walk.Corners(), walk.IsRising(), walk.Turns()};
  line.points.push_back(walk.End());
  return line;
}

void KagiValue(const ColumnTask& task) {
  const int32_t turn = task.parameters[2];
  PutLines(task, [turn](const KagiWalk& walk) { return TurningPrice(walk, turn); });
}

void KagiTurns(const ColumnTask& task) {
  PutLines(task, [](const KagiWalk& walk) { return Currency::FromInt(walk.Turns()); });
}

}  // namespace orin::indicators
