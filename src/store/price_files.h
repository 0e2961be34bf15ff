#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "base/bars.h"
#include "base/date.h"
#include "base/file_system.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/price_format.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// A day's place in the daily files.
struct DayPlace {
  int16_t file = 0;      // number of the file
  int32_t position = 0;  // 0..99, the entry in each of its records

  bool operator==(const DayPlace&) const = default;
};

/// The daily files of the master's header, mapped into memory. Days are counted from 0 here, the
/// first slot of the header's first file.
class PriceFiles {
 public:
  PriceFiles() = default;
  /// Fails with a sentence that names the file where one is missing, lacks its record of dates or
  /// a stock that another file has, or where the dates are not ascending.
  static base::Result<PriceFiles> Open(const StoreLocation& location, const StockMaster& master);

  [[nodiscard]] std::span<const base::Date> Days() const { return days_; }
  [[nodiscard]] int32_t DayCount() const { return static_cast<int32_t>(days_.size()); }
  [[nodiscard]] int32_t FileCount() const { return static_cast<int32_t>(files_.size()); }
  /// The whole records that every file has; 0 without files.
  [[nodiscard]] int32_t Records() const { return records_; }
  /// The whole records of the longest file; more than Records() in damaged files only.
  [[nodiscard]] int32_t LongestRecords() const;
  /// Whether every file has the record and it is not that of the dates.
  [[nodiscard]] bool HasSlot(base::SlotRecord slot) const {
    return slot.Value() >= 1 && slot.Value() <= records_ && slot.Value() != date_record_;
  }
  [[nodiscard]] DayPlace PlaceOf(int32_t day) const {
    return {static_cast<int16_t>(first_file_ + day / kDaysPerFile), day % kDaysPerFile};
  }
  /// The bytes of a file in use.
  [[nodiscard]] std::string_view Bytes(int16_t file) const {
    return files_[static_cast<size_t>(file - first_file_)].Bytes();
  }
  /// The entry of a slot that HasSlot; the entries up to the end of its file follow it.
  [[nodiscard]] const char* Entry(base::SlotRecord slot, int32_t day) const;

  /// The days first..last (from 0) into `bars`, of the prices only those asked for. A slot that is
  /// none reads as days without data.
  void Load(base::SlotRecord slot, int32_t first, int32_t last, base::PriceFields fields,
            base::BarColumns& bars) const;

  /// Brings the entries first..last of the slots, which Load is about to copy, near the processor.
  void ReadAhead(std::span<const base::SlotRecord> slots, int32_t first, int32_t last) const;

  /// Whether no file has been cut short since it was opened; what was read from one that has may
  /// be zeros.
  [[nodiscard]] bool IsWhole() const {
    return std::ranges::all_of(files_, &base::MappedFile::IsWhole);
  }
  /// Gives back the memory of the entries that have been read.
  void ReleaseMemory() const {
    for (const base::MappedFile& file : files_) file.ReleaseMemory();
  }

  /// After a day has been committed behind the last one: takes it into Days(), with its file
  /// where it began a new one.
  base::Status TakeNewDay(const StoreLocation& location, base::Date date);

 private:
  base::Status MapFile(const StoreLocation& location, int16_t file);
  [[nodiscard]] base::Status CheckLengths(const StoreLocation& location,
                                          const StockMaster& master) const;
  base::Status ReadDays(const StoreLocation& location, const MasterHeader& header);
  void CountRecords();

  std::vector<base::MappedFile> files_;
  std::vector<base::Date> days_;
  int16_t first_file_ = 1;
  int32_t date_record_ = 1;
  int32_t records_ = 0;
};

/// The highest slot of the master that counts for the files: above `records` (0: no file yet)
/// there are damaged records only.
int32_t HighestSlot(const StockMaster& master, int32_t records);

}  // namespace orin::store
