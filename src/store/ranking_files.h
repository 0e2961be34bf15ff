#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/currency.h"
#include "base/date.h"
#include "base/file_system.h"
#include "base/result.h"
#include "store/ranking_format.h"
#include "store/stock_code.h"
#include "store/store_location.h"

namespace orin::store {

/// Which place of a stock is asked for.
struct RankingQuery {
  int32_t ranking = 1;  // 1..7
  RankingPeriod period = RankingPeriod::kDay;
  bool within_market = false;  // among the stocks of the same listing code
  bool is_descending = true;   // the greatest value comes first
};

/// One ranking file, mapped for reading. Places are worked out when they are first asked for.
class RankingFile {
 public:
  /// Fails with a sentence for a file that cannot be read, is damaged or is of another version.
  static base::Result<RankingFile> Open(const std::filesystem::path& path);

  [[nodiscard]] base::Date Date() const;
  [[nodiscard]] std::string Title(int32_t ranking) const;
  [[nodiscard]] int32_t Count() const;
  /// nullopt where the file does not have the stock, or the ranking leaves it out.
  [[nodiscard]] std::optional<base::Currency> Value(const StockCode& code, int32_t ranking,
                                                    RankingPeriod period) const;
  /// From 1; equal values share the better place. nullopt where there is no value.
  [[nodiscard]] std::optional<int32_t> PlaceOf(const StockCode& code,
                                               const RankingQuery& query) const;

 private:
  /// Ranking, period, listing code or kAllMarkets.
  using ColumnKey = std::tuple<int32_t, RankingPeriod, int32_t>;
  static constexpr int32_t kAllMarkets = INT16_MIN - 1;  // no listing code

  explicit RankingFile(base::MappedFile file) : file_(std::move(file)) {}
  /// The stocks' records, from 0.
  [[nodiscard]] const char* StockRecordAt(int32_t place) const;
  [[nodiscard]] const char* Find(const StockCode& code) const;
  [[nodiscard]] std::span<const base::Currency> Sorted(const ColumnKey& key) const;

  base::MappedFile file_;
  mutable std::map<ColumnKey, std::vector<base::Currency>> sorted_;  // ascending
};

/// The ranking files of a store by their dates.
class RankingFiles {
 public:
  /// Maps the files that exist, of several of one date the one with the lowest number; orin.rnk
  /// counts last. Files that cannot be used are left out, each with a sentence.
  static RankingFiles Open(const StoreLocation& location);

  [[nodiscard]] const std::vector<std::string>& Problems() const { return problems_; }
  [[nodiscard]] size_t Count() const { return files_.size(); }
  /// Null where no file has the date.
  [[nodiscard]] const RankingFile* OfDate(base::Date date) const;
  /// The newest one of those dated first..last; null where there is none.
  [[nodiscard]] const RankingFile* NewestOf(base::Date first, base::Date last) const;

 private:
  std::map<base::Date, RankingFile> files_;
  std::vector<std::string> problems_;
};

/// Makes the content a ranking file: it takes the place of the file of its date; without one it
/// becomes the file whose number counts the files of later dates, and the older ones move up by
/// one. At most `keep` files remain (1..1000, brought into that range); fails where all of them
/// would be newer. orin.rnk becomes a copy of orinm000.rnk. Stopped at any point, no file is
/// damaged, and a number that has become free is used by the next one.
base::Status WriteRankingFile(base::FileSystem& files, const StoreLocation& location,
                              const RankingContent& content, int32_t keep);

/// Makes orin.rnk a copy of orinm000.rnk where it is none; success where there is no orinm000.rnk.
base::Status CopyNewestRanking(base::FileSystem& files, const StoreLocation& location);

}  // namespace orin::store
