// Compiled once for each instruction set, with ORIN_KERNEL_LEVEL as its name, and for the reason
// given in kernels/level.cpp without functions of other headers.
#include "hand_loops.h"

namespace orin::bench::ORIN_KERNEL_LEVEL {

namespace {

constexpr int32_t kDaysPerFile = 100;
constexpr size_t kEntryLength = 40;
constexpr size_t kHigh = 8;  // where a field lies in an entry
constexpr size_t kLow = 16;
constexpr size_t kClose = 24;
constexpr size_t kVolume = 32;
constexpr int64_t kNoData = -10000;  // the volume
constexpr int64_t kNone = INT64_MIN;

// Eight stocks abreast, a lane each. A comparison gives -1 where it is true, else 0.
constexpr size_t kLanes = 8;
using Integers = int64_t __attribute__((vector_size(64)));
using Doubles = double __attribute__((vector_size(64)));

// Adding 1.5 × 2^52 leaves the nearest integer, halves to even, in the low bits.
constexpr double kShift = 6755399441055744.0;
constexpr int64_t kShiftBits = __builtin_bit_cast(int64_t, kShift);

// Of one number or of eight.
template <typename Int>
struct DoubleOf {
  using Type = Doubles;
};
template <>
struct DoubleOf<int64_t> {
  using Type = double;
};
template <typename Int>
inline typename DoubleOf<Int>::Type ToDouble(const Int& integer) {
  return __builtin_bit_cast(typename DoubleOf<Int>::Type, integer + kShiftBits) - kShift;
}
template <typename Double>
inline Double Rounded(const Double& value) {
  return (value + kShift) - kShift;
}
inline int64_t ToInteger(double value) {
  return __builtin_bit_cast(int64_t, value + kShift) - kShiftBits;
}
inline Integers ToInteger(const Doubles& value) {
  return __builtin_bit_cast(Integers, value + kShift) - kShiftBits;
}
template <typename Number>
inline Number Magnitude(const Number& value) {
  return value < 0 ? -value : value;
}
template <typename Number>
inline Number Larger(const Number& a, const Number& b) {
  return a > b ? a : b;
}

/// A ratio of two sums of prices × 100 in ten-thousandths, rounded only where it is stored: each
/// sum is first made the double of its value.
template <typename Double>
inline Double RawPercentage(const Double& numerator, const Double& denominator) {
  return (numerator / 10000) / (denominator / 10000) * 100 * 10000;
}
template <typename Double>
inline Double RawRatio(const Double& numerator, const Double& denominator) {
  return (numerator / 10000) / (denominator / 10000) * 10000;
}
/// A whole number of ten-thousandths, at least 0, to one decimal.
template <typename Double>
inline Double ToOneDecimal(const Double& raw) {
  const Double tenths = (raw + 500) / 1000;
  const Double nearest = Rounded(tenths);
  return (nearest > tenths ? nearest - 1 : nearest) * 1000;
}

inline bool Any(const Integers& mask) {
  int64_t any = 0;
  for (size_t lane = 0; lane < kLanes; ++lane) any |= mask[lane];
  return any != 0;
}

/// Whether a value that was computed a shorter way may round to another integer than it should:
/// the two ways differ by far less than this.
inline bool MayRoundWrong(const Doubles& value, const Integers& valid) {
  const Doubles off = Magnitude(value - Rounded(value));
  return Any((off > 0.4999) & valid);
}

inline int64_t Load(const char* place) {
  int64_t value = 0;
  __builtin_memcpy(&value, place, sizeof value);
  return value;
}

inline const char* EntryOf(const HandMarket& market, size_t stock, int32_t day) {
  return market.files[day / kDaysPerFile] + market.stocks[stock] +
         static_cast<size_t>(day % kDaysPerFile) * kEntryLength;
}

// One stock on the last day.

/// Bars of one stock up to the last day; of days before the first, bars without data.
template <size_t kBars>
struct LastBars {
  int64_t high[kBars];
  int64_t low[kBars];
  int64_t close[kBars];
  bool has_data[kBars];

  /// Bar kBars - 1 is the last day.
  LastBars(const HandMarket& market, size_t stock) {
    for (size_t i = 0; i < kBars; ++i) {
      const int32_t day = market.days - static_cast<int32_t>(kBars - i);
      const char* entry = day < 0 ? nullptr : EntryOf(market, stock, day);
      has_data[i] = entry != nullptr && Load(entry + kVolume) != kNoData;
      high[i] = entry == nullptr ? 0 : Load(entry + kHigh);
      low[i] = entry == nullptr ? 0 : Load(entry + kLow);
      close[i] = entry == nullptr ? 0 : Load(entry + kClose);
    }
  }
};

struct Window {
  int64_t sum = 0;
  int64_t count = 0;

  void Add(int64_t value, bool has_data) {
    sum += has_data ? value : 0;
    count += has_data ? 1 : 0;
  }
  [[nodiscard]] double Mean() const { return Rounded(ToDouble(sum) / ToDouble(count)); }
};

uint64_t GoldenCrossesToday(const HandMarket& market) {
  constexpr int32_t kLong = 66;
  constexpr int32_t kShort = 22;
  if (market.days <= kLong) return 0;
  uint64_t hits = 0;
  for (size_t stock = 0; stock < market.stock_count; ++stock) {
    // The sums of the days that both days' averages share, then what each has more.
    Window shared_long;
    Window shared_short;
    const int32_t last = market.days - 1;
    const auto has_data = [&](int32_t day) {
      return Load(EntryOf(market, stock, day) + kVolume) != kNoData;
    };
    const auto add_days = [&](Window& window, int32_t first, int32_t end) {
      while (first < end) {
        const int32_t in_file = kDaysPerFile - first % kDaysPerFile;
        const int32_t stop = first + in_file < end ? first + in_file : end;
        const char* entry = EntryOf(market, stock, first);
        for (; first < stop; ++first, entry += kEntryLength) {
          window.Add(Load(entry + kClose), Load(entry + kVolume) != kNoData);
        }
      }
    };
    add_days(shared_long, last - kLong + 1, last - kShort + 1);
    add_days(shared_short, last - kShort + 1, last);
    shared_long.sum += shared_short.sum;
    shared_long.count += shared_short.count;
    Window long_before = shared_long;
    Window short_before = shared_short;
    add_days(long_before, last - kLong, last - kLong + 1);
    add_days(short_before, last - kShort, last - kShort + 1);
    Window long_now = shared_long;
    Window short_now = shared_short;
    add_days(long_now, last, last + 1);
    add_days(short_now, last, last + 1);
    const bool is_valid = has_data(last - kLong) && has_data(last - kShort) &&
                          has_data(last - kLong + 1) && has_data(last - kShort + 1);
    if (is_valid && long_before.Mean() >= short_before.Mean() &&
        long_now.Mean() <= short_now.Mean()) {
      ++hits;
    }
  }
  return hits;
}

constexpr int32_t kTerm = 14;            // days of RSI and ADX
constexpr int32_t kAdxBars = 2 * kTerm;  // that one ADX needs
using BarsOfTerms = LastBars<kAdxBars>;
constexpr int32_t kToday = kAdxBars - 1;

/// Where the extreme of the `n` bars up to `last` is looked for: as many of the oldest are left out
/// as there are bars without data.
int32_t FirstOfRange(const bool* has_data, int32_t last, int32_t n) {
  int32_t missing = 0;
  for (int32_t i = last - n + 1; i <= last; ++i) missing += has_data[i] ? 0 : 1;
  return last - n + 1 + missing;
}

bool IsAboveRange(const BarsOfTerms& bars) {
  constexpr int32_t kDays = 20;
  if (!bars.has_data[kToday]) return false;
  const int32_t first = FirstOfRange(bars.has_data, kToday - 1, kDays);
  for (int32_t i = first; i < kToday; ++i) {
    if (bars.close[i] >= bars.close[kToday]) return false;
  }
  return first < kToday;
}

bool IsAboveAverage(const BarsOfTerms& bars) {
  constexpr int32_t kDays = 22;
  if (!bars.has_data[kToday - kDays + 1]) return false;
  Window window;
  for (int32_t i = kToday - kDays + 1; i <= kToday; ++i) {
    window.Add(bars.close[i], bars.has_data[i]);
  }
  return bars.close[kToday] > ToInteger(window.Mean());
}

bool IsStochasticAbove20(const BarsOfTerms& bars) {
  constexpr int32_t kDays = 5;
  if (!bars.has_data[kToday - kDays + 1]) return false;
  const int32_t first = FirstOfRange(bars.has_data, kToday, kDays);
  int64_t highest = bars.high[first];
  int64_t lowest = bars.low[first];
  for (int32_t i = first; i <= kToday; ++i) {
    highest = Larger(highest, bars.high[i]);
    lowest = -Larger(-lowest, -bars.low[i]);
  }
  if (highest == lowest) return false;
  const double raw =
      RawPercentage(ToDouble(bars.close[kToday] - lowest), ToDouble(highest - lowest));
  return ToOneDecimal(Rounded(raw)) > 20 * 10000;
}

bool IsStrengthBelow90(const BarsOfTerms& bars) {
  if (!bars.has_data[kToday - kTerm + 1]) return false;
  int64_t rises = 0;
  int64_t moves = 0;
  for (int32_t i = kToday - kTerm + 1; i <= kToday; ++i) {
    const int64_t change = bars.close[i] - bars.close[i - 1];
    rises += Larger(change, int64_t{0});
    moves += Magnitude(change);
  }
  if (moves == 0) return false;
  return ToOneDecimal(Rounded(RawPercentage(ToDouble(rises), ToDouble(moves)))) < 90 * 10000;
}

bool IsMovementAbove10(const BarsOfTerms& bars) {
  int64_t plus[kAdxBars] = {};
  int64_t minus[kAdxBars] = {};
  int64_t ranges[kAdxBars] = {};
  for (int32_t i = 1; i < kAdxBars; ++i) {
    const int64_t up = bars.high[i] - bars.high[i - 1];
    const int64_t down = bars.low[i - 1] - bars.low[i];
    plus[i] = up > down && up > 0 ? up : 0;
    minus[i] = down > up && down > 0 ? down : 0;
    const int64_t before = bars.close[i - 1];
    ranges[i] =
        Larger(bars.high[i] - bars.low[i], Larger(bars.high[i] - before, before - bars.low[i]));
  }
  if (!bars.has_data[kToday - kTerm + 1]) return false;
  int64_t sum = 0;
  for (int32_t last = kTerm; last < kAdxBars; ++last) {
    int64_t ups = 0;
    int64_t downs = 0;
    int64_t range = 0;
    for (int32_t i = last - kTerm + 1; i <= last; ++i) {
      ups += plus[i];
      downs += minus[i];
      range += ranges[i];
    }
    if (!bars.has_data[last - kTerm] || range == 0) return false;
    const double up = Rounded(RawPercentage(ToDouble(ups), ToDouble(range)));
    const double down = Rounded(RawPercentage(ToDouble(downs), ToDouble(range)));
    if (up + down == 0) return false;
    sum += ToInteger(RawRatio(Magnitude(up - down), Magnitude(up + down)));
  }
  return ToInteger(ToDouble(sum) / 10000 / kTerm * 100 * 10000) > 10 * 10000;
}

/// The cheapest term that most stocks fail comes first.
uint64_t FiveTermsToday(const HandMarket& market) {
  uint64_t hits = 0;
  for (size_t stock = 0; stock < market.stock_count; ++stock) {
    const BarsOfTerms bars(market, stock);
    if (IsAboveRange(bars) && IsAboveAverage(bars) && IsStochasticAbove20(bars) &&
        IsStrengthBelow90(bars) && IsMovementAbove10(bars)) {
      ++hits;
    }
  }
  return market.days >= kAdxBars ? hits : 0;
}

// Eight stocks on all days.

/// The latest rows of a column, eight values each; those before the first day are 0.
template <size_t kRows>
class Ring {
 public:
  static_assert((kRows & (kRows - 1)) == 0);
  Integers& operator[](int32_t day) { return rows_[static_cast<uint32_t>(day) & (kRows - 1)]; }

 private:
  Integers rows_[kRows] = {};
};

/// The lanes that hold a stock.
inline size_t LanesUsed(const HandMarket& market, size_t group) {
  const size_t left = market.stock_count - group;
  return left < kLanes ? left : kLanes;
}

/// Calls body(day, entries) with the eight entries of day after day; a group that is not full
/// repeats its last stock.
template <typename Body>
inline void ForEachDay(const HandMarket& market, size_t group, Body body) {
  const size_t used = LanesUsed(market, group);
  for (int32_t day = 0; day < market.days;) {
    const char* entries[kLanes];
    for (size_t lane = 0; lane < kLanes; ++lane) {
      entries[lane] = EntryOf(market, group + (lane < used ? lane : used - 1), day);
    }
    const int32_t in_file = market.days - day < kDaysPerFile ? market.days - day : kDaysPerFile;
    for (const int32_t end = day + in_file; day < end; ++day) {
      body(day, entries);
      for (const char*& entry : entries) entry += kEntryLength;
    }
  }
}

inline Integers Field(const char* const (&entries)[kLanes], size_t field) {
  return Integers{Load(entries[0] + field), Load(entries[1] + field), Load(entries[2] + field),
                  Load(entries[3] + field), Load(entries[4] + field), Load(entries[5] + field),
                  Load(entries[6] + field), Load(entries[7] + field)};
}

/// Sum and count of the last closes with data.
struct RollingWindow {
  Integers sum = {};
  Integers count = {};
};

uint64_t GoldenCrosses(const HandMarket& market) {
  constexpr int32_t kLong = 66;
  constexpr int32_t kShort = 22;
  uint64_t hits = 0;
  for (size_t group = 0; group < market.stock_count; group += kLanes) {
    Ring<128> closes;
    Ring<128> present;
    RollingWindow longer;
    RollingWindow shorter;
    Integers was_above = {};
    Integers found = {};
    ForEachDay(market, group, [&](int32_t day, const auto& entries) {
      const Integers has_data = Field(entries, kVolume) != kNoData;
      const Integers close = Field(entries, kClose) & has_data;
      closes[day] = close;
      present[day] = has_data;
      longer.sum += close - closes[day - kLong];
      longer.count += present[day - kLong] - has_data;
      shorter.sum += close - closes[day - kShort];
      shorter.count += present[day - kShort] - has_data;
      // Averages differ by less than what rounding takes only where this is small; a product is
      // cheaper than a division.
      const Doubles long_count = ToDouble(longer.count);
      const Doubles short_count = ToDouble(shorter.count);
      const Doubles long_sum = ToDouble(longer.sum);
      const Doubles short_sum = ToDouble(shorter.sum);
      const Doubles more = long_sum * short_count - short_sum * long_count;
      const Integers valid = present[day - kLong + 1] & present[day - kShort + 1];
      Integers is_above = valid & (more >= 0);
      Integers is_below = valid & (more <= 0);
      const Doubles unit = long_count * short_count;
      if (Any(valid & (Magnitude(more) < unit))) {
        const Doubles long_mean = Rounded(long_sum / long_count);
        const Doubles short_mean = Rounded(short_sum / short_count);
        is_above = valid & (long_mean >= short_mean);
        is_below = valid & (long_mean <= short_mean);
      }
      found -= was_above & is_below;
      was_above = is_above;
    });
    for (size_t lane = 0; lane < LanesUsed(market, group); ++lane) {
      hits += static_cast<uint64_t>(found[lane]);
    }
  }
  return hits;
}

/// An exponential average of eight stocks, which starts from the mean of the first `n` closes.
class Average {
 public:
  explicit Average(int32_t n) : n_(n), factor_(2 / (static_cast<double>(n) + 1)) {}

  void Take(const Doubles& close, const Integers& has_data) {
    const Doubles moved = value_ + (close - value_) * factor_;
    if (all_started_) {
      value_ = has_data ? moved : value_;
      return;
    }
    const Integers had_started = count_ == n_;
    const Integers is_counted = has_data & ~had_started;
    sum_ = is_counted ? sum_ + close : sum_;
    count_ -= is_counted;
    started_ = count_ == n_;
    value_ = (had_started & has_data) ? moved : (started_ & ~had_started) ? sum_ / n_ : value_;
    all_started_ = !Any(~started_);
  }
  [[nodiscard]] const Doubles& Value() const { return value_; }
  [[nodiscard]] const Integers& HasValue() const { return started_; }

 private:
  int32_t n_;
  double factor_;
  bool all_started_ = false;
  Integers count_ = {};
  Integers started_ = {};
  Doubles sum_ = {};
  Doubles value_ = {};
};

/// A sum over the last kTerm rows.
class RollingTerm {
 public:
  const Integers& Take(int32_t day, const Integers& value) {
    sum_ += value - rows_[day - kTerm];
    rows_[day] = value;
    return sum_;
  }

 private:
  Ring<16> rows_;
  Integers sum_ = {};
};

/// RSI, ADX and MACD of eight stocks, day after day.
class Indicators {
 public:
  Integers strength;
  Integers movement;
  Integers convergence;

  void Take(int32_t day, const char* const (&entries)[kLanes]) {
    const Integers has_data = Field(entries, kVolume) != kNoData;
    const Integers high = Field(entries, kHigh);
    const Integers low = Field(entries, kLow);
    const Integers close = Field(entries, kClose);
    // The first bar has none before it, so that nothing moves.
    if (day == 0) {
      high_before_ = high;
      low_before_ = low;
      close_before_ = close;
    }
    present_[day] = has_data;
    const Integers first_has_data = present_[day - kTerm + 1];
    TakeStrength(day, close, first_has_data);
    TakeMovement(day, high, low, first_has_data);
    const Doubles price = ToDouble(close);
    shorter_.Take(price, has_data);
    longer_.Take(price, has_data);
    const Integers both = shorter_.HasValue() & longer_.HasValue();
    convergence = both ? ToInteger(shorter_.Value() - longer_.Value()) : kNone - Integers{};
    high_before_ = high;
    low_before_ = low;
    close_before_ = close;
  }

 private:
  void TakeStrength(int32_t day, const Integers& close, const Integers& first_has_data) {
    const Integers change = close - close_before_;
    const Integers& rises = rises_.Take(day, change & (change > 0));
    const Integers& moves = moves_.Take(day, Magnitude(change));
    const Integers valid = first_has_data & (moves != 0) & -int64_t{day >= kTerm};
    const Doubles upper = ToDouble(rises);
    const Doubles lower = ToDouble(moves);
    Doubles raw = upper * 1e6 / lower;
    if (MayRoundWrong(raw, valid)) raw = RawPercentage(upper, lower);
    strength = valid ? ToInteger(ToOneDecimal(Rounded(raw))) : kNone - Integers{};
  }

  void TakeMovement(int32_t day, const Integers& high, const Integers& low,
                    const Integers& first_has_data) {
    const Integers up = high - high_before_;
    const Integers down = low_before_ - low;
    const Integers& plus = plus_.Take(day, up & (up > down) & (up > 0));
    const Integers& minus = minus_.Take(day, down & (down > up) & (down > 0));
    const Integers& range = ranges_.Take(
        day, Larger(Integers(high - low),
                    Larger(Integers(high - close_before_), Integers(close_before_ - low))));
    const Integers has_indexes = present_[day - kTerm] & (range != 0);
    const Doubles lower = ToDouble(range);
    const Doubles upper_plus = ToDouble(plus);
    const Doubles upper_minus = ToDouble(minus);
    const Doubles part = 1e6 / lower;
    Doubles plus_index = upper_plus * part;
    Doubles minus_index = upper_minus * part;
    if (MayRoundWrong(plus_index, has_indexes) || MayRoundWrong(minus_index, has_indexes)) {
      plus_index = RawPercentage(upper_plus, lower);
      minus_index = RawPercentage(upper_minus, lower);
    }
    const Doubles rounded_plus = Rounded(plus_index);
    const Doubles rounded_minus = Rounded(minus_index);
    const Doubles difference = Magnitude(Doubles(rounded_plus - rounded_minus));
    const Doubles sum = rounded_plus + rounded_minus;
    const Integers has_ratio = has_indexes & (sum != 0);
    Doubles ratio = difference * 1e4 / sum;
    if (MayRoundWrong(ratio, has_ratio)) ratio = RawRatio(difference, sum);
    const Integers& ratios = movements_.Take(day, ToInteger(ratio) & has_ratio);
    const Integers& missing = missing_.Take(day, ~has_ratio);
    // A fourteenth never lies half-way between two whole numbers.
    const Integers mean = ToInteger(ToDouble(ratios) * (100.0 / kTerm));
    // Before so many days the sums lack some of the ratios that they need.
    const Integers valid = first_has_data & (missing == 0) & -int64_t{day >= kAdxBars - 1};
    movement = valid ? mean : kNone - Integers{};
  }

  Ring<16> present_;
  Integers high_before_ = {};
  Integers low_before_ = {};
  Integers close_before_ = {};
  RollingTerm rises_;
  RollingTerm moves_;
  RollingTerm plus_;
  RollingTerm minus_;
  RollingTerm ranges_;
  RollingTerm movements_;
  RollingTerm missing_;
  Average shorter_ = Average(5);
  Average longer_ = Average(20);
};

uint64_t Columns(const HandMarket& market) {
  const auto days = static_cast<size_t>(market.days);
  auto* columns = new Integers[3 * days];
  uint64_t sum = 0;
  for (size_t group = 0; group < market.stock_count; group += kLanes) {
    Indicators indicators;
    Integers* row = columns;
    ForEachDay(market, group, [&](int32_t day, const auto& entries) {
      indicators.Take(day, entries);
      row[0] = indicators.strength;
      row[days] = indicators.movement;
      row[2 * days] = indicators.convergence;
      ++row;
    });
    for (size_t lane = 0; lane < LanesUsed(market, group); ++lane) {
      for (size_t column = 1; column <= 3; ++column) {
        sum += static_cast<uint64_t>(columns[column * days - 1][lane]);
      }
    }
  }
  delete[] columns;
  return sum;
}

}  // namespace

extern const HandLoops kHandLoops = {GoldenCrossesToday, GoldenCrosses, FiveTermsToday, Columns};

}  // namespace orin::bench::ORIN_KERNEL_LEVEL
