#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/profile_file.h"

namespace orin::settings {

/// One of the rankings of the market. Empty: not in use.
struct RankingSlot {
  std::string label;     // label of the column
  std::string analysis;  // expression whose value ranks the stocks
  std::string title;

  bool operator==(const RankingSlot&) const = default;
};

/// Section StockRanking.
struct StockRankingSettings {
  static constexpr size_t kSlots = 7;

  std::array<RankingSlot, kSlots> slots;
  int32_t sort_slot = 0;       // the slot the listing is sorted by, 1 to 7
  int32_t sort_direction = 0;  // 0 greatest first, 1 smallest first
  int32_t kept_files = 0;      // ranking files kept, one a trading day
  int32_t csv_stocks = 0;      // stocks of a ranking written as CSV

  bool operator==(const StockRankingSettings&) const = default;
};

StockRankingSettings ReadStockRanking(const base::ProfileFile& profile);
void WriteStockRanking(base::ProfileFile& profile, const StockRankingSettings& settings);

}  // namespace orin::settings
