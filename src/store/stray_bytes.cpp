#include <algorithm>
#include <utility>
#include <vector>

#include "store/companion_formats.h"
#include "store/company_format.h"
#include "store/master_format.h"
#include "store/price_sums.h"
#include "store/store_state.h"
#include "store/trend_lines.h"

namespace orin::store {

namespace {

size_t EntriesIn(const StoreLocation& location, const StoreFile& file) {
  const auto bytes = ReadIfThere(location, file);
  return bytes ? bytes->size() / kIndexRecordLength : 0;
}

/// Whether a list's whole records are all that its header counts.
bool IsWholeList(const StoreLocation& location, const StoreFile& file, int32_t records) {
  const auto bytes = ReadIfThere(location, file);
  return bytes && records > 0 && CountInHeader(*bytes) <= records - 1;
}

/// The name of the copy that is kept.
base::Result<std::filesystem::path> CutOff(const StoreLocation& location, const StoreFile& file,
                                           int64_t length, base::FileSystem& files) {
  auto kept = KeepCopyAside(location, file, files);
  if (!kept) return kept;
  const auto opened = files.OpenForUpdate(PathOf(location, file));
  if (!opened) return base::Forward(opened);
  base::Status cut = (*opened)->Truncate(length);
  if (cut) cut = (*opened)->Sync();
  if (!cut) return base::Forward(cut);
  return kept;
}

}  // namespace

bool StockStore::State::AccountsForRecord(int16_t file, int32_t record) const {
  const bool has_stock = std::ranges::any_of(
      master.Stocks(), [record](const StockRecord& stock) { return stock.slot.Value() == record; });
  if (has_stock) return true;
  auto bytes = ReadIfThere(location, SumsOf(file));
  const auto sums = bytes ? PriceSums::Decode(file, std::move(*bytes)) : std::nullopt;
  return sums && sums->Records() >= record;
}

base::Status StockStore::State::CheckLastPriceRecords() const {
  for (int32_t i = 0; i < prices.FileCount(); ++i) {
    const int16_t number = prices.PlaceOf(i * kDaysPerFile).file;
    const size_t length = prices.Bytes(number).size();
    const size_t rest = length % kDailyRecordLength;
    const auto record = static_cast<int32_t>(length / kDailyRecordLength) + 1;
    if (rest == 0 || !AccountsForRecord(number, record)) continue;
    return base::Fail("株価ファイル「" + base::PathText(PathOf(location, DailyFile(number))) +
                      "」の銘柄レコード" + std::to_string(record) + "が" + std::to_string(rest) +
                      "バイトしかありません。このまま更新するとその株価が失われるので、更新しませ"
                      "ん。このファイルを控えから戻してください。");
  }
  return {};
}

std::vector<StockStore::State::RecordFile> StockStore::State::RecordFiles() const {
  std::vector<RecordFile> all = {{kMasterFile, kMasterRecordLength},
                                 {kIndexFile, kIndexRecordLength},
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
  const size_t indexed = EntriesIn(location, kIndexFile);
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
  if (const base::Status checked = CheckLastPriceRecords(); !checked) return checked;
  bool cuts_prices = false;
  for (const auto& [file, record_length] : RecordFiles()) {
    std::error_code failure;
    const std::filesystem::path path = PathOf(location, file);
    const auto length = static_cast<size_t>(std::filesystem::file_size(path, failure));
    if (failure || length % record_length == 0) continue;
    const size_t records = length / record_length;
    if (!HoldsEverySlot(file, static_cast<int32_t>(records), account)) {
      // Where stocks have been cut off, writing would take their slots for unused ones.
      if (file == kMasterFile) return base::Fail(PartialMasterSentence(length));
      continue;
    }
    const auto cut = CutOff(location, file, static_cast<int64_t>(records * record_length), *files);
    if (!cut && file == kMasterFile) return base::Forward(cut);
    cuts_prices = cuts_prices || file.kind == FileKind::kDaily;
    problems.push_back(cut ? "「" + base::PathText(path) + "」の最後の余分な" +
                                 std::to_string(length % record_length) +
                                 "バイトを取り除きました（元の内容は「" + base::PathText(*cut) +
                                 "」にあります）。"
                           : cut.error().message);
  }
  // A map that is longer than its file counts as cut short by another program.
  return cuts_prices ? LoadPrices() : base::Status();
}

}  // namespace orin::store
