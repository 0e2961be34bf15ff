#include "store/system_file_listing.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/file_system.h"
#include "base/record_file.h"
#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/master_table.h"
#include "store/name_index.h"

namespace orin::store {

namespace {

using base::Table;
using base::TextColumn;
using base::WholeColumn;
using Tables = std::vector<Table>;

Table TableOf(std::vector<base::Column> columns) {
  Table table;
  table.columns = std::move(columns);
  return table;
}

Table HeaderTable(const MasterHeader& header) {
  Table table =
      TableOf({TextColumn("日付コード"), WholeColumn("日付レコード"), WholeColumn("先頭ファイル"),
               WholeColumn("カレントファイル"), WholeColumn("カレントレコード"),
               WholeColumn("信用先頭"), WholeColumn("信用カレント")});
  table.rows.push_back({header.date.IsNone() ? "-" : header.date.ToCompact(),
                        int64_t{header.date_record}, int64_t{header.first_file},
                        int64_t{header.current_file}, int64_t{header.current_record},
                        int64_t{header.credit_first}, int64_t{header.credit_current}});
  return table;
}

Tables ListMaster(std::string_view bytes) {
  const base::RecordView records(bytes, kMasterRecordLength);
  const auto first = records.Record(1);
  Tables tables = {HeaderTable(first ? DecodeMasterHeader(*first) : MasterHeader()),
                   EmptyMasterTable()};
  if (!first) tables.front().rows.clear();
  for (int32_t number = 2; number <= records.Count(); ++number) {
    AddMasterRow(tables.back(), number, DecodeStockRecord(*records.Record(number)));
  }
  return tables;
}

Tables ListNameIndex(std::string_view bytes) {
  Table table = TableOf({TextColumn("登記社名"), TextColumn("銘柄名（読み）"), base::CodeColumn(),
                         WholeColumn("レコード")});
  for (const IndexEntry& entry : DecodeNameIndex(bytes)) {
    table.rows.push_back({entry.company, entry.reading, std::string(entry.code.Text()),
                          int64_t{entry.record.Value()}});
  }
  return {std::move(table)};
}

Tables ListStocks(std::string_view bytes, base::Column flag, base::Cell (*cell_of)(int16_t)) {
  Table table =
      TableOf({base::CodeColumn(), TextColumn("銘柄名"), WholeColumn("レコード"), std::move(flag)});
  for (const ListedStock& stock : DecodeStockList(bytes).stocks) {
    table.rows.push_back({std::string(stock.code.Text()), stock.name, int64_t{stock.record.Value()},
                          cell_of(stock.flag)});
  }
  return {std::move(table)};
}

base::Cell DeletionStateName(int16_t flag) {
  switch (static_cast<DeletionState>(flag)) {
    case DeletionState::kTrue:
      return "True";
    case DeletionState::kFalse:
      return "False";
    case DeletionState::kDelete:
      return "Delete";
  }
  return int64_t{flag};
}

Tables ListAdded(std::string_view bytes) {
  return ListStocks(bytes, WholeColumn("フラグ"),
                    [](int16_t flag) -> base::Cell { return int64_t{flag}; });
}

Tables ListDeleted(std::string_view bytes) {
  return ListStocks(bytes, TextColumn("削除"), DeletionStateName);
}

struct Lister {
  FileKind kind;
  Tables (*list)(std::string_view bytes);
};

constexpr std::array<Lister, 4> kListers = {{{FileKind::kMaster, ListMaster},
                                             {FileKind::kNameIndex, ListNameIndex},
                                             {FileKind::kAdded, ListAdded},
                                             {FileKind::kDeleted, ListDeleted}}};

}  // namespace

base::Result<std::vector<base::Table>> ListSystemFile(const std::filesystem::path& path) {
  const std::string name = base::PathText(path.filename());
  const auto file = ParseFileName(name);
  const auto lister = std::find_if(kListers.begin(), kListers.end(), [&file](const Lister& row) {
    return file && row.kind == file->kind;
  });
  if (lister == kListers.end()) return base::Fail(name + "はシステムファイルではありません。");
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  return lister->list(*bytes);
}

}  // namespace orin::store
