#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "base/result.h"

namespace orin::bench {

/// Measures the named figures (all where none is named) on the market in `directory` and prints a
/// line each: name, value, unit, parted by tabs. Both sides of a ratio are measured in turn, many
/// times; printed is the median.
///
/// F1  the time to stream the bytes of the last price file (ms)
/// T1  the time to screen the last day with the golden cross, as a ratio to F1
/// T2  the same with a condition on weekly and daily items, as a ratio to F1
base::Status RunFigures(const std::filesystem::path& directory,
                        const std::vector<std::string>& names, std::ostream& out);

}  // namespace orin::bench
