#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/file_system.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/price_files.h"
#include "store/price_sums.h"
#include "store/transaction.h"

namespace orin::store {

// How each kind of change keeps the sums of the price files. A file of sums that does not count
// is left as it is. What was damaged before a change differs from its sum after it, unless the
// change has put back what the sum stands for.

/// The days of a daily file that `prices` has: 100, fewer in the last one.
int32_t CommittedDays(const PriceFiles& prices, int16_t file);

/// Sums of entries that are changed in place by a transaction.
class PriceSumChange {
 public:
  PriceSumChange(const StoreLocation& location, const PriceFiles& prices)
      : location_(location), prices_(prices) {}

  /// The stored entries from `day` (from 0) on become `entries`. They lie in one file, and each
  /// entry is taken once.
  void Take(base::SlotRecord slot, int32_t day, std::string_view entries);
  /// The records first..end-1 of the file become those of stocks without data, whatever they are
  /// now; the file may not have them yet.
  void TakeEmptied(int16_t file, int32_t first, int32_t end);
  /// Writes the sums of all that was taken.
  void AddTo(Transaction& transaction);

 private:
  struct Change {
    int32_t record;
    uint64_t delta = 0;
    uint64_t replaced_delta = 0;  // of the entries that were not without data
    bool is_emptied = false;      // delta is the whole new sum
  };

  void WriteFile(int16_t file, std::span<const Change> changes, Transaction& transaction);
  [[nodiscard]] uint64_t SumAfter(const Change& change, int16_t file, uint64_t stored) const;

  const StoreLocation& location_;
  const PriceFiles& prices_;
  std::string no_data_ = NoDataEntries(1);
  std::map<int16_t, std::vector<Change>> changes_;  // by file
};

/// Sums of days that are appended to the current file. They go into the bank that does not count
/// until orin.sys's header does.
class SumAppend {
 public:
  /// `days` are committed in the file.
  SumAppend(const StoreLocation& location, int16_t file, int32_t days);

  /// The entries of the new days, in order, of a record.
  void Take(const SummedRecord& record, std::string_view entries);
  /// To the disk, flushed, with `count` new days.
  base::Status Write(int32_t count, base::FileSystem& files);

 private:
  const StoreLocation& location_;
  int16_t file_;
  int32_t days_;
  std::optional<CommittedSums> committed_;
};

/// The file of sums of a daily file that is written as a whole.
class NewSums {
 public:
  /// `days` of its days are in use.
  NewSums(int16_t file, int32_t records, int32_t days) : days_(days), sums_(file, records) {}

  /// A whole record, or its first entries where more are not in use. `damage` is by how much the
  /// sums of what it was made from differed.
  void Take(const SummedRecord& record, std::string_view entries, uint64_t damage = 0);
  /// The whole file; `damage` as above, of the file of sums itself.
  std::string_view Finish(uint64_t damage = 0);

 private:
  int32_t days_;
  PriceSums sums_;
};

/// What was damaged in the daily files that a new one is made from. A damaged entry may move into
/// any of the new files, so the sums of each of them show the damage.
class SumDamage {
 public:
  SumDamage(const StoreLocation& location, const PriceFiles& prices,
            const std::set<int16_t>& sources);

  /// Whether all of them have sums that count; without sources, whether the store keeps sums.
  [[nodiscard]] bool IsKnown() const { return is_known_; }
  /// By how much the sums of a record differ from the content; known.
  [[nodiscard]] uint64_t OfRecord(int32_t record, size_t entry_length) const;
  /// By how much the files of sums differ from their own sums; known.
  [[nodiscard]] uint64_t OfFiles() const;

 private:
  const PriceFiles& prices_;
  std::map<int16_t, CommittedSums> files_;
  bool is_known_;
};

/// The committed entries of a record of a daily file that `prices` has.
std::string_view CommittedEntries(const PriceFiles& prices, const SummedRecord& record);

}  // namespace orin::store
