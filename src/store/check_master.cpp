#include <limits>
#include <unordered_map>

#include "base/record_file.h"
#include "store/check_parts.h"
#include "store/master_format.h"
#include "store/store_state.h"

namespace orin::store {

namespace {

/// The stocks' numbers against each other, record by record.
class StockChecker {
 public:
  StockChecker(const CheckedStore& store, Findings& findings)
      : name_(store.NameForMessage(kMasterFile)),
        date_record_(store.header ? store.header->date_record : 0),
        findings_(findings) {}

  void Check(const StockRecord& stock, int32_t record) {
    const std::string who = name_ + "の" + StockForMessage(stock, record) + "の";
    if (stock.code == StockCode()) {
      findings_.Add(name_ + "のレコード" + std::to_string(record) +
                    "の銘柄コードが正しくありません。");
    } else {
      CheckUnique(codes_, std::string(stock.code.Text()), record, who + "銘柄コード");
    }
    CheckSlot(stock, record, who);
    if (stock.listing < 1 || stock.listing > 3) {
      findings_.Add(who + "上場コード" + std::to_string(stock.listing) +
                    "が1から3の範囲にありません。");
    }
    if (stock.name.find("\uFFFD") != std::string::npos) {
      findings_.Add(who + "銘柄名に読めない文字があります。");
    }
  }

 private:
  using Seen = std::unordered_map<std::string, int32_t>;

  void CheckSlot(const StockRecord& stock, int32_t record, const std::string& who) {
    const int32_t slot = stock.slot.Value();
    if (slot < 1 || slot == date_record_) {
      findings_.Add(who + "銘柄レコード" + std::to_string(slot) + "が正しくありません。");
    } else {
      CheckUnique(slots_, std::to_string(slot), record, who + "銘柄レコード");
    }
  }

  void CheckUnique(Seen& seen, const std::string& value, int32_t record, const std::string& what) {
    const auto [found, is_new] = seen.try_emplace(value, record);
    if (is_new) return;
    findings_.Add(what + value + "はレコード" + std::to_string(found->second) + "と同じです。");
  }

  std::string name_;
  int32_t date_record_;
  Findings& findings_;
  Seen codes_;
  Seen slots_;
};

}  // namespace

void CheckMaster(CheckedStore& store, Findings& findings) {
  const auto bytes = ReadForCheck(store, FileKind::kMaster, findings);
  if (!bytes) return;
  CheckWholeRecords(store, kMasterFile, bytes->size(), kMasterRecordLength, findings);
  const base::RecordView records(*bytes, kMasterRecordLength);
  const auto header_record = records.Record(1);
  if (!header_record) {
    findings.Add(store.NameForMessage(kMasterFile) + "に先頭のレコードがありません。");
    return;
  }
  const MasterHeader header = DecodeMasterHeader(*header_record);
  const base::Status checked = CheckHeader(header, PathOf(store.location, kMasterFile));
  if (checked) {
    store.header = header;
  } else {
    findings.Add(checked.error().message);
  }
  if (records.Count() > std::numeric_limits<int16_t>::max()) {
    findings.Add(store.NameForMessage(kMasterFile) + "のレコード数" +
                 std::to_string(records.Count()) + "が上限の32767を超えています。");
  }
  std::vector<StockRecord> stocks;
  StockChecker checker(store, findings);
  for (int32_t number = 2; number <= records.Count(); ++number) {
    stocks.push_back(DecodeStockRecord(*records.Record(number)));
    checker.Check(stocks.back(), number);
  }
  store.master = StockMaster(header, std::move(stocks));
}

}  // namespace orin::store
