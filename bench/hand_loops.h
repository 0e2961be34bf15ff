#pragma once

#include <cstddef>
#include <cstdint>

namespace orin::bench {

/// Price files as they lie in memory. All places count from 0.
struct HandMarket {
  const char* const* files;  // the first byte of each, a day's entries 40 bytes apart
  const size_t* stocks;      // where the record of each stock begins in every file
  size_t stock_count;
  int32_t days;
};

/// The jobs T1 to T4 as one would write them by hand for just this condition, these parameters and
/// a market without splits: the engine is measured against them. They give the engine's numbers to
/// the last digit.
struct HandLoops {
  /// The stocks whose average of 22 days crosses that of 66 upwards on the last day.
  uint64_t (*golden_crosses_today)(const HandMarket& market);
  /// The same on all days.
  uint64_t (*golden_crosses)(const HandMarket& market);
  /// The stocks that fulfil the five terms on the last day.
  uint64_t (*five_terms_today)(const HandMarket& market);
  /// Columns of RSI(14), ADX(14,14) and MACD(5,20); the sum of their last values, where one that
  /// is missing counts as the smallest integer.
  uint64_t (*columns)(const HandMarket& market);
};

/// For the best instruction set of this processor, as the engine's kernels.
const HandLoops& BestHandLoops();

// Each instruction set's loops.
namespace v2 {
extern const HandLoops kHandLoops;
}
namespace v3 {
extern const HandLoops kHandLoops;
}
namespace v4 {
extern const HandLoops kHandLoops;
}
namespace plain {
extern const HandLoops kHandLoops;
}

}  // namespace orin::bench
