#pragma once

#include <string>
#include <vector>

#include "base/file_system.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::store {

/// Reads the whole store and tells everything that is wrong with it, one Japanese sentence each,
/// naming file, record and value: lengths, the header against the files, the order of the
/// calendar, record numbers, duplicates, impossible bars, the companion files, the split list,
/// company data, credit files, checksums. It works on a store that cannot be opened. What a killed
/// writer has committed is carried out first, as by any reader; nothing else is changed. Fails when
/// stopped, and where a live writer has the store and what is found may be its unfinished work.
base::Result<std::vector<std::string>> CheckStore(const StoreLocation& location,
                                                  base::Progress& progress);
/// kAllButLackingSums leaves out checksums that are missing or cannot be read: MakeSums mends
/// these without hiding damage.
enum class CheckScope { kAll, kAllButLackingSums };
/// The same with the file system that the recovery writes with.
base::Result<std::vector<std::string>> CheckStore(const StoreLocation& location,
                                                  base::Progress& progress, base::FileSystem& files,
                                                  CheckScope scope = CheckScope::kAll);

/// Whether the store has checksums, all or some of them. Older stores have none.
bool HasSums(const StoreLocation& location);

}  // namespace orin::store
