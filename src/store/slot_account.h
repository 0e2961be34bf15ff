#pragma once

#include <cstdint>
#include <string>

#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// The slots of the price files that no stock of orin.sys has. Each is that of a purged stock,
/// and orin.del counts those, or its stock has got lost from orin.sys.
struct SlotAccount {
  int32_t unused = 0;
  int32_t purged = 0;  // 削除カウンタ

  [[nodiscard]] bool IsExplained() const { return unused <= purged; }
};

/// For price files of `records` records each.
SlotAccount CountSlots(const StoreLocation& location, const StockMaster& master, int32_t records);

/// What is to be told of an account that is not explained.
std::string SentenceOf(const SlotAccount& account, const StoreLocation& location);

}  // namespace orin::store
