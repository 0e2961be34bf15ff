#include "store/system_file_listing.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "base/file_system.h"
#include "base/record_file.h"
#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/name_index.h"

namespace orin::store {

namespace {

std::string Number(int32_t value) { return std::to_string(value); }

std::string JoinFields(std::initializer_list<std::string> fields) {
  std::string line;
  for (const std::string& field : fields) line += (line.empty() ? "" : ",") + field;
  return line + "\n";
}

std::string ListMaster(std::string_view bytes) {
  const base::RecordView records(bytes, kMasterRecordLength);
  std::string text =
      "日付コード,日付レコード,先頭ファイル,カレントファイル,カレントレコード,信用先頭,"
      "信用カレント\n";
  if (const auto record = records.Record(1)) {
    const MasterHeader header = DecodeMasterHeader(*record);
    text += JoinFields({header.date.IsNone() ? "-" : header.date.ToCompact(),
                        Number(header.date_record), Number(header.first_file),
                        Number(header.current_file), Number(header.current_record),
                        Number(header.credit_first), Number(header.credit_current)});
  }
  text += "レコード,銘柄コード,銘柄レコード,上場コード,種別コード,業種コード,銘柄ランク,銘柄名\n";
  for (int32_t number = 2; number <= records.Count(); ++number) {
    const StockRecord stock = DecodeStockRecord(*records.Record(number));
    text += JoinFields({Number(number), std::string(stock.code.Text()), Number(stock.slot.Value()),
                        Number(stock.listing), Number(stock.kind), Number(stock.sector),
                        Number(stock.rank), stock.name});
  }
  return text;
}

std::string ListNameIndex(std::string_view bytes) {
  std::string text = "登記社名,銘柄名（読み）,銘柄コード,レコード\n";
  for (const IndexEntry& entry : DecodeNameIndex(bytes)) {
    text += JoinFields({entry.company, entry.reading, std::string(entry.code.Text()),
                        Number(entry.record.Value())});
  }
  return text;
}

std::string ListStocks(std::string_view bytes, std::string_view heading,
                       std::string (*flag)(int16_t)) {
  std::string text(heading);
  for (const ListedStock& stock : DecodeStockList(bytes).stocks) {
    text += JoinFields({std::string(stock.code.Text()), stock.name, Number(stock.record.Value()),
                        flag(stock.flag)});
  }
  return text;
}

std::string DeletionStateName(int16_t flag) {
  switch (static_cast<DeletionState>(flag)) {
    case DeletionState::kTrue:
      return "True";
    case DeletionState::kFalse:
      return "False";
    case DeletionState::kDelete:
      return "Delete";
  }
  return Number(flag);
}

std::string ListAdded(std::string_view bytes) {
  return ListStocks(bytes, "銘柄コード,銘柄名,レコード,フラグ\n",
                    [](int16_t flag) { return Number(flag); });
}

std::string ListDeleted(std::string_view bytes) {
  return ListStocks(bytes, "銘柄コード,銘柄名,レコード,削除\n", DeletionStateName);
}

struct Lister {
  FileKind kind;
  std::string (*list)(std::string_view bytes);
};

constexpr std::array<Lister, 4> kListers = {{{FileKind::kMaster, ListMaster},
                                             {FileKind::kNameIndex, ListNameIndex},
                                             {FileKind::kAdded, ListAdded},
                                             {FileKind::kDeleted, ListDeleted}}};

}  // namespace

base::Result<std::string> ListSystemFile(const std::filesystem::path& path) {
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
