#pragma once

#include <cstdint>
#include <optional>

#include "chart/draw_list.h"

namespace orin::chart {

/// The numbers of the bars first..last of a view, with free places right of them.
struct BarRange {
  int32_t first = 1;
  int32_t last = 0;
  int32_t margin = 0;

  [[nodiscard]] int32_t Count() const { return last - first + 1; }
  [[nodiscard]] int32_t Places() const { return Count() + margin; }
  bool operator==(const BarRange&) const = default;
};

/// Bars across: each has an equal part of the width, in pixels.
class BarScale {
 public:
  BarScale() = default;
  BarScale(const BarRange& range, int32_t left, int32_t width);

  [[nodiscard]] const BarRange& Range() const { return range_; }
  /// Pixels from bar to bar; may be far below 1.
  [[nodiscard]] double Pitch() const { return pitch_; }
  /// The middle of a bar, also of one outside the range.
  [[nodiscard]] double X(int32_t bar) const {
    return left_ + (static_cast<double>(bar) - range_.first + 0.5) * pitch_;
  }
  /// The bar or free place at x; none outside.
  [[nodiscard]] std::optional<int32_t> BarAt(double x) const;

 private:
  BarRange range_;
  double left_ = 0;
  double width_ = 0;
  double pitch_ = 0;
};

/// How values lie up the pane. kPercent is linear and labelled with the distance from a base.
enum class ScaleForm : uint8_t { kLinear, kLogarithmic, kPercent };

/// What values a scale spans: low < high, both finite; above 0 where it is logarithmic.
struct ValueRange {
  double low = 0;
  double high = 1;

  bool operator==(const ValueRange&) const = default;
};

/// Values up: `high` at the middle of the top pixel, `low` at that of the bottom one.
class ValueScale {
 public:
  ValueScale() = default;
  /// A logarithmic scale that reaches 0 or below becomes linear.
  ValueScale(const ValueRange& range, ScaleForm form, int32_t top, int32_t height);
  /// A linear scale on its side: `low` at the middle of the left pixel. Y is then x.
  static ValueScale Across(const ValueRange& range, int32_t left, int32_t width);

  [[nodiscard]] const ValueRange& Range() const { return range_; }
  [[nodiscard]] ScaleForm Form() const { return form_; }
  /// Also of values outside the range; those that a logarithmic scale does not have lie far below.
  [[nodiscard]] double Y(double value) const;
  /// Y as a whole pixel.
  [[nodiscard]] int32_t Pixel(double value) const;
  /// The inverse of Y.
  [[nodiscard]] double ValueAt(double y) const;

 private:
  ValueRange range_;
  ScaleForm form_ = ScaleForm::kLinear;
  double bottom_ = 0;  // of low
  double per_unit_ = 0;
  double origin_ = 0;
};

/// Collects values into a range. Starts without any.
class ValueExtent {
 public:
  void Add(double value);
  /// `gap` of the height is added above and below. Without values, 0 to 1; equal values get room
  /// around them. For a logarithmic scale the gap is one of ratios.
  [[nodiscard]] ValueRange Range(double gap, ScaleForm form = ScaleForm::kLinear) const;
  [[nodiscard]] bool IsEmpty() const { return low_ > high_; }

 private:
  double low_ = 1;
  double high_ = 0;
};

}  // namespace orin::chart
