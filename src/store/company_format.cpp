#include "store/company_format.h"

#include <algorithm>

#include "base/coding.h"
#include "base/file_system.h"

namespace orin::store {

std::string CompanyHeader(const CompanyFile& file) {
  std::string record(file.mark);
  record.resize(file.record_length);
  return record;
}

std::string EmptyCompanyRecord(const CompanyFile& file) {
  std::string record(StockCode().Padded());
  record.resize(file.record_length);
  for (const CompanyField& field : kCompanyFields) {
    if (&kCompanyFiles[field.file] != &file) continue;
    base::PutCurrency(record.data() + field.Offset(), base::Currency::FromRaw(kNoCompanyValue));
  }
  return record;
}

base::Status CheckCompanyBytes(const StoreLocation& location, const CompanyFile& file,
                               std::string_view bytes) {
  const std::string name = "「" + base::PathText(PathOf(location, {file.kind, 0})) + "」";
  if (!bytes.starts_with(file.mark)) {
    return base::Fail(name + "の先頭に" + std::string(file.mark) +
                      "の印がないので、会社情報として読めません。");
  }
  if (bytes.size() % file.record_length != 0) {
    return base::Fail(name + "の長さ" + std::to_string(bytes.size()) + "バイトがレコード長" +
                      std::to_string(file.record_length) +
                      "で割り切れないので、会社情報として読めません。");
  }
  return {};
}

}  // namespace orin::store
