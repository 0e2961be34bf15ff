#include "store/company_table.h"

#include <algorithm>
#include <limits>

#include "base/coding.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

constexpr int32_t kFirstSlot = 2;  // record 1 is the header
constexpr int32_t kLastSlot = std::numeric_limits<int16_t>::max();

size_t OffsetOf(base::SlotRecord slot, const CompanyFile& file) {
  return static_cast<size_t>(slot.Value() - 1) * file.record_length;
}

std::string_view CodeOf(const char* record) {
  return {record + company_offset::kCode, StockCode::kWidth};
}

base::Currency ValueAt(const char* record, const CompanyField& field) {
  return base::GetCurrency(record + field.Offset());
}

bool HasValues(const char* record, size_t file) {
  return std::ranges::any_of(kCompanyFields, [&](const CompanyField& field) {
    return field.file == file && ValueAt(record, field).Raw() != kNoCompanyValue;
  });
}

}  // namespace

base::Result<CompanyTable> CompanyTable::Load(const StoreLocation& location) {
  CompanyTable table;
  for (size_t i = 0; i < kCompanyFiles.size(); ++i) {
    const StoreFile file = {kCompanyFiles[i].kind, 0};
    if (!Exists(location, file)) continue;
    auto bytes = base::ReadFile(PathOf(location, file));
    if (!bytes) return base::Forward(bytes);
    const base::Status checked = CheckCompanyBytes(location, kCompanyFiles[i], *bytes);
    if (!checked) return base::Forward(checked);
    table.images_[i] = std::move(*bytes);
  }
  return table;
}

const char* CompanyTable::Record(const StockRecord& stock, size_t file) const {
  const size_t length = kCompanyFiles[file].record_length;
  if (stock.slot.Value() < kFirstSlot) return nullptr;
  const size_t offset = OffsetOf(stock.slot, kCompanyFiles[file]);
  if (offset + length > images_[file].size()) return nullptr;
  const char* record = images_[file].data() + offset;
  return CodeOf(record) == stock.code.Padded() ? record : nullptr;
}

std::optional<base::Currency> CompanyTable::Value(const StockRecord& stock,
                                                  const CompanyField& field) const {
  const char* record = Record(stock, field.file);
  if (record == nullptr) return std::nullopt;
  const base::Currency value = ValueAt(record, field);
  if (value.Raw() == kNoCompanyValue) return std::nullopt;
  return value;
}

char* CompanyTable::MakeRecord(const StockRecord& stock, size_t file) {
  const CompanyFile& format = kCompanyFiles[file];
  std::string& image = images_[file];
  const size_t offset = OffsetOf(stock.slot, format);
  if (image.empty()) image = CompanyHeader(format);
  const std::string empty = EmptyCompanyRecord(format);
  while (image.size() < offset + format.record_length) image += empty;
  if (Record(stock, file) == nullptr) {
    // Whatever an earlier stock of the slot has left.
    image.replace(offset, format.record_length, empty);
    image.replace(offset + company_offset::kCode, StockCode::kWidth, stock.code.Padded());
  }
  return image.data() + offset;
}

bool CompanyTable::Set(const StockRecord& stock, const CompanyField& field,
                       std::optional<base::Currency> value) {
  const bool has_record = stock.slot.Value() >= kFirstSlot && stock.slot.Value() <= kLastSlot;
  if (!has_record || stock.code == StockCode()) return false;
  if (!value && Record(stock, field.file) == nullptr) return true;
  char* record = MakeRecord(stock, field.file);
  const auto unknown = base::Currency::FromRaw(kNoCompanyValue);
  base::PutCurrency(record + field.Offset(), value.value_or(unknown));
  if (!HasValues(record, field.file)) {
    std::ranges::copy(StockCode().Padded(), record + company_offset::kCode);
  }
  return true;
}

std::string CompanyTable::Bytes(const CompanyFile& file) const {
  const std::string& image = images_[static_cast<size_t>(&file - kCompanyFiles.data())];
  return image.empty() ? CompanyHeader(file) : image;
}

}  // namespace orin::store
