#include <algorithm>
#include <limits>
#include <unordered_set>

#include "base/record_file.h"
#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/store_state.h"
#include "store/trend_lines.h"

namespace orin::store {

namespace {

constexpr StoreFile kMaster = {FileKind::kMaster, 0};
constexpr StoreFile kAdded = {FileKind::kAdded, 0};
constexpr StoreFile kDeleted = {FileKind::kDeleted, 0};
constexpr StoreFile kIndex = {FileKind::kNameIndex, 0};
constexpr StoreFile kTrendLines = {FileKind::kTrendLines, 0};
constexpr int32_t kFewestFiles = 10;

using Codes = std::unordered_set<StockCode, StockCodeHash>;

Codes MarkedForDeletion(const StockList& deleted) {
  Codes codes;
  for (const ListedStock& stock : deleted.stocks) {
    const bool marked = stock.flag == static_cast<int16_t>(DeletionState::kDelete);
    if (marked && stock.code != StockCode()) codes.insert(stock.code);
  }
  return codes;
}

/// Takes the purged stocks out and gives the others the record numbers of `master`.
void Renumber(StockList& list, const Codes& purged, const StockMaster& master) {
  std::erase_if(list.stocks, [&](const ListedStock& stock) { return purged.contains(stock.code); });
  for (ListedStock& stock : list.stocks) {
    if (stock.code != StockCode()) stock.record = master.Find(stock.code);
  }
}

base::Status ReplaceList(const StoreFile& file, const StockList& list, Transaction& transaction) {
  const auto bytes = EncodeStockList(list);
  return bytes ? transaction.Replace(file, *bytes) : base::Forward(bytes);
}

/// The next stock that gets the slot shall not inherit its lines.
void ClearTrendLines(base::SlotRecord slot, std::string_view lines, Transaction& transaction) {
  const base::RecordView records(lines, kTrendRecordLength);
  if (!records.Record(slot.Value())) return;
  transaction.Write(kTrendLines, records.Offset(slot.Value()), EncodeTrendLines(TrendLines()));
}

}  // namespace

base::Result<int32_t> StockStore::PurgeDeletedStocks() {
  if (const base::Status ready = state_->PrepareChange(); !ready) return base::Forward(ready);
  if (state_->prices.FileCount() < kFewestFiles) {
    return base::Fail("データファイルは１０ファイル以上必要です。");
  }
  const StoreLocation& location = state_->location;
  const auto deleted_bytes = ReadIfThere(location, kDeleted);
  if (!deleted_bytes) return base::Forward(deleted_bytes);
  StockList deleted = DecodeStockList(*deleted_bytes);
  const Codes purged = MarkedForDeletion(deleted);
  if (purged.empty()) return 0;
  const auto master_bytes = base::ReadFile(PathOf(location, kMaster));
  const auto added_bytes = ReadIfThere(location, kAdded);
  const auto index_bytes = ReadIfThere(location, kIndex);
  const auto line_bytes = ReadIfThere(location, kTrendLines);
  for (const auto* bytes : {&master_bytes, &added_bytes, &index_bytes, &line_bytes}) {
    if (!*bytes) return base::Forward(*bytes);
  }

  Transaction transaction(location, *state_->files);
  const base::RecordView records(*master_bytes, kMasterRecordLength);
  std::string kept_bytes(records.Record(1).value_or(std::string_view()));
  std::vector<StockRecord> kept;
  int32_t number = 2;
  for (const StockRecord& stock : state_->master.Stocks()) {
    // The bytes as they are: a record this program cannot read keeps what it holds.
    const std::string_view record = records.Record(number++).value_or(std::string_view());
    if (purged.contains(stock.code)) {
      ClearTrendLines(stock.slot, *line_bytes, transaction);
    } else {
      kept.push_back(stock);
      kept_bytes += record;
    }
  }
  const auto count = static_cast<int32_t>(state_->master.Stocks().size() - kept.size());
  const StockMaster master(state_->master.Header(), std::move(kept));
  StockList added = DecodeStockList(*added_bytes);
  Renumber(added, purged, master);
  Renumber(deleted, purged, master);
  deleted.SetDeletionCounter(static_cast<int16_t>(
      std::min<int32_t>(deleted.DeletionCounter() + count, std::numeric_limits<int16_t>::max())));
  const auto index = BuildNameIndex(master, DecodeNameIndex(*index_bytes), {});
  if (!index) return base::Forward(index);
  base::Status staged = transaction.Replace(kMaster, kept_bytes);
  if (staged) staged = ReplaceList(kAdded, added, transaction);
  if (staged) staged = ReplaceList(kDeleted, deleted, transaction);
  if (staged) staged = transaction.Replace(kIndex, *index);
  if (staged) staged = state_->Commit(transaction);
  if (staged) staged = state_->Reload();
  if (!staged) return base::Forward(staged);
  return count;
}

}  // namespace orin::store
