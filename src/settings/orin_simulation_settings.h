#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/date.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section OrinSimulation of orinsim.ini: the trading simulation as it was last set up.
struct OrinSimulationSettings {
  int32_t option = 0;  // 0 buys and sells, 1 sells short and buys back
  std::string buy_title;
  std::string sale_title;
  /// Conditions; the further ones are joined to the first by "And", an empty one does not count.
  std::array<std::string, 3> buy_analysis;
  std::array<std::string, 3> sale_analysis;
  base::Date start_date;
  base::Date end_date;
  std::string second_stock;  // second stock
  int32_t stock_choice = 0;  // 0 all stocks of the market, 1 the one stock
  int32_t listing = 0;       // market: 0 all, else the listing code
  std::string stock;         // the one stock

  bool operator==(const OrinSimulationSettings&) const = default;
};

OrinSimulationSettings ReadOrinSimulation(const base::ProfileFile& profile);
void WriteOrinSimulation(base::ProfileFile& profile, const OrinSimulationSettings& settings);

}  // namespace orin::settings
