#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/date.h"
#include "base/file_system.h"
#include "base/ordinal.h"
#include "store/price_format.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// The credit files of the master's header, mapped into memory and matched with the days of the
/// daily files by their dates: they may begin later and lack days.
class CreditFiles {
 public:
  CreditFiles() = default;
  /// A file that is missing or cannot be read has no balances. `days` are all stored days, in the
  /// order of the daily files.
  static CreditFiles Open(const StoreLocation& location, const MasterHeader& header,
                          std::span<const base::Date> days);

  /// The number of days it was opened for.
  [[nodiscard]] int32_t DayCount() const { return static_cast<int32_t>(places_.size()); }
  /// The balances of the days first..last, counted from 0 and below DayCount(), into `balances`,
  /// which is emptied first. Both are 0 where there are none.
  void Load(base::SlotRecord slot, int32_t first, int32_t last,
            std::vector<CreditBalance>& balances) const;
  /// Whether no file has been cut short since it was opened.
  [[nodiscard]] bool IsWhole() const {
    return std::ranges::all_of(files_, [](const auto& file) { return !file || file->IsWhole(); });
  }

 private:
  /// Takes the dates of file `index`; those of a later file count where a day is in both.
  void Match(int32_t index, std::span<const base::Date> days);
  [[nodiscard]] CreditBalance At(base::SlotRecord slot, int32_t place) const;

  std::vector<std::optional<base::MappedFile>> files_;
  std::vector<int32_t> places_;  // of each day: file × 100 + entry, -1 for none
  int32_t date_record_ = 1;
};

}  // namespace orin::store
