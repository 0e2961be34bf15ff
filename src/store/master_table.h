#pragma once

#include <cstdint>

#include "base/table.h"
#include "store/master_format.h"

namespace orin::store {

/// The columns of the stock records of the master.
base::Table EmptyMasterTable();
void AddMasterRow(base::Table& table, int32_t record, const StockRecord& stock);

}  // namespace orin::store
