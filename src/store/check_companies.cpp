#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/file_system.h"
#include "base/record_file.h"
#include "store/check_parts.h"
#include "store/company_format.h"
#include "store/price_format.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

using SlotCodes = std::unordered_map<int32_t, StockCode>;

/// The records of orin.fin or orin.acc against the stocks of orin.sys.
class CompanyChecker {
 public:
  CompanyChecker(std::string name, const SlotCodes& codes, Findings& findings)
      : name_(std::move(name)), codes_(codes), findings_(findings) {}

  void Check(std::string_view record, int32_t number) {
    const std::string_view padded = record.substr(company_offset::kCode, StockCode::kWidth);
    if (padded == StockCode().Padded()) return;
    const std::string where = name_ + "のレコード" + std::to_string(number) + "の銘柄コード";
    const auto code = StockCode::Parse(padded);
    if (!code) {
      findings_.AddOfKind("code", where + "が正しくありません。");
      return;
    }
    const std::string told = where + "「" + std::string(code->Text()) + "」";
    const auto [before, is_new] = seen_.try_emplace(*code, number);
    if (!is_new) {
      findings_.AddOfKind("twice",
                          told + "はレコード" + std::to_string(before->second) + "と同じです。");
    }
    const auto owner = codes_.find(number);
    if (owner != codes_.end() && owner->second == *code) return;
    const std::string in_master =
        owner == codes_.end() ? "になく" : "では「" + std::string(owner->second.Text()) + "」で";
    findings_.AddOfKind(
        "owner", told + "の銘柄レコードはorin.sys" + in_master + "、このレコードは使われません。");
  }

 private:
  std::string name_;
  const SlotCodes& codes_;
  Findings& findings_;
  std::unordered_map<StockCode, int32_t, StockCodeHash> seen_;
};

/// The dates of a credit file; the balances of a day that is none are passed over.
void CheckCreditDates(const std::string& name, std::string_view dates, base::Date& last,
                      Findings& findings) {
  for (size_t i = 0; i < size_t{kDaysPerFile}; ++i) {
    const auto date = DecodeDateEntry(dates.data() + i * kCreditEntryLength);
    const std::string at = name + "の日付レコードの" + std::to_string(i + 1) + "番目";
    if (!date) findings.AddOfKind("date", at + "が日付ではありません。");
    if (!date || date->IsNone()) continue;
    if (!last.IsNone() && *date <= last) {
      findings.AddOfKind("order", at + "の日付" + date->ToText() + "が前の日付" + last.ToText() +
                                      "より後ではありません。");
    }
    last = *date;
  }
  findings.EndGroup();
}

/// Whether the header names credit files, by numbers that can be.
bool CheckCreditNumbers(const CheckedStore& store, Findings& findings) {
  const int32_t first = store.header->credit_first;
  const int32_t current = store.header->credit_current;
  const std::string name = store.NameForMessage({FileKind::kMaster, 0});
  if (current < 0 || current > kLastFileNumber) {
    findings.Add(name + "の信用カレント" + std::to_string(current) + "が0から" +
                 std::to_string(kLastFileNumber) + "の範囲にありません。");
  }
  // As with price files, a store without credit files may say that the first one will be number 1.
  const bool has_none = current == 0 && first == 1;
  if (first > current && !has_none) {
    findings.Add(name + "の信用先頭" + std::to_string(first) + "が信用カレント" +
                 std::to_string(current) + "より後です。");
  } else if (first < 0 || (first == 0 && current > 0)) {
    const std::string range = current > 0 ? "1から" + std::to_string(current) : "0から1";
    findings.Add(name + "の信用先頭" + std::to_string(first) + "が" + range +
                 "の範囲にありません。");
  }
  return current > 0;
}

}  // namespace

void CheckCompanyFiles(const CheckedStore& store, Findings& findings) {
  SlotCodes codes;
  for (const StockRecord& stock : store.master.Stocks()) {
    codes.try_emplace(stock.slot.Value(), stock.code);
  }
  for (const CompanyFile& file : kCompanyFiles) {
    // The files are made with the first data.
    const StoreFile stored = {file.kind, 0};
    if (!Exists(store.location, stored)) continue;
    const auto bytes = ReadForCheck(store, file.kind, findings);
    if (!bytes) continue;
    if (const auto checked = CheckCompanyBytes(store.location, file, *bytes); !checked) {
      findings.Add(checked.error().message);
      continue;
    }
    const base::RecordView records(*bytes, file.record_length);
    CompanyChecker checker(store.NameForMessage(stored), codes, findings);
    for (int32_t number = 2; number <= records.Count(); ++number) {
      checker.Check(*records.Record(number), number);
    }
    findings.EndGroup();
  }
}

void CheckCreditFiles(const CheckedStore& store, Findings& findings) {
  if (!store.header || !CheckCreditNumbers(store, findings)) return;
  const int32_t last_file = std::min<int32_t>(store.header->credit_current, kLastFileNumber);
  base::Date last;
  for (int32_t number = std::max<int32_t>(store.header->credit_first, 1); number <= last_file;
       ++number) {
    const StoreFile file = {FileKind::kCredit, static_cast<int16_t>(number)};
    const std::string name = "信用残高ファイル" + store.NameForMessage(file);
    if (!Exists(store.location, file)) {
      findings.Add(name + "がありません。");
      continue;
    }
    const auto mapped = base::MappedFile::Open(PathOf(store.location, file));
    if (!mapped) {
      findings.Add(mapped.error().message);
      continue;
    }
    CheckWholeRecords(store, file, mapped->Bytes().size(), kCreditRecordLength, findings);
    const base::RecordView records(mapped->Bytes(), kCreditRecordLength);
    if (const auto dates = records.Record(store.header->date_record)) {
      CheckCreditDates(name, *dates, last, findings);
    } else {
      findings.Add(name + "に日付レコードがありません。");
    }
  }
}

}  // namespace orin::store
