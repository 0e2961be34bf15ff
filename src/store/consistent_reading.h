#pragma once

#include <chrono>
#include <functional>

#include "base/file_system.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::store {

/// When to give up on a store that goes on changing: once both are used up.
struct ReadingPatience {
  int32_t attempts = 3;
  std::chrono::milliseconds time{10'000};
};

/// Opens a store for reading and does `work` with it. Where another process has changed the store
/// meanwhile, opens it and does the work again, so that all that the last call has read is of
/// one state; what the earlier calls have read must be thrown away. Gives the store of the last
/// call. Fails with a sentence where the store cannot be opened or goes on changing.
base::Result<StockStore> ReadConsistently(const StoreLocation& location, const OpenOptions& options,
                                          base::FileSystem& files,
                                          const std::function<void(const StockStore&)>& work,
                                          const ReadingPatience& patience = {});

}  // namespace orin::store
