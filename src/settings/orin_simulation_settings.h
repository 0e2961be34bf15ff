#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/date.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section OrinSimulation of orinsim.ini: the trading simulation as it was last set up.
struct OrinSimulationSettings {
  int32_t sim_option = 0;  // 0 buys and sells, 1 sells short and buys back
  std::string sim_buy_title;
  std::string sim_sale_title;
  /// Conditions; the further ones are joined to the first by "And", an empty one does not count.
  std::array<std::string, 3> sim_buy_analysis;
  std::array<std::string, 3> sim_sale_analysis;
  base::Date sim_start_date;
  base::Date sim_end_date;
  std::string sim_meigaracode2;     // second stock
  int32_t sim_analysis_option = 0;  // 0 all stocks of the market, 1 the one stock
  int32_t sim_jyoujyou = 0;         // market: 0 all, else the listing code
  std::string sim_meigaracode;      // the one stock

  bool operator==(const OrinSimulationSettings&) const = default;
};

OrinSimulationSettings ReadOrinSimulation(const base::ProfileFile& profile);
void WriteOrinSimulation(base::ProfileFile& profile, const OrinSimulationSettings& settings);

}  // namespace orin::settings
