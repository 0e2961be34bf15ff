#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/date.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/price_format.h"
#include "store/store_location.h"

namespace orin::store {

/// The bars of a stock on one day, by time. Without a date where there are none.
struct IntradayDay {
  base::Date date;
  std::vector<IntradayBar> bars;

  bool operator==(const IntradayDay&) const = default;
};

/// The intraday files of a store by their dates. The bars of a stock are read from its record when
/// they are asked for.
class IntradayFiles {
 public:
  /// Reads the first record of each file that is there.
  static IntradayFiles Open(const StoreLocation& location);

  /// A sentence for each file that cannot be read, ends within a record or has an invalid date.
  [[nodiscard]] const std::vector<std::string>& Problems() const { return problems_; }
  /// The newest day up to `last` of which the files have bars of the stock. A file that is damaged
  /// or shorter than the record is one without bars; fails where one cannot be read.
  [[nodiscard]] base::Result<IntradayDay> Newest(base::SlotRecord slot, base::Date last) const;

 private:
  struct DatedFile {
    base::Date date;
    std::filesystem::path path;
  };
  void Add(const std::filesystem::path& path);

  std::vector<DatedFile> files_;  // newest first, of one date the last number first
  base::Status readable_;         // the failure of the first file that cannot be read
  std::vector<std::string> problems_;
};

/// The image of an intraday file of `date` with the bars of each slot from 2 on, each at most
/// kIntradayEntries.
std::string EncodeIntradayFile(base::Date date, const std::vector<std::vector<IntradayBar>>& slots);

}  // namespace orin::store
