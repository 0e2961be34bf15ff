#include <vector>

#include "indicators/indicator_tables.h"

namespace orin::indicators {

namespace {

std::vector<Indicator> JoinTables() {
  std::vector<Indicator> all;
  for (const auto rows : {BarIndicators(), AverageIndicators(), TrendIndicators()}) {
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

}  // namespace

std::span<const Indicator> Indicators() {
  static const std::vector<Indicator> all = JoinTables();
  return all;
}

}  // namespace orin::indicators
