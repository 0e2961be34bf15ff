#pragma once

#include <cstdint>
#include <filesystem>

#include "base/progress.h"
#include "base/result.h"

namespace orin::bench {

/// How large a market is.
struct MarketSize {
  int32_t stocks = 8000;  // the three indices among them
  int32_t days = 2500;
};

/// Makes a store of random walks in `directory`, always the same for the same size: the indices
/// and stocks of four letters, weekdays from 2010/01/04 on, one day in 500 without data.
base::Status MakeMarket(const std::filesystem::path& directory, const MarketSize& size,
                        base::Progress& progress);

}  // namespace orin::bench
