#include <algorithm>
#include <array>
#include <limits>
#include <unordered_set>

#include "base/record_file.h"
#include "store/companion_formats.h"
#include "store/companion_sums.h"
#include "store/company_format.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/store_state.h"
#include "store/trend_lines.h"

namespace orin::store {

namespace {

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

base::Status ReplaceList(const StoreFile& file, const StockList& list, CompanionSumChange& sums,
                         Transaction& transaction) {
  const auto bytes = EncodeStockList(list);
  return bytes ? sums.Replace(file.kind, *bytes, transaction) : base::Forward(bytes);
}

/// The next stock that gets the slot shall not inherit its lines.
void ClearTrendLines(base::SlotRecord slot, std::string_view lines, Transaction& transaction) {
  const base::RecordView records(lines, kTrendRecordLength);
  if (!records.Record(slot.Value())) return;
  transaction.Write(kTrendLinesFile, records.Offset(slot.Value()), EncodeTrendLines(TrendLines()));
}

/// The files that name stocks, as they are.
struct SystemFiles {
  std::string master;
  std::string index;
  std::string added;
  std::string deleted;
  std::string trend_lines;
  std::array<std::string, kCompanyFiles.size()> companies;
};

base::Result<SystemFiles> ReadSystemFiles(const StoreLocation& location) {
  SystemFiles files;
  struct Wanted {
    StoreFile file;
    std::string* bytes;
  };
  for (const Wanted& wanted :
       {Wanted{kMasterFile, &files.master}, Wanted{kIndexFile, &files.index},
        Wanted{kAddedFile, &files.added}, Wanted{kDeletedFile, &files.deleted},
        Wanted{kTrendLinesFile, &files.trend_lines}}) {
    auto bytes = ReadIfThere(location, wanted.file);
    if (!bytes) return base::Forward(bytes);
    *wanted.bytes = std::move(*bytes);
  }
  for (size_t i = 0; i < kCompanyFiles.size(); ++i) {
    auto bytes = ReadIfThere(location, {kCompanyFiles[i].kind, 0});
    if (!bytes) return base::Forward(bytes);
    files.companies[i] = std::move(*bytes);
  }
  return files;
}

/// Nor its company data, should it have the same code. `files` gets what the transaction writes.
void ClearCompanies(const StockRecord& stock, SystemFiles& files, Transaction& transaction) {
  for (size_t i = 0; i < kCompanyFiles.size(); ++i) {
    const CompanyFile& file = kCompanyFiles[i];
    const base::RecordView records(files.companies[i], file.record_length);
    const auto record = records.Record(stock.slot.Value());
    if (!record || !record->starts_with(stock.code.Padded())) continue;
    const int64_t offset = records.Offset(stock.slot.Value());
    const std::string empty = EmptyCompanyRecord(file);
    transaction.Write({file.kind, 0}, offset, empty);
    files.companies[i].replace(static_cast<size_t>(offset), empty.size(), empty);
  }
}

/// The stocks that stay, with the bytes of orin.sys for them.
struct KeptStocks {
  std::vector<StockRecord> stocks;
  std::string bytes;
};

KeptStocks KeepOthers(const StockMaster& master, const Codes& purged, SystemFiles& files,
                      Transaction& transaction) {
  const base::RecordView records(files.master, kMasterRecordLength);
  KeptStocks kept;
  kept.bytes = records.Record(1).value_or(std::string_view());
  int32_t number = 2;
  for (const StockRecord& stock : master.Stocks()) {
    // The bytes as they are: a record this program cannot read keeps what it holds.
    const std::string_view record = records.Record(number++).value_or(std::string_view());
    if (purged.contains(stock.code)) {
      ClearTrendLines(stock.slot, files.trend_lines, transaction);
      ClearCompanies(stock, files, transaction);
    } else {
      kept.stocks.push_back(stock);
      kept.bytes += record;
    }
  }
  return kept;
}

/// The files beside orin.sys, and orin.sum. What was written to the company files is in `files`.
base::Status ReplaceCompanions(const StoreLocation& location, const SystemFiles& files,
                               std::string_view new_master, const StockList& added,
                               const StockList& deleted, std::string_view index,
                               Transaction& transaction) {
  CompanionSumChange sums(location);
  sums.Take(FileKind::kMaster, new_master);
  for (size_t i = 0; i < kCompanyFiles.size(); ++i) {
    const FileKind kind = kCompanyFiles[i].kind;
    if (Exists(location, {kind, 0})) sums.Take(kind, files.companies[i]);
  }
  base::Status status = ReplaceList(kAddedFile, added, sums, transaction);
  if (status) status = ReplaceList(kDeletedFile, deleted, sums, transaction);
  if (status) status = sums.Replace(kIndexFile.kind, index, transaction);
  return status ? sums.AddTo(transaction) : status;
}

int16_t AddedTo(int16_t counter, int32_t count) {
  const int32_t most = std::numeric_limits<int16_t>::max();
  return static_cast<int16_t>(std::min(counter + count, most));
}

}  // namespace

base::Result<int32_t> StockStore::PurgeDeletedStocks() {
  if (const base::Status ready = state_->PrepareChange(); !ready) return base::Forward(ready);
  if (state_->prices.FileCount() < kFewestFiles) {
    return base::Fail("データファイルは１０ファイル以上必要です。");
  }
  auto files = ReadSystemFiles(state_->location);
  if (!files) return base::Forward(files);
  StockList deleted = DecodeStockList(files->deleted);
  const Codes purged = MarkedForDeletion(deleted);
  if (purged.empty()) return 0;

  if (const base::Status kept = state_->KeepDamagedCompanions(); !kept) return base::Forward(kept);
  Transaction transaction(state_->location, *state_->files);
  KeptStocks kept = KeepOthers(state_->master, purged, *files, transaction);
  const auto count = static_cast<int32_t>(state_->master.Stocks().size() - kept.stocks.size());
  const StockMaster master(state_->master.Header(), std::move(kept.stocks));
  StockList added = DecodeStockList(files->added);
  Renumber(added, purged, master);
  Renumber(deleted, purged, master);
  deleted.SetDeletionCounter(AddedTo(deleted.DeletionCounter(), count));
  const auto index = BuildNameIndex(master, DecodeNameIndex(files->index), {});
  if (!index) return base::Forward(index);
  base::Status status = transaction.Replace(kMasterFile, kept.bytes);
  if (status) {
    status = ReplaceCompanions(state_->location, *files, kept.bytes, added, deleted, *index,
                               transaction);
  }
  if (status) status = state_->Commit(transaction);
  if (status) status = state_->Reload();
  if (!status) return base::Forward(status);
  return count;
}

}  // namespace orin::store
