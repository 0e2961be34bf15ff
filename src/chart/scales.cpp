#include "chart/scales.h"

#include <algorithm>
#include <cmath>

namespace orin::chart {

namespace {

// Farther away than any picture reaches, and near enough for every painter.
constexpr double kFarAway = 1e6;
// Equal values lie in the middle of a range that reaches this part of them to both sides.
constexpr double kRoomAroundOne = 0.02;
constexpr double kSmallestRoom = 0.0001;

}  // namespace

BarScale::BarScale(const BarRange& range, int32_t left, int32_t width)
    : range_(range),
      left_(left),
      width_(std::max(0, width)),
      pitch_(range.Places() > 0 ? width_ / range.Places() : 0) {}

std::optional<int32_t> BarScale::BarAt(double x) const {
  if (pitch_ <= 0 || x < left_ || x >= left_ + width_) return std::nullopt;
  const auto place = static_cast<int32_t>((x - left_) / pitch_);
  return range_.first + std::min(place, range_.Places() - 1);
}

ValueScale::ValueScale(const ValueRange& range, ScaleForm form, int32_t top, int32_t height)
    : range_(range), form_(form), bottom_(top + height - 0.5) {
  if (form_ == ScaleForm::kLogarithmic && range.low <= 0) form_ = ScaleForm::kLinear;
  const bool is_log = form_ == ScaleForm::kLogarithmic;
  origin_ = is_log ? std::log(range.low) : range.low;
  const double span = (is_log ? std::log(range.high) : range.high) - origin_;
  per_unit_ = span > 0 ? std::max(0, height - 1) / span : 0;
}

ValueScale ValueScale::Across(const ValueRange& range, int32_t left, int32_t width) {
  ValueScale scale(range, ScaleForm::kLinear, left, width);
  scale.bottom_ = left + 0.5;
  scale.per_unit_ = -scale.per_unit_;
  return scale;
}

double ValueScale::Y(double value) const {
  if (form_ == ScaleForm::kLogarithmic) {
    if (value <= 0) return kFarAway;
    value = std::log(value);
  }
  return std::clamp(bottom_ - (value - origin_) * per_unit_, -kFarAway, kFarAway);
}

int32_t ValueScale::Pixel(double value) const { return static_cast<int32_t>(std::floor(Y(value))); }

double ValueScale::ValueAt(double y) const {
  if (per_unit_ == 0) return range_.low;
  const double value = origin_ + (bottom_ - y) / per_unit_;
  return form_ == ScaleForm::kLogarithmic ? std::exp(value) : value;
}

void ValueExtent::Add(double value) {
  if (!std::isfinite(value)) return;
  if (IsEmpty()) {
    low_ = high_ = value;
    return;
  }
  low_ = std::min(low_, value);
  high_ = std::max(high_, value);
}

ValueRange ValueExtent::Range(double gap, ScaleForm form) const {
  if (IsEmpty()) return {};
  if (low_ == high_) {
    const double room = std::max(std::abs(low_) * kRoomAroundOne, kSmallestRoom);
    const bool is_price = form == ScaleForm::kLogarithmic && low_ > 0;
    return {is_price ? std::max(low_ - room, low_ / 2) : low_ - room, high_ + room};
  }
  if (form == ScaleForm::kLogarithmic && low_ > 0) {
    const double ratio = std::pow(high_ / low_, gap);
    return {low_ / ratio, high_ * ratio};
  }
  const double room = (high_ - low_) * gap;
  return {low_ - room, high_ + room};
}

}  // namespace orin::chart
