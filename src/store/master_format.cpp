#include "store/master_format.h"

#include <algorithm>

#include "base/coding.h"
#include "base/cp932.h"

namespace orin::store {

namespace {

std::string_view Field(std::string_view record, size_t offset, size_t width) {
  return record.substr(offset, width);
}

}  // namespace

StockRecord DecodeStockRecord(std::string_view record) {
  namespace at = master_offset;
  StockRecord stock;
  // One damaged record must not keep the others from being read.
  if (const auto code = StockCode::Parse(Field(record, at::kCode, StockCode::kWidth))) {
    stock.code = *code;
  }
  stock.slot = base::SlotRecord(base::GetInt16(record.data() + at::kSlot));
  stock.listing = base::GetInt16(record.data() + at::kListing);
  stock.kind = base::GetInt16(record.data() + at::kKind);
  stock.sector = base::GetInt16(record.data() + at::kSector);
  stock.rank = base::GetInt16(record.data() + at::kRank);
  stock.name = base::DecodeFixedField(Field(record, at::kName, at::kNameWidth));
  std::ranges::copy(Field(record, at::kReserved, stock.reserved.size()), stock.reserved.begin());
  return stock;
}

MasterHeader DecodeMasterHeader(std::string_view record) {
  namespace at = header_offset;
  MasterHeader header;
  const auto date = base::Date::ParseCompact(Field(record, at::kDate, at::kDateWidth));
  header.date = date.value_or(base::Date());
  header.date_record = base::GetInt16(record.data() + at::kDateRecord);
  header.first_file = base::GetInt16(record.data() + at::kFirstFile);
  header.current_file = base::GetInt16(record.data() + at::kCurrentFile);
  header.current_record = base::GetInt16(record.data() + at::kCurrentRecord);
  header.credit_first = base::GetInt16(record.data() + at::kCreditFirst);
  header.credit_current = base::GetInt16(record.data() + at::kCreditCurrent);
  std::ranges::copy(Field(record, at::kReserved, header.reserved.size()), header.reserved.begin());
  return header;
}

base::Result<MasterRecordBytes> EncodeStockRecord(const StockRecord& stock) {
  namespace at = master_offset;
  const auto name = base::EncodeFixedField(stock.name, at::kNameWidth);
  if (!name) return base::Forward(name);
  MasterRecordBytes record{};
  std::ranges::copy(stock.code.Padded(), record.begin() + at::kCode);
  base::PutInt16(record.data() + at::kSlot, static_cast<int16_t>(stock.slot.Value()));
  base::PutInt16(record.data() + at::kListing, stock.listing);
  base::PutInt16(record.data() + at::kKind, stock.kind);
  base::PutInt16(record.data() + at::kSector, stock.sector);
  base::PutInt16(record.data() + at::kRank, stock.rank);
  std::ranges::copy(*name, record.begin() + at::kName);
  std::ranges::copy(stock.reserved, record.begin() + at::kReserved);
  return record;
}

MasterRecordBytes EncodeMasterHeader(const MasterHeader& header) {
  namespace at = header_offset;
  MasterRecordBytes record{};
  const std::string date =
      header.date.IsNone() ? std::string(at::kDateWidth, ' ') : header.date.ToCompact();
  std::ranges::copy(date, record.begin() + at::kDate);
  base::PutInt16(record.data() + at::kDateRecord, header.date_record);
  base::PutInt16(record.data() + at::kFirstFile, header.first_file);
  base::PutInt16(record.data() + at::kCurrentFile, header.current_file);
  base::PutInt16(record.data() + at::kCurrentRecord, header.current_record);
  base::PutInt16(record.data() + at::kCreditFirst, header.credit_first);
  base::PutInt16(record.data() + at::kCreditCurrent, header.credit_current);
  std::ranges::copy(header.reserved, record.begin() + at::kReserved);
  return record;
}

}  // namespace orin::store
