#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "base/result.h"

namespace orin::bench {

/// Measures the named figures (all where none is named) on the market in `directory`, one thread,
/// warm cache, and prints a line each, parted by tabs: name, ratio, the figure it is a ratio to,
/// time, "ms". Times are processor time. All figures are measured in turn, round after round;
/// printed is the median.
///
/// F1  streaming the bytes of the last price file
/// F2  streaming all price files in their order, adding up the closes
/// T1  screening the last day with the golden cross, as a ratio to F1
/// T3  the same with five terms (RSI, %K, ADX, close above the highest close of 20 days and above
///     its average of 22)
/// T2  the golden cross on every day of every stock, counted, as a ratio to F2; with fewer stocks
///     and with fewer days it tells how the time grows
/// T4  columns of RSI(14), ADX(14,14) and MACD(5,20) over all days of every stock
/// H1 to H4  the results of T1 to T4 from loops written by hand (hand_loops.h)
/// T1/H1 to T4/H4  the ratios of their median times: how far the engine is from them
/// start  the window program from its start until its windows can be used, where it was built
/// chart  laying out and painting 2,500 days with five sub-charts at 1600 x 1000, and a hundred
///        years of days (century), each also in parts; as ratios to filling the picture with one
///        colour
///
/// A ratio brings the figures that it needs along. At the end the private memory of the process.
/// Fails where T1 to T4 find other things than H1 to H4.
base::Status RunFigures(const std::filesystem::path& directory,
                        const std::vector<std::string>& names, std::ostream& out);

}  // namespace orin::bench
