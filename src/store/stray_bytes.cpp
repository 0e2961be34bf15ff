#include <algorithm>
#include <vector>

#include "store/companion_formats.h"
#include "store/company_format.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/store_state.h"
#include "store/trend_lines.h"

namespace orin::store {

namespace {

constexpr StoreFile kMaster = {FileKind::kMaster, 0};
constexpr StoreFile kIndex = {FileKind::kNameIndex, 0};

size_t EntriesIn(const StoreLocation& location, const StoreFile& file) {
  const auto bytes = ReadIfThere(location, file);
  return bytes ? bytes->size() / kIndexRecordLength : 0;
}

/// Whether a list's whole records are all that its header counts.
bool IsWholeList(const StoreLocation& location, const StoreFile& file, int32_t records) {
  const auto bytes = ReadIfThere(location, file);
  return bytes && records > 0 && CountInHeader(*bytes) <= records - 1;
}

base::Status CutOff(const StoreLocation& location, const StoreFile& file, int64_t length,
                    base::FileSystem& files) {
  if (const base::Status kept = KeepCopyAside(location, file, files); !kept) return kept;
  const auto opened = files.OpenForUpdate(PathOf(location, file));
  if (!opened) return base::Forward(opened);
  const base::Status cut = (*opened)->Truncate(length);
  return cut ? (*opened)->Sync() : cut;
}

}  // namespace

std::vector<StockStore::State::RecordFile> StockStore::State::RecordFiles() const {
  std::vector<RecordFile> all = {{kMaster, kMasterRecordLength},
                                 {kIndex, kIndexRecordLength},
                                 {{FileKind::kAdded, 0}, kListRecordLength},
                                 {{FileKind::kDeleted, 0}, kListRecordLength},
                                 {{FileKind::kTrendLines, 0}, kTrendRecordLength}};
  for (const CompanyFile& file : kCompanyFiles) all.push_back({{file.kind, 0}, file.record_length});
  for (int32_t i = 0; i < prices.FileCount(); ++i) {
    all.push_back({DailyFile(prices.PlaceOf(i * kDaysPerFile).file), kDailyRecordLength});
  }
  return all;
}

bool StockStore::State::HoldsEverySlot(const StoreFile& file, int32_t records,
                                       const SlotAccount& account) const {
  const size_t stocks = master.Stocks().size();
  const size_t indexed = EntriesIn(location, kIndex);
  switch (file.kind) {
    case FileKind::kMaster:
      // Without price files nothing but orin.ind knows of a stock that has been cut off.
      return account.IsExplained() && indexed <= stocks &&
             (prices.FileCount() > 0 || indexed == stocks);
    case FileKind::kNameIndex:
      return indexed == stocks;
    case FileKind::kAdded:
    case FileKind::kDeleted:
      return IsWholeList(location, file, records);
    case FileKind::kDaily:
      return account.IsExplained() && records == prices.LongestRecords();
    default:
      return records >= HighestSlot(master, prices.LongestRecords());
  }
}

base::Status StockStore::State::TakeOffStrayBytes(const SlotAccount& account) {
  bool cuts_prices = false;
  for (const auto& [file, record_length] : RecordFiles()) {
    std::error_code failure;
    const std::filesystem::path path = PathOf(location, file);
    const auto length = static_cast<size_t>(std::filesystem::file_size(path, failure));
    if (failure || length % record_length == 0) continue;
    const size_t records = length / record_length;
    if (!HoldsEverySlot(file, static_cast<int32_t>(records), account)) {
      // Where stocks have been cut off, writing would take their slots for unused ones.
      if (file == kMaster) return base::Fail(PartialMasterSentence(length));
      continue;
    }
    const base::Status cut =
        CutOff(location, file, static_cast<int64_t>(records * record_length), *files);
    if (!cut && file == kMaster) return cut;
    cuts_prices = cuts_prices || file.kind == FileKind::kDaily;
    problems.push_back(cut ? "「" + base::PathText(path) + "」の最後の余分な" +
                                 std::to_string(length % record_length) +
                                 "バイトを取り除きました（元の内容は「" +
                                 base::PathText(SetAsidePathOf(location, file)) + "」にあります）。"
                           : cut.error().message);
  }
  // A map that is longer than its file counts as cut short by another program.
  return cuts_prices ? LoadPrices() : base::Status();
}

}  // namespace orin::store
