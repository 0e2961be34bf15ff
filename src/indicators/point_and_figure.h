#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/bars.h"
#include "base/currency.h"

namespace orin::indicators {

// Point and figure over closes. Box k stands for the price k × box size: a rising close fills it at
// or above that price, a falling one at or below. The first column begins with the first close that
// fills a box which the first close of the span does not. A column ends where a close fills
// `reversal` boxes the other way, the one next to its end being the first; these begin the next.

/// A column of X (rising) or O (falling).
struct PointAndFigureColumn {
  bool rising = false;
  int64_t low = 0;   // the lowest box
  int64_t high = 0;  // the highest box, >= low
  int32_t from = 0;  // the bars whose closes filled its first and its last box
  int32_t to = 0;

  bool operator==(const PointAndFigureColumn&) const = default;
};

struct PointAndFigure {
  static constexpr size_t kMaximumColumns = 1000;

  base::Currency box;
  // Of the span, by the range helpers: the scale of the figure.
  base::Currency highest_close;
  base::Currency lowest_close;
  /// Oldest first; the newest kMaximumColumns where there would be more.
  std::vector<PointAndFigureColumn> columns;
  /// The boxes of all these columns; at most the largest int64_t.
  int64_t points = 0;
};

/// The larger of close × rate / 100, to four decimals, and 0.01. `rate` in whole per cent. nullopt
/// where the rate is less than 1 or the size leaves the range of Currency.
std::optional<base::Currency> BoxSize(base::Currency close, int32_t rate);

/// The figure of the `span` bars up to Count(), or of those that exist. The box is that of the
/// newest close there is in the span. nullopt without one, where it has no box size, or where span
/// or reversal is less than 1.
std::optional<PointAndFigure> BuildPointAndFigure(const base::BarsView& bars, int32_t span,
                                                  int32_t rate, int32_t reversal);

}  // namespace orin::indicators
