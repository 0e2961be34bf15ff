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

/// Whether `after` puts back what `sum` stands for in one record of `before`, or in all that it
/// changes: other records may have changed with good reason. A sum for each record that has
/// changed, but only where the file was damaged.
bool IsRepaired(const SummedCompanion& file, std::string before, std::string_view after,
                uint64_t sum) {
  const auto is_whole = [&](std::string_view bytes) {
    return SumOfCompanion(file, bytes).sum == sum;
  };
  if (is_whole(after.substr(0, before.size()))) return true;
  const int32_t count = std::min(base::RecordView(before, file.record_length).Count(),
                                 base::RecordView(after, file.record_length).Count());
  for (int32_t number = 0; number < count; ++number) {
    const size_t offset = static_cast<size_t>(number) * file.record_length;
    const std::string_view changed = after.substr(offset, file.record_length);
    const std::string old = before.substr(offset, file.record_length);
    if (changed == old) continue;
    before.replace(offset, changed.size(), changed);
    if (is_whole(before)) return true;
    before.replace(offset, old.size(), old);
  }
  return false;
}

}  // namespace

CompanionSum SumOfCompanion(const SummedCompanion& file, std::string_view bytes) {
  return {base::RecordView(bytes, file.record_length).Count(),
          SumOfBytes(bytes.substr(std::min(file.unsummed, bytes.size())))};
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
    // A later version may keep sums of more files.
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
  // Older versions have no sum of orin.sys. One made now would vouch for records nobody has proven.
  if (!stored && kind == FileKind::kMaster) return;
  if (stored && after.sum != stored->sum && Exists(location_, {kind, 0})) {
    const auto before = ReadIfThere(location_, {kind, 0});
    const uint64_t damage = before ? stored->sum ^ SumOfCompanion(*file, *before).sum : 0;
    if (damage != 0 && !IsRepaired(*file, *before, bytes, stored->sum)) after.sum ^= damage;
  }
  sums_->Set(kind, after);
  is_changed_ = true;
}

base::Status CompanionSumChange::AddTo(Transaction& transaction) {
  if (!is_changed_) return {};
  return transaction.Replace(kSumsFile, sums_->Encode());
}

}  // namespace orin::store
