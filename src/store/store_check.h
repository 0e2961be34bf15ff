#pragma once

#include <string>
#include <vector>

#include "base/progress.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::store {

/// Reads the whole store and tells everything that is wrong with it, one Japanese sentence each,
/// naming file, record and value: lengths, the header against the files, the order of the
/// calendar, record numbers, duplicates, impossible bars, the companion files, the split list.
/// It changes nothing and works on a store that cannot be opened. Fails only when stopped.
base::Result<std::vector<std::string>> CheckStore(const StoreLocation& location,
                                                  base::Progress& progress);

}  // namespace orin::store
