#include "store/price_sums.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "base/coding.h"
#include "base/file_system.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

namespace sum_offset {
constexpr size_t kDays = 8;      // 2 a bank
constexpr size_t kBankSum = 16;  // 8 a bank
constexpr size_t kFirstRecord = 32;
}  // namespace sum_offset

uint64_t SeedOf(int16_t file, int32_t record, int32_t position) {
  const uint64_t place = (static_cast<uint64_t>(file) << 32 | static_cast<uint64_t>(record) << 8) |
                         static_cast<uint64_t>(position);
  // Odd, so that no two places have one seed; neighbours get seeds that have nothing in common.
  constexpr uint64_t kScatter = 0x9E3779B97F4A7C15;
  return place * kScatter;
}

size_t PlaceOf(int bank, int32_t record) {
  return static_cast<size_t>(PriceSums::OffsetOf(record)) +
         static_cast<size_t>(bank) * kSumBankLength;
}

/// The length is a constant to the compiler, which makes the sum a dozen multiplications.
template <size_t kLength>
uint64_t SumOf(const SummedRecord& record, int32_t position, std::string_view entries) {
  uint64_t sum = 0;
  for (size_t at = 0; at + kLength <= entries.size(); at += kLength) {
    sum ^= XXH3_64bits_withSeed(entries.data() + at, kLength,
                                SeedOf(record.file, record.record, position++));
  }
  return sum;
}

}  // namespace

uint64_t SumOfEntries(const SummedRecord& record, int32_t position, std::string_view entries) {
  return record.entry_length == kBarLength ? SumOf<kBarLength>(record, position, entries)
                                           : SumOf<kDateEntryLength>(record, position, entries);
}

PriceSums::PriceSums(int16_t file, int32_t records) : file_(file), bytes_(kSumMark) {
  bytes_.resize(static_cast<size_t>(OffsetOf(records + 1)));
}

std::optional<PriceSums> PriceSums::Decode(int16_t file, std::string bytes) {
  const bool is_whole = bytes.starts_with(kSumMark) && bytes.size() >= sum_offset::kFirstRecord &&
                        bytes.size() % kSumRecordLength == 0;
  if (!is_whole) return std::nullopt;
  return PriceSums(file, std::move(bytes));
}

int64_t PriceSums::OffsetOf(int32_t record) {
  return static_cast<int64_t>(sum_offset::kFirstRecord) +
         (int64_t{record} - 1) * static_cast<int64_t>(kSumRecordLength);
}

int32_t PriceSums::Records() const {
  return static_cast<int32_t>((bytes_.size() - sum_offset::kFirstRecord) / kSumRecordLength);
}

int32_t PriceSums::DaysOf(int bank) const {
  return base::GetInt16(bytes_.data() + sum_offset::kDays + static_cast<size_t>(bank) * 2);
}

std::optional<int> PriceSums::BankFor(int32_t days) const {
  std::optional<int> found;
  for (int bank = 0; bank < kSumBanks; ++bank) {
    if (DaysOf(bank) != days) continue;
    if (!found || Difference(bank) == 0) found = bank;
  }
  return found;
}

uint64_t PriceSums::SumOfBank(int bank, int32_t days) const {
  std::string sums;
  sums.reserve(static_cast<size_t>(Records()) * kSumBankLength);
  for (int32_t record = 1; record <= Records(); ++record) {
    sums.append(bytes_, PlaceOf(bank, record), kSumBankLength);
  }
  return XXH3_64bits_withSeed(sums.data(), sums.size(), SeedOf(file_, Records(), days));
}

uint64_t PriceSums::Difference(int bank) const {
  const size_t at = sum_offset::kBankSum + static_cast<size_t>(bank) * kSumBankLength;
  return base::GetUint64(bytes_.data() + at) ^ SumOfBank(bank, DaysOf(bank));
}

uint64_t PriceSums::Sum(int bank, int32_t record) const {
  if (record < 1 || record > Records()) return 0;
  return base::GetUint64(bytes_.data() + PlaceOf(bank, record));
}

void PriceSums::SetSum(int bank, int32_t record, uint64_t sum) {
  if (record > Records()) bytes_.resize(static_cast<size_t>(OffsetOf(record + 1)));
  base::PutUint64(bytes_.data() + PlaceOf(bank, record), sum);
}

void PriceSums::Seal(int bank, int32_t days, uint64_t difference) {
  base::PutInt16(bytes_.data() + sum_offset::kDays + static_cast<size_t>(bank) * 2,
                 static_cast<int16_t>(days));
  const size_t at = sum_offset::kBankSum + static_cast<size_t>(bank) * kSumBankLength;
  base::PutUint64(bytes_.data() + at, SumOfBank(bank, days) ^ difference);
}

std::optional<CommittedSums> LoadSums(const StoreLocation& location, int16_t file, int32_t days) {
  // Missing, unreadable or damaged, it is the check that tells; a change of prices goes on.
  auto bytes = ReadIfThere(location, SumsOf(file));
  if (!bytes) return std::nullopt;
  auto sums = PriceSums::Decode(file, std::move(*bytes));
  if (!sums) return std::nullopt;
  const auto bank = sums->BankFor(days);
  if (!bank) return std::nullopt;
  return CommittedSums{std::move(*sums), *bank};
}

bool KeepsSums(const StoreLocation& location) { return Exists(location, {FileKind::kSums, 0}); }

bool HasSums(const StoreLocation& location) {
  if (KeepsSums(location)) return true;
  for (int16_t number = 1; number <= kLastFileNumber; ++number) {
    if (Exists(location, SumsOf(number))) return true;
  }
  return false;
}

}  // namespace orin::store
