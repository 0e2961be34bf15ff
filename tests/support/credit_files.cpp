#include "support/credit_files.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "base/coding.h"
#include "base/file_system.h"
#include "store/file_names.h"
#include "store/master_format.h"

namespace orin::support {

namespace {

void Replace(const std::filesystem::path& path, const std::string& bytes) {
  const auto replaced = base::ReplaceFile(base::NativeFileSystem(), path, bytes);
  if (!replaced) throw std::runtime_error(replaced.error().message);
}

}  // namespace

store::CreditBalance Balance(int32_t sell, int32_t buy) {
  return {base::Currency::FromInt(sell), base::Currency::FromInt(buy)};
}

void WriteCreditFile(const store::StoreLocation& location, int16_t number,
                     const std::vector<base::Date>& dates,
                     const std::vector<SlotBalances>& balances) {
  std::string bytes(store::kCreditRecordLength, '\0');
  for (size_t i = 0; i < dates.size(); ++i) {
    base::PutDouble(bytes.data() + i * store::kCreditEntryLength, dates[i].Serial());
  }
  for (const auto& [slot, of_days] : balances) {
    const size_t offset = static_cast<size_t>(slot.Value() - 1) * store::kCreditRecordLength;
    bytes.resize(std::max(bytes.size(), offset + store::kCreditRecordLength));
    for (size_t i = 0; i < of_days.size(); ++i) {
      store::EncodeCreditBalance(of_days[i], bytes.data() + offset + i * store::kCreditEntryLength);
    }
  }
  Replace(store::PathOf(location, {store::FileKind::kCredit, number}), bytes);
}

void NameCreditFiles(const store::StoreLocation& location, int16_t first, int16_t current) {
  const auto path = store::PathOf(location, {store::FileKind::kMaster, 0});
  std::string bytes = base::ReadFile(path).value();
  base::PutInt16(bytes.data() + store::header_offset::kCreditFirst, first);
  base::PutInt16(bytes.data() + store::header_offset::kCreditCurrent, current);
  Replace(path, bytes);
}

}  // namespace orin::support
