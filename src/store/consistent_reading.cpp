#include "store/consistent_reading.h"

namespace orin::store {

base::Result<StockStore> ReadConsistently(const StoreLocation& location, const OpenOptions& options,
                                          base::FileSystem& files,
                                          const std::function<void(const StockStore&)>& work,
                                          const ReadingPatience& patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience.time;
  for (int32_t attempt = 1;; ++attempt) {
    auto store = StockStore::Open(location, options, files);
    if (!store) return store;
    work(*store);
    if (!store->HasChangedOnDisk()) return store;
    if (attempt >= patience.attempts && std::chrono::steady_clock::now() >= deadline) break;
  }
  return base::Fail("「" + base::PathText(location.system_directory) +
                    "」の株価データを他の処理が更新し続けているので、読み込めません。更新が終わって"
                    "から実行してください。");
}

}  // namespace orin::store
