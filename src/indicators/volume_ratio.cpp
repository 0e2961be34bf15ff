#include "indicators/columns.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Int128;

namespace {

/// Bars without trade are passed over, so that no number of bars is known to hold n with volume:
/// the whole history is read, and the window is kept by its content instead of its length. The last
/// `n` bars with volume, up to an examined bar that moves on bar by bar.
class CountedBars {
 public:
  CountedBars(const BarsView& bars, int32_t n, int32_t t) : bars_(bars), n_(n), oldest_(t + 1) {
    while (counted_ < n_ && oldest_ > bars_.First() && bars_.HasData(oldest_ - 1)) {
      --oldest_;
      if (IsCounted(oldest_)) Count(oldest_, 1);
    }
  }

  void MoveTo(int32_t t) {
    // No value until n bars with volume lie after this one.
    if (!bars_.HasData(t)) return StartAfter(t);
    if (!IsCounted(t)) return;
    Count(t, 1);
    if (counted_ > n_) Count(oldest_++, -1);
    while (counted_ == n_ && !IsCounted(oldest_)) ++oldest_;
  }

  /// Nothing where the comparison of the oldest bar lacks a bar before it.
  void PutAt(int32_t t, const ColumnSink& sink) const {
    if (counted_ < n_ || oldest_ == bars_.First()) return;
    sink.Put(t, RoundedPercentage(rises_, total_));
  }

 private:
  [[nodiscard]] bool IsCounted(int32_t t) const { return bars_.Volume(t).Raw() > 0; }

  [[nodiscard]] Int128 RiseVolume(int32_t t) const {
    const Int128 volume = bars_.Volume(t).Raw();
    if (t == bars_.First() || bars_.Close(t) < bars_.Close(t - 1)) return 0;
    const bool unchanged = bars_.Close(t) == bars_.Close(t - 1);
    return unchanged ? base::DivideHalfToEven(volume, 2) : volume;
  }

  void Count(int32_t t, int32_t sign) {
    counted_ += sign;
    total_ += Int128{bars_.Volume(t).Raw()} * sign;
    rises_ += RiseVolume(t) * sign;
  }

  void StartAfter(int32_t t) {
    oldest_ = t + 1;
    counted_ = 0;
    total_ = 0;
    rises_ = 0;
  }

  BarsView bars_;
  int32_t n_;
  int32_t oldest_;  // no counted bar lies before it; it is one itself once n are counted
  int32_t counted_ = 0;
  Int128 total_ = 0;
  Int128 rises_ = 0;
};

}  // namespace

void VolumeRatio(const ColumnTask& task) {
  CountedBars counted(task.bars, task.parameters[0], task.first);
  counted.PutAt(task.first, task.sink);
  for (int32_t t = task.first + 1; t <= task.last; ++t) {
    counted.MoveTo(t);
    counted.PutAt(t, task.sink);
  }
}

}  // namespace orin::indicators
