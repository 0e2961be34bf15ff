#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/date.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// What orin.sys's header and the price files that lie there say of each other. A header that
/// leads to the wrong files or slots would make the next writer overwrite good prices.
struct HeaderProof {
  std::vector<std::string> findings;  // a sentence each; empty where they agree
  /// The file that an append has left behind the full current one when it was stopped before its
  /// commit: nothing in it was ever committed, and a new file may take its place. 0: there is no
  /// such file.
  int16_t leftover = 0;
};

/// For a header within its bounds (CheckHeader). `last_day` is the date of its current record,
/// IsNone where the store is empty or the date cannot be read. That the files from the first to the
/// current one are there and their dates ascend is for the caller to find out, who reads the dates.
HeaderProof ProveHeader(const StoreLocation& location, const MasterHeader& header,
                        base::Date last_day);

/// Why a writer refuses, and what to do about it.
std::string RefusalFor(const std::string& finding);

}  // namespace orin::store
