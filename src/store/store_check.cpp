#include "store/store_check.h"

#include "store/check_parts.h"
#include "store/transaction.h"

namespace orin::store {

std::string CheckedStore::NameForMessage(const StoreFile& file) const {
  return "「" + base::PathText(PathOf(location, file)) + "」";
}

std::string StockForMessage(const StockRecord& stock, int32_t record) {
  return "銘柄" + std::string(stock.code.Text()) + "（レコード" + std::to_string(record) + "）";
}

std::optional<std::string> ReadForCheck(const CheckedStore& store, FileKind kind,
                                        Findings& findings) {
  const StoreFile file = {kind, 0};
  const std::filesystem::path path = PathOf(store.location, file);
  std::error_code failure;
  if (!std::filesystem::exists(path, failure)) {
    findings.Add(store.NameForMessage(file) + "がありません。");
    return std::nullopt;
  }
  auto bytes = base::ReadFile(path);
  if (bytes) return std::move(*bytes);
  findings.Add(bytes.error().message);
  return std::nullopt;
}

void CheckWholeRecords(const CheckedStore& store, const StoreFile& file, size_t length,
                       size_t record_length, Findings& findings) {
  const size_t rest = length % record_length;
  if (rest == 0) return;
  findings.Add(store.NameForMessage(file) + "の最後に" + std::to_string(record_length) +
               "バイトに満たないレコードが" + std::to_string(rest) + "バイトあります。");
}

base::Result<std::vector<std::string>> CheckStore(const StoreLocation& location,
                                                  base::Progress& progress) {
  CheckedStore store{location, {}, {}};
  Findings findings;
  if (HasJournal(location)) {
    findings.Add(store.NameForMessage({FileKind::kJournal, 0}) +
                 "に書き込みの終わっていない更新があります。");
  }
  CheckMaster(store, findings);
  const base::Status prices = CheckPrices(store, progress, findings);
  if (!prices) return base::Forward(prices);
  CheckCompanions(store, findings);
  CheckSplits(store, findings);
  return findings.Take();
}

}  // namespace orin::store
