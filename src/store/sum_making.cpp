#include "base/record_file.h"
#include "store/companion_sums.h"
#include "store/file_names.h"
#include "store/store_state.h"
#include "store/sum_change.h"

namespace orin::store {

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
