#include "store/companion_sums.h"

#include <algorithm>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "base/coding.h"
#include "base/record_file.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

namespace companion_offset {
constexpr size_t kRecords = 8;
constexpr size_t kSum = 16;
}  // namespace companion_offset

uint64_t SumOfBytes(std::string_view bytes) { return XXH3_64bits(bytes.data(), bytes.size()); }

std::string Record(std::string_view name, int32_t records, uint64_t sum) {
  std::string record(name);
  record.resize(kCompanionSumLength);
  base::PutUint32(record.data() + companion_offset::kRecords, static_cast<uint32_t>(records));
  base::PutUint64(record.data() + companion_offset::kSum, sum);
  return record;
}

const SummedCompanion* FindSummed(FileKind kind) {
  const auto* found = std::ranges::find(kSummedCompanions, kind, &SummedCompanion::kind);
  return found == kSummedCompanions.end() ? nullptr : found;
}

}  // namespace

CompanionSum SumOfCompanion(const SummedCompanion& file, std::string_view bytes) {
  return {base::RecordView(bytes, file.record_length).Count(), SumOfBytes(bytes)};
}

std::optional<CompanionSums> CompanionSums::Decode(std::string_view bytes) {
  const base::RecordView records(bytes, kCompanionSumLength);
  const bool is_whole = bytes.starts_with(kCompanionSumMark) && records.Count() >= 1 &&
                        !records.HasPartialRecord() &&
                        base::GetUint64(bytes.data() + companion_offset::kSum) ==
                            SumOfBytes(bytes.substr(kCompanionSumLength));
  if (!is_whole) return std::nullopt;
  CompanionSums sums;
  for (int32_t number = 2; number <= records.Count(); ++number) {
    const std::string_view record = *records.Record(number);
    const auto file = ParseFileName(record.substr(0, companion_offset::kRecords));
    // A file that a later version sums up is none of ours.
    if (!file || FindSummed(file->kind) == nullptr) continue;
    const auto count =
        static_cast<int32_t>(base::GetUint32(record.data() + companion_offset::kRecords));
    sums.Set(file->kind, {count, base::GetUint64(record.data() + companion_offset::kSum)});
  }
  return sums;
}

std::optional<CompanionSums> CompanionSums::Load(const StoreLocation& location) {
  const auto bytes = ReadIfThere(location, kSumsFile);
  return bytes ? Decode(*bytes) : std::nullopt;
}

std::optional<CompanionSum> CompanionSums::Of(FileKind kind) const {
  const auto found = sums_.find(kind);
  return found == sums_.end() ? std::nullopt : std::optional(found->second);
}

std::string CompanionSums::Encode() const {
  std::string files;
  for (const auto& [kind, sum] : sums_) files += Record(FileName({kind, 0}), sum.records, sum.sum);
  return Record(kCompanionSumMark, 0, SumOfBytes(files)) + files;
}

base::Status CompanionSumChange::Replace(FileKind kind, std::string_view bytes,
                                         Transaction& transaction) {
  Take(kind, bytes);
  return transaction.Replace({kind, 0}, bytes);
}

void CompanionSumChange::Take(FileKind kind, std::string_view bytes) {
  const SummedCompanion* file = FindSummed(kind);
  if (!sums_ || file == nullptr) return;
  CompanionSum after = SumOfCompanion(*file, bytes);
  const auto stored = sums_->Of(kind);
  if (stored && after.sum != stored->sum && Exists(location_, {kind, 0})) {
    const auto before = ReadIfThere(location_, {kind, 0});
    if (before) after.sum ^= stored->sum ^ SumOfCompanion(*file, *before).sum;
  }
  sums_->Set(kind, after);
  is_changed_ = true;
}

base::Status CompanionSumChange::AddTo(Transaction& transaction) {
  if (!is_changed_) return {};
  return transaction.Replace(kSumsFile, sums_->Encode());
}

}  // namespace orin::store
