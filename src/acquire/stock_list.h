#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "acquire/line_problems.h"
#include "store/stock_store.h"

namespace orin::acquire {

/// All stocks that a store can hold, in lines five times as long as usual, are half of this.
inline constexpr int64_t kLargestStockList = int64_t{16} << 20;

/// Stocks as a list file names them.
struct StockList {
  std::vector<store::NewStock> stocks;        // in file order, each code once
  std::vector<store::StockCode> wrong_lines;  // codes of lines that are wrong otherwise
  bool has_heading = false;
  LineProblems problems;
};

/// Reads a list with the header "銘柄コード,銘柄名,上場コード,種別コード,業種コード", one stock a
/// line. A line that is wrong (a name that code page 932 cannot hold too) is left out with a
/// problem; of several lines of one code the first counts.
StockList ParseStockList(std::string_view utf8);

}  // namespace orin::acquire
