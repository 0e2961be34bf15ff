#include "store/credit_files.h"

#include <algorithm>

#include "base/record_file.h"
#include "store/file_names.h"
#include "store/stored_file.h"

namespace orin::store {

CreditFiles CreditFiles::Open(const StoreLocation& location, const MasterHeader& header,
                              std::span<const base::Date> days) {
  CreditFiles credit;
  credit.date_record_ = header.date_record;
  credit.places_.assign(days.size(), -1);
  const int32_t last = std::min<int32_t>(header.credit_current, kLastFileNumber);
  for (int32_t number = std::max<int32_t>(header.credit_first, 1); number <= last; ++number) {
    const StoreFile file = {FileKind::kCredit, static_cast<int16_t>(number)};
    auto mapped = base::MappedFile::Open(PathOf(location, file));
    auto& kept = credit.files_.emplace_back();
    if (!mapped) continue;
    kept.emplace(std::move(*mapped));
    credit.Match(static_cast<int32_t>(credit.files_.size()) - 1, days);
  }
  return credit;
}

void CreditFiles::Match(int32_t index, std::span<const base::Date> days) {
  const base::RecordView records(files_[static_cast<size_t>(index)]->Bytes(), kCreditRecordLength);
  const auto dates = records.Record(date_record_);
  for (int32_t position = 0; dates && position < kDaysPerFile; ++position) {
    const auto date =
        DecodeDateEntry(dates->data() + static_cast<size_t>(position) * kCreditEntryLength);
    if (!date || date->IsNone()) continue;
    const auto day = std::ranges::lower_bound(days, *date);
    if (day == days.end() || *day != *date) continue;
    places_[static_cast<size_t>(day - days.begin())] = index * kDaysPerFile + position;
  }
}

CreditBalance CreditFiles::At(base::SlotRecord slot, int32_t place) const {
  // The entries of the record of dates are no balances.
  if (place < 0 || slot.Value() == date_record_) return {};
  const auto& file = files_[static_cast<size_t>(place / kDaysPerFile)];
  const auto record = base::RecordView(file->Bytes(), kCreditRecordLength).Record(slot.Value());
  if (!record) return {};
  return DecodeCreditBalance(record->data() +
                             static_cast<size_t>(place % kDaysPerFile) * kCreditEntryLength);
}

void CreditFiles::Load(base::SlotRecord slot, int32_t first, int32_t last,
                       std::vector<CreditBalance>& balances) const {
  balances.clear();
  for (int32_t day = first; day <= last; ++day) {
    balances.push_back(At(slot, places_[static_cast<size_t>(day)]));
  }
}

}  // namespace orin::store
