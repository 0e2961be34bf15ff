#include <cmath>
#include <limits>
#include <optional>

#include "indicators/average_columns.h"
#include "indicators/raw_rounding.h"
#include "indicators/rolling_sum.h"
#include "indicators/rounding.h"
#include "indicators/sums.h"

namespace orin::indicators {

using base::Currency;
using base::Int128;

namespace {

/// Sums of closes and of their squares; `too_large` counts the closes left out of the squares.
struct CloseSquares {
  CountedSum closes;
  Int128 squares = 0;
  int32_t too_large = 0;

  CloseSquares& operator+=(const CloseSquares& other) {
    closes += other.closes;
    squares += other.squares;
    too_large += other.too_large;
    return *this;
  }
  CloseSquares& operator-=(const CloseSquares& other) {
    closes -= other.closes;
    squares -= other.squares;
    too_large -= other.too_large;
    return *this;
  }
};

/// With every close below 2^63 / n neither n Σ C² nor (Σ C)² reaches 2^127.
struct CloseSquaresTerm {
  FieldTerm<CloseField> close;
  int64_t limit;

  CloseSquares operator()(int32_t t) const {
    const CountedSum term = close(t);
    if (term.raw > limit || term.raw < -limit) return {term, 0, 1};
    return {term, term.raw * term.raw, 0};
  }
};

/// Puts result(sums over n bars) where the first bar of the span has data.
template <typename Result>
void PutBands(const ColumnTask& task, Result result) {
  const int32_t n = task.parameters[0];
  const int64_t limit = std::numeric_limits<int64_t>::max() / n;
  RollingSum<CloseSquares, CloseSquaresTerm> sum(n, task.bars.First(), {{task.bars}, limit});
  for (int32_t t = task.first; t <= task.last; ++t) {
    const CloseSquares& total = sum.At(t);
    if (task.bars.HasData(t - n + 1)) task.sink.Put(t, result(total));
  }
}

/// The deviation times the count, in raw units.
std::optional<double> SummedDeviation(const CloseSquares& total) {
  if (total.too_large != 0) return std::nullopt;
  const Int128 sum = total.closes.raw;
  // Two numbers of nearly equal size are subtracted here, which only integers survive.
  return std::sqrt(static_cast<double>(total.closes.count * total.squares - sum * sum));
}

/// The mean of the closes plus `k` deviations.
std::optional<Currency> Band(const CloseSquares& total, int32_t k) {
  const CountedSum& closes = total.closes;
  if (k == 0) return ToCurrency(base::DivideHalfToEven(closes.raw, closes.count));
  const std::optional<double> deviation = SummedDeviation(total);
  if (!deviation) return std::nullopt;
  return RoundRaw((static_cast<double>(closes.raw) + k * *deviation) / closes.count);
}

}  // namespace

void StandardDeviation(const ColumnTask& task) {
  PutBands(task, [](const CloseSquares& total) -> std::optional<Currency> {
    const std::optional<double> deviation = SummedDeviation(total);
    if (!deviation) return std::nullopt;
    return RoundRaw(*deviation / total.closes.count);
  });
}

void BollingerBand(const ColumnTask& task) {
  const int32_t k = task.parameters[1];
  PutBands(task, [k](const CloseSquares& total) { return Band(total, k); });
}

void DeviationBand(const ColumnTask& task) {
  const int32_t per_cent = 100 + task.parameters[1];
  PutBands(task, [per_cent](const CloseSquares& total) {
    const CountedSum& closes = total.closes;
    return ToCurrency(base::DivideHalfToEven(closes.raw * per_cent, Int128{100} * closes.count));
  });
}

}  // namespace orin::indicators
