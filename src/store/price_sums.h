#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "store/file_names.h"
#include "store/price_format.h"
#include "store/store_location.h"

namespace orin::store {

// The sum of a record of a daily file is the exclusive or of the XXH3 sums of its committed
// entries, each seeded with file number, record number and position. An entry that is added or
// changed changes the sum by its own sums alone, whatever the other entries hold; an entry at
// another place has another sum.

/// A record of a daily file, with the length of its entries.
struct SummedRecord {
  int16_t file = 0;
  int32_t record = 0;
  size_t entry_length = kBarLength;  // kDateEntryLength for the record of dates
};

/// What the whole entries in `entries`, the first of them at `position` (0..99), add to the sum.
uint64_t SumOfEntries(const SummedRecord& record, int32_t position, std::string_view entries);

// orinc001.dat and on, each beside the daily file of its number: records of 16 bytes, two banks of
// 8 bytes. A bank holds the sums for a number of committed days; the one for the days that orin.sys
// says the file has counts, the other one takes the next append. Numbers are little-endian.
//   record 1      the mark, the days of the first bank (2), of the second bank (2), zeros (4)
//   record 2      of each bank the sum of all its sums, seeded with file number and days
//   record n + 2  of each bank the sum of record n of the daily file
inline constexpr size_t kSumRecordLength = 16;
inline constexpr std::string_view kSumMark = "ORINDSM1";
inline constexpr size_t kSumBankLength = 8;
inline constexpr int kSumBanks = 2;

class PriceSums {
 public:
  /// For a daily file of `records` records: all sums 0, no bank in use.
  PriceSums(int16_t file, int32_t records);
  /// nullopt where the bytes are no whole file of sums.
  static std::optional<PriceSums> Decode(int16_t file, std::string bytes);

  /// The number of the daily file.
  [[nodiscard]] int16_t File() const { return file_; }
  /// Those of the daily file.
  [[nodiscard]] int32_t Records() const;
  /// The bank for `days` committed days, 1..100; nullopt where neither is. Where both claim to be,
  /// the sound one.
  [[nodiscard]] std::optional<int> BankFor(int32_t days) const;
  [[nodiscard]] int32_t DaysOf(int bank) const;
  /// By how much the bank's own sum differs from its content; 0 for a sound one.
  [[nodiscard]] uint64_t Difference(int bank) const;
  /// 0 for a record that is not there.
  [[nodiscard]] uint64_t Sum(int bank, int32_t record) const;

  /// The file grows to the record where it is shorter.
  void SetSum(int bank, int32_t record, uint64_t sum);
  /// Puts the bank into use for `days` committed days. Its own sum differs by `difference` from
  /// its content: what was damaged before a change stays damaged.
  void Seal(int bank, int32_t days, uint64_t difference);

  [[nodiscard]] std::string_view Bytes() const { return bytes_; }
  /// Where the sums of a record are in the file.
  static int64_t OffsetOf(int32_t record);

 private:
  PriceSums(int16_t file, std::string bytes) noexcept : file_(file), bytes_(std::move(bytes)) {}
  [[nodiscard]] uint64_t SumOfBank(int bank, int32_t days) const;

  int16_t file_;
  std::string bytes_;
};

/// The sums of one daily file and the bank that counts.
struct CommittedSums {
  PriceSums sums;
  int bank;
};

/// nullopt where the daily file `file`, of which `days` days are committed, has no file of sums or
/// one that does not count: nothing is to be written to it then.
std::optional<CommittedSums> LoadSums(const StoreLocation& location, int16_t file, int32_t days);

/// Whether sums of the price files are to be kept: where there is an orin.sum.
bool KeepsSums(const StoreLocation& location);
/// Whether the store has checksums, all or some of them. Older stores have none.
bool HasSums(const StoreLocation& location);

inline StoreFile SumsOf(int16_t daily_file) { return {FileKind::kDailySums, daily_file}; }

}  // namespace orin::store
