#pragma once

#include <map>
#include <string>

#include "base/bars.h"

namespace orin::analysis {

/// The stocks of demo/brand by code, each with a bar for every day of ^DJI.
struct DemoMarket {
  std::map<std::string, base::BarColumns> stocks;
};
DemoMarket ReadDemoMarket();

}  // namespace orin::analysis
