#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

namespace orin::kernels {

// The inner loops of the columns, over raw currency integers (value × 10000). They are compiled
// for several levels of the processor's instruction set, which give the same digits. A pointer
// to bars stands at the first bar asked for; the bars before it that a routine looks back on lie
// in front of it. Every routine writes `count` places of `out`.

/// Stands in `out` where there is no value.
inline constexpr int64_t kNone = std::numeric_limits<int64_t>::min();
/// The volume of a bar without data.
inline constexpr int64_t kNoData = -10000;

/// What the routines about ranges take at once.
inline constexpr size_t kLongestChunk = 256;
/// The longest window whose extremes they find.
inline constexpr int32_t kLongestWindow = 1024;

struct PriceBars {
  const int64_t* high;
  const int64_t* low;
  const int64_t* close;
  const int64_t* volume;
};

/// -1 for each outcome of a comparison that makes it true, else 0.
struct Outcomes {
  int64_t less;
  int64_t equal;
  int64_t greater;
};

/// The routines of one level. Those that return false have left `out` undefined, because the
/// numbers are too large to be exact in a double (sums from 2^50 on), or as said; whoever calls
/// then takes the slower way that always is exact.
struct Kernels {
  /// Mean of the values of the `n` bars up to each bar, those without data left out of sum and
  /// count, to the nearest integer, halves to even; none where the first bar has no data.
  bool (*mean)(const int64_t* values, const int64_t* volume, int32_t n, size_t count, int64_t* out);
  /// U / (U + D) × 100 of the `n` changes up to each bar, to one decimal; none where U + D is 0
  /// or the second bar of the n + 1 has no data.
  bool (*relative_strength)(const int64_t* close, const int64_t* volume, int32_t n, size_t count,
                            int64_t* out);
  /// Σ +DM / Σ TR × 100 over the `n` bars up to each bar, and likewise -DM; none where Σ TR is 0
  /// or the bar before the n has no data.
  bool (*directional_indexes)(const PriceBars& bars, int32_t n, size_t count, int64_t* plus,
                              int64_t* minus);
  /// |+DI - -DI| / |+DI + -DI|; none where either is none or their sum is 0. In place of `plus`.
  void (*directional_movement)(int64_t* plus, const int64_t* minus, size_t count);
  /// Mean of `n` values up to each place × 100; none where one of them is none or the first bar
  /// has no data. The values are DX, at most 2^20.
  void (*average_movement)(const int64_t* movement, const int64_t* volume, int32_t n, size_t count,
                           int64_t* out);
  /// (C - LL) / (HH - LL) × 100 over `n` bars up to each bar, to one decimal; none where HH = LL.
  /// Also false where a bar has no data. count <= kLongestChunk, n <= kLongestWindow.
  bool (*stochastic)(const PriceBars& bars, int32_t n, size_t count, int64_t* out);
  // The extreme of `n` values up to each bar. Also false where a bar has no data, or a price is
  // 2^43 or larger. count <= kLongestChunk, n <= kLongestWindow.
  bool (*highest)(const int64_t* values, const int64_t* volume, int32_t n, size_t count,
                  int64_t* out);
  bool (*lowest)(const int64_t* values, const int64_t* volume, int32_t n, size_t count,
                 int64_t* out);
  /// The nearest integers, halves to even; none for NaN. False where one is 2^50 or larger.
  bool (*rounded)(const double* values, size_t count, int64_t* out);

  // Operations on columns, none where an operand is none or the result leaves the range.
  void (*add)(const int64_t* left, const int64_t* right, size_t count, int64_t* out);
  void (*subtract)(const int64_t* left, const int64_t* right, size_t count, int64_t* out);

  /// Leaves -1 in `open` only where it was and the comparison is true, else 0; tells whether one
  /// is left. A comparison with none is false.
  bool (*narrow)(const int64_t* left, Outcomes outcomes, const int64_t* right, size_t count,
                 int64_t* open);
};

struct Level {
  std::string_view name;
  const Kernels* kernels;
};

/// The levels this processor has, the best one last; at least one.
std::span<const Level> Levels();
/// The best one.
const Kernels& Best();

}  // namespace orin::kernels
