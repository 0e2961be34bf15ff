// Compiled once for each level, with ORIN_KERNEL_LEVEL as its name. Nothing in here may use
// functions of other headers: the linker would keep one copy of such a function for the whole
// program, and that could be the one made for a newer processor.
#include "kernels/level.h"

namespace orin::kernels::ORIN_KERNEL_LEVEL {

namespace {

// Double arithmetic on integers: adding 1.5 × 2^52 leaves a number's nearest integer, halves to
// even, in the low bits. Good for numbers below 2^51.
constexpr double kShift = 6755399441055744.0;
constexpr int64_t kShiftBits = __builtin_bit_cast(int64_t, kShift);
constexpr double kRoundable = 1125899906842624.0;  // 2^50
constexpr int32_t kExactBits = 50;
constexpr double kScale = 10000;

// Wrap, so that places which hold no number, and are not used, may be computed like the others.
inline int64_t Plus(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
inline int64_t Minus(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

inline double ToDouble(int64_t integer) {
  return __builtin_bit_cast(double, Plus(integer, kShiftBits)) - kShift;
}
inline double Rounded(double value) { return (value + kShift) - kShift; }
inline int64_t ToInteger(double value) {
  return Minus(__builtin_bit_cast(int64_t, value + kShift), kShiftBits);
}
inline double Magnitude(double value) { return value < 0 ? -value : value; }

// Masks instead of choices: what is chosen is computed for all places alike.
inline int64_t MaskIf(bool condition) { return -int64_t{condition}; }
inline int64_t Chosen(int64_t mask, int64_t value) { return (value & mask) | (kNone & ~mask); }

/// The shared rounding rule to one decimal for a whole number of ten-thousandths.
inline int64_t ToOneDecimal(double raw) {
  const double tenths = (Magnitude(raw) + 500) / 1000;
  const double nearest = Rounded(tenths);
  const double magnitude = (nearest > tenths ? nearest - 1 : nearest) * 1000;
  return ToInteger(raw < 0 ? -magnitude : magnitude);
}

/// numerator / denominator × 100 as a currency's double × 10000, not yet rounded. Each is first
/// made the double of its value, as a plain division of two values has it.
inline double RawPercentage(int64_t numerator, int64_t denominator) {
  return (ToDouble(numerator) / kScale) / (ToDouble(denominator) / kScale) * 100 * kScale;
}

inline int32_t BitsOf(uint64_t value) { return value == 0 ? 0 : 64 - __builtin_clzll(value); }

/// How many bits the largest magnitude takes.
int32_t LargestBits(const int64_t* values, size_t count) {
  uint64_t bits = 0;
  for (size_t i = 0; i < count; ++i) bits |= static_cast<uint64_t>(values[i] ^ (values[i] >> 63));
  return BitsOf(bits);
}

/// Whether `n` such values, the bars from `before` bars before the first on, add up exactly.
bool AddUp(const int64_t* values, int32_t before, size_t count, int32_t n) {
  const int32_t largest = LargestBits(values - before, count + static_cast<size_t>(before));
  return largest + BitsOf(static_cast<uint64_t>(n)) <= kExactBits;
}

bool AllHaveData(const int64_t* volume, int32_t before, size_t count) {
  int64_t missing = 0;
  for (const int64_t* v = volume - before; v != volume + count; ++v) {
    missing |= static_cast<int64_t>(*v == kNoData);
  }
  return missing == 0;
}

/// The sum of term(t) over the `n` bars up to each bar, a chunk of bars at a time. The terms of
/// a chunk are independent of each other, and what is left to do one by one is one addition.
template <typename Term>
class RollingSum {
 public:
  RollingSum(Term term, int32_t n) : term_(term), n_(n) {
    for (ptrdiff_t t = 1 - ptrdiff_t{n}; t < 0; ++t) rest_ += term_(t);
  }

  void Next(ptrdiff_t first, size_t count, int64_t* sums) {
    int64_t change[kLongestChunk];
    for (size_t i = 0; i < count; ++i) {
      const ptrdiff_t t = first + static_cast<ptrdiff_t>(i);
      sums[i] = term_(t);
      change[i] = sums[i] - term_(t - n_ + 1);
    }
    int64_t rest = rest_;
    for (size_t i = 0; i < count; ++i) {
      sums[i] += rest;
      rest += change[i];
    }
    rest_ = rest;
  }

 private:
  Term term_;
  ptrdiff_t n_;
  int64_t rest_ = 0;  // of the bars before the next one that its sum counts
};

/// Calls body(first, count) for chunk after chunk.
template <typename Body>
inline void ForEachChunk(size_t count, Body body) {
  for (size_t done = 0; done < count; done += kLongestChunk) {
    body(done, count - done < kLongestChunk ? count - done : kLongestChunk);
  }
}

bool Mean(const int64_t* values, const int64_t* volume, int32_t n, size_t count, int64_t* out) {
  if (!AddUp(values, n - 1, count, n)) return false;
  RollingSum sum([=](ptrdiff_t t) { return values[t] & MaskIf(volume[t] != kNoData); }, n);
  ForEachChunk(count, [&](size_t done, size_t length) {
    int64_t sums[kLongestChunk];
    sum.Next(static_cast<ptrdiff_t>(done), length, sums);
    if (AllHaveData(volume + done, n - 1, length)) {
      for (size_t i = 0; i < length; ++i) out[done + i] = ToInteger(ToDouble(sums[i]) / n);
      return;
    }
    int64_t counts[kLongestChunk];
    const int64_t* chunk = volume + done;
    RollingSum([chunk](ptrdiff_t t) { return int64_t{chunk[t] != kNoData}; }, n)
        .Next(0, length, counts);
    const int64_t* first_of_span = chunk - (n - 1);
    for (size_t i = 0; i < length; ++i) {
      const int64_t mean = ToInteger(ToDouble(sums[i]) / ToDouble(counts[i]));
      out[done + i] = Chosen(MaskIf(first_of_span[i] != kNoData), mean);
    }
  });
  return true;
}

bool RelativeStrength(const int64_t* close, const int64_t* volume, int32_t n, size_t count,
                      int64_t* out) {
  if (!AddUp(close, n, count, n)) return false;
  const auto change = [=](ptrdiff_t t) { return close[t] - close[t - 1]; };
  RollingSum rise([=](ptrdiff_t t) { return change(t) > 0 ? change(t) : 0; }, n);
  RollingSum move([=](ptrdiff_t t) { return change(t) < 0 ? -change(t) : change(t); }, n);
  ForEachChunk(count, [&](size_t done, size_t length) {
    int64_t rises[kLongestChunk];
    int64_t moves[kLongestChunk];
    rise.Next(static_cast<ptrdiff_t>(done), length, rises);
    move.Next(static_cast<ptrdiff_t>(done), length, moves);
    const int64_t* first_of_span = volume + done - (n - 1);
    for (size_t i = 0; i < length; ++i) {
      const int64_t value = ToOneDecimal(Rounded(RawPercentage(rises[i], moves[i])));
      const int64_t valid = MaskIf(first_of_span[i] != kNoData) & MaskIf(moves[i] != 0);
      out[done + i] = Chosen(valid, value);
    }
  });
  return true;
}

inline int64_t Larger(int64_t a, int64_t b) { return a > b ? a : b; }

/// The percentages of a chunk; none where the denominator is 0 or the tested bar has no data.
bool Indexes(const int64_t* moves, const int64_t* ranges, const int64_t* tested, size_t count,
             int64_t* __restrict out) {
  int64_t too_large = 0;
  for (size_t i = 0; i < count; ++i) {
    const double raw = RawPercentage(moves[i], ranges[i]);
    const int64_t valid = MaskIf(tested[i] != kNoData) & MaskIf(ranges[i] != 0);
    too_large |= valid & MaskIf(Magnitude(raw) >= kRoundable);
    out[i] = Chosen(valid, ToInteger(raw));
  }
  return too_large == 0;
}

bool DirectionalIndexes(const PriceBars& bars, int32_t n, size_t count, int64_t* plus,
                        int64_t* minus) {
  for (const int64_t* prices : {bars.high, bars.low, bars.close}) {
    if (!AddUp(prices, n, count, n)) return false;
  }
  const auto up = [high = bars.high](ptrdiff_t t) { return high[t] - high[t - 1]; };
  const auto down = [low = bars.low](ptrdiff_t t) { return low[t - 1] - low[t]; };
  RollingSum plus_sum([=](ptrdiff_t t) { return up(t) > down(t) && up(t) > 0 ? up(t) : 0; }, n);
  RollingSum minus_sum([=](ptrdiff_t t) { return down(t) > up(t) && down(t) > 0 ? down(t) : 0; },
                       n);
  RollingSum range_sum(
      [high = bars.high, low = bars.low, close = bars.close](ptrdiff_t t) {
        return Larger(high[t] - low[t], Larger(high[t] - close[t - 1], close[t - 1] - low[t]));
      },
      n);
  bool roundable = true;
  ForEachChunk(count, [&](size_t done, size_t length) {
    int64_t plus_moves[kLongestChunk];
    int64_t minus_moves[kLongestChunk];
    int64_t ranges[kLongestChunk];
    plus_sum.Next(static_cast<ptrdiff_t>(done), length, plus_moves);
    minus_sum.Next(static_cast<ptrdiff_t>(done), length, minus_moves);
    range_sum.Next(static_cast<ptrdiff_t>(done), length, ranges);
    const int64_t* before_span = bars.volume + done - n;
    const bool fits = Indexes(plus_moves, ranges, before_span, length, plus + done) &&
                      Indexes(minus_moves, ranges, before_span, length, minus + done);
    roundable = roundable && fits;
  });
  return roundable;
}

void DirectionalMovement(int64_t* plus, const int64_t* minus, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    const int64_t sum = Plus(plus[i], minus[i]);
    const int64_t difference = Minus(plus[i], minus[i]);
    const double ratio =
        Magnitude(ToDouble(difference) / kScale) / Magnitude(ToDouble(sum) / kScale) * kScale;
    const int64_t valid = MaskIf(plus[i] != kNone) & MaskIf(minus[i] != kNone) & MaskIf(sum != 0);
    plus[i] = Chosen(valid, ToInteger(ratio));
  }
}

void AverageMovement(const int64_t* movement, const int64_t* volume, int32_t n, size_t count,
                     int64_t* out) {
  RollingSum sum([=](ptrdiff_t t) { return movement[t] & MaskIf(movement[t] != kNone); }, n);
  RollingSum missing([=](ptrdiff_t t) { return int64_t{movement[t] == kNone}; }, n);
  ForEachChunk(count, [&](size_t done, size_t length) {
    int64_t sums[kLongestChunk];
    int64_t gaps[kLongestChunk];
    sum.Next(static_cast<ptrdiff_t>(done), length, sums);
    missing.Next(static_cast<ptrdiff_t>(done), length, gaps);
    const int64_t* first_of_span = volume + done - (n - 1);
    for (size_t i = 0; i < length; ++i) {
      const int64_t mean = ToInteger(ToDouble(sums[i]) / kScale / n * 100 * kScale);
      out[done + i] = Chosen(MaskIf(gaps[i] == 0) & MaskIf(first_of_span[i] != kNoData), mean);
    }
  });
}

/// The extremes of `n` values up to each place: those of windows of 1, 2, 4, ... values, each of
/// two of the half length, and at last of two windows that together cover all of it.
template <typename Choose>
void WindowExtremes(const int64_t* values, int32_t n, size_t count, Choose choose, int64_t* out) {
  int64_t of_window[kLongestChunk + kLongestWindow];
  const auto before = static_cast<size_t>(n - 1);
  const size_t length = count + before;
  const int64_t* oldest = values - before;
  for (size_t i = 0; i < length; ++i) of_window[i] = oldest[i];
  size_t width = 1;  // of_window[i]: the extreme of the places i..i + width - 1
  for (; width * 2 <= static_cast<size_t>(n); width *= 2) {
    for (size_t i = 0; i + width * 2 <= length; ++i) {
      of_window[i] = choose(of_window[i], of_window[i + width]);
    }
  }
  const int64_t* newer = of_window + static_cast<size_t>(n) - width;
  // The analyzer does not follow the loop above to its end, which fills every place.
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
  for (size_t i = 0; i < count; ++i) out[i] = choose(of_window[i], newer[i]);
}

inline int64_t Smaller(int64_t a, int64_t b) { return a < b ? a : b; }

// Beyond that a price passes the values that the search for an extreme starts from.
constexpr int32_t kOrdinaryPriceBits = 43;

bool CanSearch(const int64_t* values, const int64_t* volume, int32_t n, size_t count) {
  if (count > kLongestChunk || n < 1 || n > kLongestWindow) return false;
  if (!AllHaveData(volume, n - 1, count)) return false;
  return LargestBits(values - (n - 1), count + static_cast<size_t>(n - 1)) < kOrdinaryPriceBits;
}

bool HighestOf(const int64_t* values, const int64_t* volume, int32_t n, size_t count,
               int64_t* out) {
  if (!CanSearch(values, volume, n, count)) return false;
  WindowExtremes(values, n, count, Larger, out);
  return true;
}

bool LowestOf(const int64_t* values, const int64_t* volume, int32_t n, size_t count, int64_t* out) {
  if (!CanSearch(values, volume, n, count)) return false;
  WindowExtremes(values, n, count, Smaller, out);
  return true;
}

bool Stochastic(const PriceBars& bars, int32_t n, size_t count, int64_t* out) {
  int64_t highest[kLongestChunk];
  int64_t lowest[kLongestChunk];
  if (LargestBits(bars.close, count) >= kOrdinaryPriceBits ||
      !HighestOf(bars.high, bars.volume, n, count, highest) ||
      !LowestOf(bars.low, bars.volume, n, count, lowest)) {
    return false;
  }
  int64_t too_large = 0;
  for (size_t i = 0; i < count; ++i) {
    const int64_t range = highest[i] - lowest[i];
    const double raw = RawPercentage(bars.close[i] - lowest[i], range);
    too_large |= static_cast<int64_t>(range != 0 && Magnitude(raw) >= kRoundable);
    out[i] = range != 0 ? ToOneDecimal(Rounded(raw)) : kNone;
  }
  return too_large == 0;
}

bool RoundedValues(const double* values, size_t count, int64_t* out) {
  int64_t too_large = 0;
  for (size_t i = 0; i < count; ++i) {
    const int64_t is_number = MaskIf(values[i] == values[i]);
    too_large |= is_number & MaskIf(Magnitude(values[i]) >= kRoundable);
    out[i] = Chosen(is_number, ToInteger(values[i]));
  }
  return too_large == 0;
}

// The sum wraps where it overflows, which shows in a sign unlike that of both operands.
void Add(const int64_t* left, const int64_t* right, size_t count, int64_t* out) {
  for (size_t i = 0; i < count; ++i) {
    const int64_t sum = Plus(left[i], right[i]);
    const bool fits = ((left[i] ^ sum) & (right[i] ^ sum)) >= 0;
    out[i] = left[i] != kNone && right[i] != kNone && fits ? sum : kNone;
  }
}

void Subtract(const int64_t* left, const int64_t* right, size_t count, int64_t* out) {
  for (size_t i = 0; i < count; ++i) {
    const int64_t difference = Minus(left[i], right[i]);
    const bool fits = ((left[i] ^ right[i]) & (left[i] ^ difference)) >= 0;
    out[i] = left[i] != kNone && right[i] != kNone && fits ? difference : kNone;
  }
}

bool Narrow(const int64_t* left, Outcomes outcomes, const int64_t* right, size_t count,
            int64_t* open) {
  int64_t any = 0;
  for (size_t i = 0; i < count; ++i) {
    const int64_t outcome = left[i] < right[i]   ? outcomes.less
                            : left[i] > right[i] ? outcomes.greater
                                                 : outcomes.equal;
    const int64_t kept = left[i] != kNone && right[i] != kNone ? open[i] & outcome : 0;
    open[i] = kept;
    any |= kept;
  }
  return any != 0;
}

}  // namespace

extern const Kernels kKernels = {
    Mean,       RelativeStrength, DirectionalIndexes, DirectionalMovement, AverageMovement,
    Stochastic, HighestOf,        LowestOf,           RoundedValues,       Add,
    Subtract,   Narrow,
};

}  // namespace orin::kernels::ORIN_KERNEL_LEVEL
