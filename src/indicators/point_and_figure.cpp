#include "indicators/point_and_figure.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "indicators/range_window.h"
#include "indicators/rounding.h"

namespace orin::indicators {

using base::BarsView;
using base::Currency;
using base::Int128;

namespace {

constexpr Currency kSmallestBox = Currency::FromRaw(Currency::kScale / 100);

/// The highest box a rising close fills.
int64_t BoxAtOrBelow(Currency close, Currency box) {
  const int64_t quotient = close.Raw() / box.Raw();
  return close.Raw() % box.Raw() < 0 ? quotient - 1 : quotient;
}

/// The lowest box a falling close fills.
int64_t BoxAtOrAbove(Currency close, Currency box) {
  const int64_t quotient = close.Raw() / box.Raw();
  return close.Raw() % box.Raw() > 0 ? quotient + 1 : quotient;
}

class ColumnBuilder {
 public:
  ColumnBuilder(Currency box, int32_t reversal) : box_(box), reversal_(reversal) {}

  void Take(int32_t t, Currency close) {
    const int64_t filled_up = BoxAtOrBelow(close, box_);
    const int64_t filled_down = BoxAtOrAbove(close, box_);
    if (columns_.empty()) {
      Start(t, filled_up, filled_down);
    } else if (columns_.back().rising) {
      GoOnUp(t, filled_up, filled_down);
    } else {
      GoOnDown(t, filled_up, filled_down);
    }
  }

  std::vector<PointAndFigureColumn> TakeColumns() { return std::move(columns_); }

 private:
  void Start(int32_t t, int64_t filled_up, int64_t filled_down) {
    if (!first_) {
      first_ = {filled_up, filled_down};
    } else if (filled_up > first_->up) {
      columns_.push_back({true, first_->up + 1, filled_up, t, t});
    } else if (filled_down < first_->down) {
      columns_.push_back({false, filled_down, first_->down - 1, t, t});
    }
  }

  void GoOnUp(int32_t t, int64_t filled_up, int64_t filled_down) {
    PointAndFigureColumn& column = columns_.back();
    if (filled_up > column.high) {
      column.high = filled_up;
      column.to = t;
    } else if (filled_down <= column.high - reversal_) {
      columns_.push_back({false, filled_down, column.high - 1, t, t});
    }
  }

  void GoOnDown(int32_t t, int64_t filled_up, int64_t filled_down) {
    PointAndFigureColumn& column = columns_.back();
    if (filled_down < column.low) {
      column.low = filled_down;
      column.to = t;
    } else if (filled_up >= column.low + reversal_) {
      columns_.push_back({true, column.low + 1, filled_up, t, t});
    }
  }

  /// The boxes a close fills for a rising and for a falling column.
  struct Filled {
    int64_t up;
    int64_t down;
  };

  Currency box_;
  int32_t reversal_;
  std::optional<Filled> first_;  // by the first close
  std::vector<PointAndFigureColumn> columns_;
};

std::optional<Currency> NewestClose(const BarsView& bars, int32_t oldest) {
  for (int32_t t = bars.Count(); t >= oldest; --t) {
    if (bars.HasData(t)) return bars.Close(t);
  }
  return std::nullopt;
}

void KeepNewest(std::vector<PointAndFigureColumn>& columns) {
  if (columns.size() <= PointAndFigure::kMaximumColumns) return;
  columns.erase(columns.begin(), columns.end() - PointAndFigure::kMaximumColumns);
}

int64_t CountPoints(const std::vector<PointAndFigureColumn>& columns) {
  Int128 points = 0;
  for (const PointAndFigureColumn& column : columns) points += column.high - column.low + 1;
  return static_cast<int64_t>(std::min<Int128>(points, std::numeric_limits<int64_t>::max()));
}

}  // namespace

std::optional<Currency> BoxSize(Currency close, int32_t rate) {
  if (rate < 1) return std::nullopt;
  const std::optional<Currency> share =
      ToCurrency(base::DivideHalfToEven(Int128{close.Raw()} * rate, 100));
  if (!share) return std::nullopt;
  return std::max(*share, kSmallestBox);
}

std::optional<PointAndFigure> BuildPointAndFigure(const BarsView& bars, int32_t span, int32_t rate,
                                                  int32_t reversal) {
  if (span < 1 || reversal < 1) return std::nullopt;
  const int32_t last = bars.Count();
  const int32_t oldest = std::max<int32_t>(bars.First(), last - span + 1);
  const std::optional<Currency> close = NewestClose(bars, oldest);
  const std::optional<Currency> box = close ? BoxSize(*close, rate) : std::nullopt;
  if (!box) return std::nullopt;

  PointAndFigure figure;
  figure.box = *box;
  // A close was found, so that the range helpers find one too.
  figure.highest_close = RangeWindow<HighestClose>(bars, span).At(last)->value;
  figure.lowest_close = RangeWindow<LowestClose>(bars, span).At(last)->value;
  ColumnBuilder builder(*box, reversal);
  for (int32_t t = oldest; t <= last; ++t) {
    if (bars.HasData(t)) builder.Take(t, bars.Close(t));
  }
  figure.columns = builder.TakeColumns();
  KeepNewest(figure.columns);
  figure.points = CountPoints(figure.columns);
  return figure;
}

}  // namespace orin::indicators
