#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/record_file.h"
#include "store/check_parts.h"
#include "store/companion_formats.h"
#include "store/name_index.h"
#include "store/splits.h"
#include "store/stored_file.h"
#include "store/trend_lines.h"

namespace orin::store {

namespace {

int32_t LastRecord(const CheckedStore& store) {
  return static_cast<int32_t>(store.master.Stocks().size()) + 1;
}

/// An entry that leads to a record of orin.sys; `where` names file and entry.
void CheckReference(const CheckedStore& store, const StockCode& code, base::MasterRecord record,
                    const std::string& where, Findings& findings) {
  const int32_t last = LastRecord(store);
  if (record.Value() < 2 || record.Value() > last) {
    findings.AddOfKind("record", where + "のレコード番号" + std::to_string(record.Value()) +
                                     "が2から" + std::to_string(last) + "の範囲にありません。");
    return;
  }
  const StockCode& in_master = store.master.Stock(record).code;
  if (code == in_master) return;
  findings.AddOfKind("code", where + "の銘柄コード「" + std::string(code.Text()) +
                                 "」がorin.sysのレコード" + std::to_string(record.Value()) +
                                 "の「" + std::string(in_master.Text()) + "」と違います。");
}

void CheckIndexOrder(const CheckedStore& store, Findings& findings) {
  const auto bytes = ReadIfThere(store.location, kIndexFile);
  if (!bytes) return;
  std::string before;
  int32_t number = 0;
  for (const IndexEntry& entry : DecodeNameIndex(*bytes)) {
    ++number;
    std::string key = SyllabaryKey(entry.reading);
    if (key < before) {
      findings.AddOfKind("order", store.NameForMessage(kIndexFile) + "のレコード" +
                                      std::to_string(number) + "の読み「" + entry.reading +
                                      "」が５０音順に並んでいません。");
    }
    before = std::move(key);
  }
  findings.EndGroup();
}

void CheckTrendLines(const CheckedStore& store, Findings& findings) {
  const StoreFile file = {FileKind::kTrendLines, 0};
  std::error_code failure;
  const auto length = std::filesystem::file_size(PathOf(store.location, file), failure);
  // The file is made with the first line drawn.
  if (failure) return;
  CheckWholeRecords(store, file, static_cast<size_t>(length), kTrendRecordLength, findings);
}

/// What no writer of orin.add leaves: a stock twice, an entry without a code, more emptied entries
/// than stocks that have been deleted.
void CheckAddedEntries(const CheckedStore& store, std::string_view bytes, const std::string& name,
                       Findings& findings) {
  const base::RecordView records(bytes, kListRecordLength);
  const auto deleted = ReadIfThere(store.location, {FileKind::kDeleted, 0});
  const int32_t counter = deleted ? DecodeStockList(*deleted).DeletionCounter() : 0;
  std::unordered_map<std::string_view, int32_t> seen;
  int32_t emptied = 0;
  const int32_t last = std::min(CountInHeader(bytes) + 1, records.Count());
  for (int32_t number = 2; number <= last; ++number) {
    const std::string_view code = records.Record(number)->substr(0, StockCode::kWidth);
    const std::string where = name + "のレコード" + std::to_string(number);
    if (code == kEmptiedCode) {
      if (++emptied <= counter) continue;
      findings.AddOfKind("emptied", where + "が空にされていますが、orin.delの削除カウンタ" +
                                        std::to_string(counter) + "より多い数です。");
    } else if (!StockCode::Parse(code)) {
      findings.AddOfKind("blank", where + "に銘柄コードがありません。");
    } else if (const auto [found, is_new] = seen.try_emplace(code, number); !is_new) {
      findings.AddOfKind("twice", where + "の銘柄コードはレコード" + std::to_string(found->second) +
                                      "と同じです。");
    }
  }
}

}  // namespace

void CheckIndex(const CheckedStore& store, Findings& findings) {
  const auto bytes = ReadForCheck(store, kIndexFile.kind, findings);
  if (!bytes) return;
  CheckWholeRecords(store, kIndexFile, bytes->size(), kIndexRecordLength, findings);
  const std::vector<IndexEntry> entries = DecodeNameIndex(*bytes);
  const std::string name = store.NameForMessage(kIndexFile);
  if (entries.size() != store.master.Stocks().size()) {
    findings.Add(name + "の銘柄数" + std::to_string(entries.size()) + "がorin.sysの" +
                 std::to_string(store.master.Stocks().size()) + "と違います。");
  }
  std::unordered_set<int32_t> seen;
  for (size_t i = 0; i < entries.size(); ++i) {
    const std::string where = name + "のレコード" + std::to_string(i + 1);
    const int32_t record = entries[i].record.Value();
    CheckReference(store, entries[i].code, entries[i].record, where, findings);
    if (seen.insert(record).second) continue;
    findings.AddOfKind("twice",
                       where + "のレコード番号" + std::to_string(record) + "が2回使われています。");
  }
  findings.EndGroup();
}

void CheckList(const CheckedStore& store, FileKind kind, Findings& findings) {
  const StoreFile file = {kind, 0};
  const auto bytes = ReadForCheck(store, kind, findings);
  if (!bytes) return;
  CheckWholeRecords(store, file, bytes->size(), kListRecordLength, findings);
  const std::string name = store.NameForMessage(file);
  const int32_t records = base::RecordView(*bytes, kListRecordLength).Count();
  const int16_t count = CountInHeader(*bytes);
  if (records == 0) {
    findings.Add(name + "に先頭のレコードがありません。");
  } else if (count < 0 || count > records - 1) {
    findings.Add(name + "の銘柄数" + std::to_string(count) + "が0から" +
                 std::to_string(records - 1) + "の範囲にありません。");
  }
  int32_t number = 1;
  for (const ListedStock& stock : DecodeStockList(*bytes).stocks) {
    ++number;
    // An emptied entry leads nowhere.
    if (stock.code == StockCode()) continue;
    CheckReference(store, stock.code, stock.record, name + "のレコード" + std::to_string(number),
                   findings);
  }
  if (kind == FileKind::kAdded) CheckAddedEntries(store, *bytes, name, findings);
  findings.EndGroup();
}

void CheckCompanions(const CheckedStore& store, Findings& findings) {
  CheckIndex(store, findings);
  CheckIndexOrder(store, findings);
  CheckList(store, FileKind::kAdded, findings);
  CheckList(store, FileKind::kDeleted, findings);
  CheckTrendLines(store, findings);
}

void CheckSplits(const CheckedStore& store, Findings& findings) {
  const StoreFile file = {FileKind::kSplits, 0};
  // A missing list is an empty one.
  const auto bytes = ReadIfThere(store.location, file);
  if (!bytes) {
    findings.Add(bytes.error().message);
    return;
  }
  std::vector<std::string> problems;
  const SplitList splits = SplitList::Parse(*bytes, FileName(file), problems);
  for (std::string& problem : problems) findings.Add(std::move(problem));
  for (const SplitEvent& event : splits.Events()) {
    if (!store.master.Find(event.code).IsNone()) continue;
    findings.AddOfKind(event.code.Text(), "「" + FileName(file) + "」の銘柄コード" +
                                              std::string(event.code.Text()) +
                                              "がorin.sysにありません。");
  }
  findings.EndGroup();
}

}  // namespace orin::store
