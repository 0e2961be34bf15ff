#include <algorithm>
#include <limits>
#include <unordered_set>

#include "base/cp932.h"
#include "store/companion_formats.h"
#include "store/companion_sums.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/slot_account.h"
#include "store/store_state.h"
#include "store/sum_change.h"

namespace orin::store {

namespace {

constexpr int32_t kGreatestSlot = std::numeric_limits<int16_t>::max();

base::Status CheckNewStocks(std::span<const NewStock> stocks, const StockMaster& master) {
  std::unordered_set<StockCode, StockCodeHash> seen;
  for (const NewStock& stock : stocks) {
    const std::string code(stock.code.Text());
    if (stock.code == StockCode()) return base::Fail("銘柄コードのない銘柄は追加できません。");
    if (!master.Find(stock.code).IsNone()) {
      return base::Fail("銘柄コード" + code + "はすでに登録されています。");
    }
    if (!seen.insert(stock.code).second) {
      return base::Fail("追加する銘柄に銘柄コード" + code + "が2つあります。");
    }
    // The whole name, not only the part that the field holds: orin.ind has more of it.
    if (const auto name = base::EncodeCp932(stock.name); !name) {
      return base::Fail("銘柄" + code + "の銘柄名：" + name.error().message);
    }
  }
  return {};
}

/// The next slots that no stock has, above those of all stocks: `count` of them, or as many as
/// there is room for. Slots that the price files (of `records` records) have above them are used
/// again where purged stocks account for them; otherwise they hold what is left of stocks that
/// orin.sys has lost.
std::vector<base::SlotRecord> FreeSlots(const StoreLocation& location, const StockMaster& master,
                                        int32_t records, size_t count) {
  std::unordered_set<int32_t> used = {master.Header().date_record};
  for (const StockRecord& stock : master.Stocks()) used.insert(stock.slot.Value());
  // A record number of orin.sys has to fit into the 16 bits of orin.ind as well.
  const size_t known = std::min(master.Stocks().size(), size_t{kMostStocks});
  count = std::min(count, size_t{kMostStocks} - known);
  std::vector<base::SlotRecord> slots;
  // Behind all stocks rather than in a gap, so that new slots lie together in the files.
  const bool reuses = CountSlots(location, master, records).IsExplained();
  int32_t next = std::max(reuses ? HighestSlot(master, records) : records, 1) + 1;
  for (; slots.size() < count && next <= kGreatestSlot; ++next) {
    if (!used.contains(next)) slots.emplace_back(next);
  }
  return slots;
}

/// The stocks as they will be in orin.sys; `bytes` gets their records.
base::Result<std::vector<StockRecord>> MakeRecords(std::span<const NewStock> stocks,
                                                   std::span<const base::SlotRecord> slots,
                                                   std::string& bytes) {
  std::vector<StockRecord> records;
  for (size_t i = 0; i < stocks.size(); ++i) {
    const NewStock& stock = stocks[i];
    StockRecord record;
    record.code = stock.code;
    record.slot = slots[i];
    record.listing = stock.listing;
    record.kind = stock.kind;
    record.sector = stock.sector;
    record.name = stock.name;
    const auto encoded = EncodeStockRecord(record);
    if (!encoded) return base::Forward(encoded);
    bytes += AsText(*encoded);
    // What a later start will read, with the name cut.
    records.push_back(DecodeStockRecord(AsText(*encoded)));
  }
  return records;
}

/// Gives every price file the new slots without data, whatever an earlier stock may have left.
void GrowPriceFiles(const PriceFiles& prices, int32_t date_record,
                    std::span<const base::SlotRecord> slots, PriceSumChange& sums,
                    Transaction& transaction) {
  const std::string no_data = NoDataEntries(1);
  for (int32_t index = 0; index < prices.FileCount(); ++index) {
    const DayPlace place = prices.PlaceOf(index * kDaysPerFile);
    const auto whole = static_cast<int32_t>(prices.Bytes(place.file).size() / kDailyRecordLength);
    const int32_t last = slots.back().Value();
    // Records between the file's end and the first new slot belong to damaged stock records.
    int32_t first = std::min(slots.front().Value(), whole + 1);
    while (first <= last) {
      const int32_t end = date_record >= first && date_record <= last ? date_record : last + 1;
      if (end > first) {
        transaction.Fill(DailyFile(place.file), RecordOffset(first), no_data,
                         int64_t{end - first} * kDaysPerFile);
        sums.TakeEmptied(place.file, first, end);
      }
      first = end == date_record ? end + 1 : end;
    }
  }
}

base::Status ReplaceAdded(const StoreLocation& location, std::span<const StockRecord> added,
                          base::MasterRecord first, CompanionSumChange& sums,
                          Transaction& transaction) {
  const StoreFile file = {FileKind::kAdded, 0};
  const auto bytes = ReadIfThere(location, file);
  if (!bytes) return base::Forward(bytes);
  StockList list = DecodeStockList(*bytes);
  for (const StockRecord& stock : added) {
    list.stocks.push_back(ListedStock{stock.code, stock.name, first, 0});
    first = base::MasterRecord(first.Value() + 1);
  }
  const auto encoded = EncodeStockList(list);
  return encoded ? sums.Replace(file.kind, *encoded, transaction) : base::Forward(encoded);
}

base::Status ReplaceIndex(const StoreLocation& location, const StockMaster& master,
                          std::span<const CompanyName> companies, CompanionSumChange& sums,
                          Transaction& transaction) {
  const StoreFile file = {FileKind::kNameIndex, 0};
  const auto bytes = ReadIfThere(location, file);
  if (!bytes) return base::Forward(bytes);
  const auto index = BuildNameIndex(master, DecodeNameIndex(*bytes), companies);
  return index ? sums.Replace(file.kind, *index, transaction) : base::Forward(index);
}

}  // namespace

int32_t StockStore::RoomForStocks() const {
  return static_cast<int32_t>(FreeSlots(state_->location, state_->master,
                                        state_->prices.LongestRecords(), size_t{kMostStocks})
                                  .size());
}

base::Status StockStore::AddStocks(std::span<const NewStock> stocks) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  if (stocks.empty()) return {};
  const StockMaster& master = state_->master;
  if (const base::Status checked = CheckNewStocks(stocks, master); !checked) return checked;
  const auto slots =
      FreeSlots(state_->location, master, state_->prices.LongestRecords(), stocks.size());
  if (slots.size() < stocks.size()) {
    return base::Fail("銘柄の数が上限の" + std::to_string(kMostStocks) + "を超えるため、" +
                      std::to_string(stocks.size()) + "銘柄を追加できません。");
  }
  std::string record_bytes;
  const auto added = MakeRecords(stocks, slots, record_bytes);
  if (!added) return base::Forward(added);

  const base::MasterRecord first(static_cast<int32_t>(master.Stocks().size()) + 2);
  std::vector<CompanyName> companies;
  for (size_t i = 0; i < stocks.size(); ++i) {
    companies.push_back(
        {base::MasterRecord(first.Value() + static_cast<int32_t>(i)), stocks[i].name});
  }
  std::vector<StockRecord> all(master.Stocks().begin(), master.Stocks().end());
  all.insert(all.end(), added->begin(), added->end());
  StockMaster grown(master.Header(), std::move(all));

  if (const base::Status kept = state_->KeepDamagedCompanions(); !kept) return kept;
  Transaction transaction(state_->location, *state_->files);
  transaction.Write(kMasterFile, int64_t{first.Value() - 1} * int64_t{kMasterRecordLength},
                    record_bytes);
  PriceSumChange sums(state_->location, state_->prices);
  GrowPriceFiles(state_->prices, master.Header().date_record, slots, sums, transaction);
  sums.AddTo(transaction);
  CompanionSumChange lists(state_->location);
  auto new_master = ReadIfThere(state_->location, kMasterFile);
  if (!new_master) return base::Forward(new_master);
  new_master->resize(static_cast<size_t>(first.Value() - 1) * kMasterRecordLength);
  lists.Take(FileKind::kMaster, *new_master + record_bytes);
  base::Status listed = ReplaceAdded(state_->location, *added, first, lists, transaction);
  if (listed) listed = ReplaceIndex(state_->location, grown, companies, lists, transaction);
  if (listed) listed = lists.AddTo(transaction);
  if (!listed) return listed;
  if (const auto committed = state_->Commit(transaction); !committed) return committed;
  return state_->Reload();
}

}  // namespace orin::store
