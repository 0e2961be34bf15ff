#include "store/slot_account.h"

#include <algorithm>
#include <vector>

#include "store/companion_formats.h"
#include "store/stored_file.h"

namespace orin::store {

SlotAccount CountSlots(const StoreLocation& location, const StockMaster& master, int32_t records) {
  std::vector<bool> used(static_cast<size_t>(records) + 1);
  const auto use = [&used, records](int32_t slot) {
    if (slot >= 1 && slot <= records) used[static_cast<size_t>(slot)] = true;
  };
  use(master.Header().date_record);
  for (const StockRecord& stock : master.Stocks()) use(stock.slot.Value());
  const auto in_files = std::ranges::count(used, true);
  const auto deleted = ReadIfThere(location, {FileKind::kDeleted, 0});
  const int32_t counter = deleted ? DecodeStockList(*deleted).DeletionCounter() : 0;
  return {records - static_cast<int32_t>(in_files), std::max(counter, 0)};
}

std::string SentenceOf(const SlotAccount& account, const StoreLocation& location) {
  return "株価ファイルには「" + base::PathText(PathOf(location, {FileKind::kMaster, 0})) +
         "」のどの銘柄のものでもない銘柄レコードが" + std::to_string(account.unused) +
         "件あり、orin.delの削除カウンタ" + std::to_string(account.purged) + "より多いです。";
}

}  // namespace orin::store
