#include "store/companion_formats.h"

#include <algorithm>
#include <limits>

#include "base/coding.h"
#include "base/cp932.h"
#include "base/record_file.h"

namespace orin::store {

namespace {

StockCode DecodeCode(std::string_view record, size_t offset) {
  return StockCode::Parse(record.substr(offset, StockCode::kWidth)).value_or(StockCode());
}

void AppendInt16(std::string& bytes, int32_t value) {
  bytes.resize(bytes.size() + 2);
  base::PutInt16(bytes.data() + bytes.size() - 2, static_cast<int16_t>(value));
}

/// A text read from a damaged file must not stop the file from being written again.
std::string WithoutReplacements(std::string_view text) {
  constexpr std::string_view kReplacement = "\uFFFD";
  std::string clean(text);
  for (size_t at = clean.find(kReplacement); at != std::string::npos;
       at = clean.find(kReplacement, at)) {
    clean.replace(at, kReplacement.size(), "?");
  }
  return clean;
}

base::Status AppendText(std::string& bytes, std::string_view text, size_t width) {
  const auto field = base::EncodeFixedField(WithoutReplacements(text), width);
  if (!field) return base::Forward(field);
  bytes += *field;
  return {};
}

base::Status AppendListedStock(std::string& bytes, const ListedStock& stock) {
  // Readers know an emptied entry by this text.
  bytes += stock.code == StockCode() ? kEmptiedCode : stock.code.Padded();
  const base::Status named = AppendText(bytes, stock.name, list_offset::kNameWidth);
  if (!named) return named;
  AppendInt16(bytes, stock.record.Value());
  AppendInt16(bytes, stock.flag);
  return {};
}

}  // namespace

IndexEntry DecodeIndexEntry(std::string_view record) {
  namespace at = index_offset;
  return IndexEntry{base::DecodeFixedField(record.substr(at::kCompany, at::kTextWidth)),
                    base::DecodeFixedField(record.substr(at::kReading, at::kTextWidth)),
                    DecodeCode(record, at::kCode),
                    base::MasterRecord(base::GetInt16(record.data() + at::kRecord))};
}

base::Result<std::string> EncodeIndexEntry(const IndexEntry& entry) {
  std::string bytes;
  for (const std::string_view text : {entry.company, entry.reading}) {
    const base::Status added = AppendText(bytes, text, index_offset::kTextWidth);
    if (!added) return base::Forward(added);
  }
  bytes += entry.code.Padded();
  AppendInt16(bytes, entry.record.Value());
  return bytes;
}

int16_t StockList::DeletionCounter() const {
  return base::GetInt16(header.data() + list_header_offset::kDeletionCounter);
}

void StockList::SetDeletionCounter(int16_t counter) {
  base::PutInt16(header.data() + list_header_offset::kDeletionCounter, counter);
}

int16_t CountInHeader(std::string_view bytes) {
  if (bytes.size() < kListRecordLength) return 0;
  return base::GetInt16(bytes.data() + list_header_offset::kCount);
}

StockList DecodeStockList(std::string_view bytes) {
  namespace at = list_offset;
  const base::RecordView records(bytes, kListRecordLength);
  StockList list;
  if (const auto header = records.Record(1)) list.header = *header;
  // The header may promise more than the file holds, and the file may hold old entries.
  const int32_t last = std::min<int32_t>(CountInHeader(bytes) + 1, records.Count());
  for (int32_t number = 2; number <= last; ++number) {
    const std::string_view record = *records.Record(number);
    list.stocks.push_back({DecodeCode(record, at::kCode),
                           base::DecodeFixedField(record.substr(at::kName, at::kNameWidth)),
                           base::MasterRecord(base::GetInt16(record.data() + at::kRecord)),
                           base::GetInt16(record.data() + at::kFlag)});
  }
  return list;
}

base::Result<std::string> EncodeStockList(const StockList& list) {
  if (list.stocks.size() > std::numeric_limits<int16_t>::max()) {
    return base::Fail("追加銘柄または削除銘柄の数" + std::to_string(list.stocks.size()) +
                      "は上限の32767を超えています。");
  }
  std::string bytes = list.header;
  base::PutInt16(bytes.data() + list_header_offset::kCount,
                 static_cast<int16_t>(list.stocks.size()));
  for (const ListedStock& stock : list.stocks) {
    const base::Status added = AppendListedStock(bytes, stock);
    if (!added) return base::Forward(added);
  }
  return bytes;
}

}  // namespace orin::store
