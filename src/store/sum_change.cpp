#include "store/sum_change.h"

#include <algorithm>

#include "base/progress.h"
#include "base/record_file.h"
#include "store/companion_sums.h"
#include "store/file_names.h"
#include "store/store_state.h"

namespace orin::store {

int32_t CommittedDays(const PriceFiles& prices, int16_t file) {
  const int32_t before = (file - prices.PlaceOf(0).file) * kDaysPerFile;
  return std::min(prices.DayCount() - before, kDaysPerFile);
}

std::string_view CommittedEntries(const PriceFiles& prices, const SummedRecord& record) {
  const auto days = static_cast<size_t>(CommittedDays(prices, record.file));
  return prices.Bytes(record.file)
      .substr(static_cast<size_t>(record.record - 1) * kDailyRecordLength,
              days * record.entry_length);
}

void PriceSumChange::Take(base::SlotRecord slot, int32_t day, std::string_view entries) {
  const DayPlace place = prices_.PlaceOf(day);
  const SummedRecord record = {place.file, slot.Value()};
  std::vector<Change>& changes = changes_[place.file];
  // Changes come stock by stock.
  if (changes.empty() || changes.back().record != slot.Value()) changes.push_back({slot.Value()});
  Change& change = changes.back();
  for (size_t at = 0; at < entries.size(); at += kBarLength) {
    const int32_t position = place.position + static_cast<int32_t>(at / kBarLength);
    const std::string_view before(prices_.Entry(slot, day) + at, kBarLength);
    const uint64_t delta = SumOfEntries(record, position, before) ^
                           SumOfEntries(record, position, entries.substr(at, kBarLength));
    change.delta ^= delta;
    if (before != no_data_) change.replaced_delta ^= delta;
  }
}

void PriceSumChange::TakeEmptied(int16_t file, int32_t first, int32_t end) {
  const std::string no_data = NoDataEntries(static_cast<size_t>(CommittedDays(prices_, file)));
  for (int32_t record = first; record < end; ++record) {
    changes_[file].push_back({record, SumOfEntries({file, record}, 0, no_data), 0, true});
  }
}

uint64_t PriceSumChange::SumAfter(const Change& change, int16_t file, uint64_t stored) const {
  if (change.is_emptied) return change.delta;
  const SummedRecord record = {file, change.record};
  const uint64_t content = SumOfEntries(record, 0, CommittedEntries(prices_, record));
  // The right prices have come back in the place of damaged ones, perhaps together with new days.
  const uint64_t damage = content ^ stored;
  const bool is_repaired = damage == change.delta || damage == change.replaced_delta;
  return (is_repaired ? content : stored) ^ change.delta;
}

void PriceSumChange::WriteFile(int16_t file, std::span<const Change> changes,
                               Transaction& transaction) {
  const int32_t days = CommittedDays(prices_, file);
  auto committed = LoadSums(location_, file, days);
  if (!committed) return;
  auto& [sums, bank] = *committed;
  const uint64_t difference = sums.Difference(bank);
  const auto [least, greatest] = std::ranges::minmax_element(changes, {}, &Change::record);
  const int32_t first = std::min(least->record, sums.Records() + 1);
  for (const Change& change : changes) {
    const uint64_t after = SumAfter(change, file, sums.Sum(bank, change.record));
    sums.SetSum(bank, change.record, after);
  }
  sums.Seal(bank, days, difference);
  const auto offset = static_cast<size_t>(PriceSums::OffsetOf(first));
  const auto end = static_cast<size_t>(PriceSums::OffsetOf(greatest->record + 1));
  transaction.Write(SumsOf(file), 0,
                    sums.Bytes().substr(0, static_cast<size_t>(PriceSums::OffsetOf(1))));
  transaction.Write(SumsOf(file), static_cast<int64_t>(offset),
                    sums.Bytes().substr(offset, end - offset));
}

void PriceSumChange::AddTo(Transaction& transaction) {
  for (const auto& [file, changes] : changes_) WriteFile(file, changes, transaction);
}

SumAppend::SumAppend(const StoreLocation& location, int16_t file, int32_t days)
    : location_(location), file_(file), days_(days), committed_(LoadSums(location, file, days)) {
  if (!committed_) return;
  auto& [sums, bank] = *committed_;
  for (int32_t record = 1; record <= sums.Records(); ++record) {
    sums.SetSum(1 - bank, record, sums.Sum(bank, record));
  }
}

void SumAppend::Take(const SummedRecord& record, std::string_view entries) {
  if (!committed_) return;
  auto& [sums, bank] = *committed_;
  // A cut file is not made longer: nothing is known of the records that it lacks.
  if (record.record > sums.Records()) return;
  const uint64_t before = sums.Sum(1 - bank, record.record);
  sums.SetSum(1 - bank, record.record, before ^ SumOfEntries(record, days_, entries));
}

base::Status SumAppend::Write(int32_t count, base::FileSystem& files) {
  if (!committed_) return {};
  auto& [sums, bank] = *committed_;
  sums.Seal(1 - bank, days_ + count, sums.Difference(bank));
  const auto file = files.OpenForUpdate(PathOf(location_, SumsOf(file_)));
  if (!file) return base::Forward(file);
  const base::Status written = (*file)->WriteAt(0, sums.Bytes());
  return written ? (*file)->Sync() : written;
}

void NewSums::Take(const SummedRecord& record, std::string_view entries, uint64_t damage) {
  const size_t in_use = static_cast<size_t>(days_) * record.entry_length;
  sums_.SetSum(0, record.record, SumOfEntries(record, 0, entries.substr(0, in_use)) ^ damage);
}

std::string_view NewSums::Finish(uint64_t damage) {
  sums_.Seal(0, days_, damage);
  return sums_.Bytes();
}

SumDamage::SumDamage(const StoreLocation& location, const PriceFiles& prices,
                     const std::set<int16_t>& sources)
    : prices_(prices) {
  for (const int16_t file : sources) {
    auto sums = LoadSums(location, file, CommittedDays(prices, file));
    if (sums) files_.emplace(file, std::move(*sums));
  }
  is_known_ = sources.empty() ? KeepsSums(location) : files_.size() == sources.size();
}

uint64_t SumDamage::OfRecord(int32_t record, size_t entry_length) const {
  uint64_t damage = 0;
  for (const auto& [file, committed] : files_) {
    const SummedRecord summed = {file, record, entry_length};
    damage ^= committed.sums.Sum(committed.bank, record) ^
              SumOfEntries(summed, 0, CommittedEntries(prices_, summed));
  }
  return damage;
}

uint64_t SumDamage::OfFiles() const {
  uint64_t damage = 0;
  for (const auto& [file, committed] : files_) damage ^= committed.sums.Difference(committed.bank);
  return damage;
}

base::Status StockStore::MakeSums(base::Progress& progress) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  Transaction transaction(state_->location, *state_->files);
  const int32_t count = state_->prices.FileCount();
  for (int32_t index = 0; index < count; ++index) {
    if (!progress.Report("チェックサムの作成", index, count)) {
      return base::Fail("チェックサムの作成を中止しました。何も変えていません。");
    }
    const int16_t number = state_->prices.PlaceOf(index * kDaysPerFile).file;
    if (const auto made = state_->StageSums(number, transaction); !made) return made;
  }
  CompanionSums sums;
  for (const SummedCompanion& file : kSummedCompanions) {
    if (!Exists(state_->location, {file.kind, 0})) continue;
    const auto bytes = ReadIfThere(state_->location, {file.kind, 0});
    if (!bytes) return base::Forward(bytes);
    sums.Set(file.kind, SumOfCompanion(file, *bytes));
  }
  const auto staged = transaction.Replace({FileKind::kSums, 0}, sums.Encode());
  return staged ? state_->Commit(transaction) : staged;
}

base::Status StockStore::State::StageSums(int16_t number, Transaction& transaction) const {
  const base::RecordView records(prices.Bytes(number), kDailyRecordLength);
  NewSums sums(number, records.Count(), CommittedDays(prices, number));
  for (int32_t record = 1; record <= records.Count(); ++record) {
    sums.Take(Summed(number, record), *records.Record(record));
  }
  return transaction.Replace(SumsOf(number), sums.Finish());
}

}  // namespace orin::store
