#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/ordinal.h"
#include "base/table.h"
#include "store/splits.h"
#include "store/stock_master.h"

namespace orin::lists {

/// The given stocks of the master.
base::Table TableOfMaster(const store::StockMaster& master,
                          const std::vector<base::MasterRecord>& records);
base::Table TableOfSplits(const store::SplitList& splits);

/// A result list or any other list of stocks: "T:" and "D:" lines give the caption, the others
/// begin with a code and go on in the columns of result lists.
struct ListedStocks {
  std::string title;
  std::string date;
  base::Table table;
};
ListedStocks TableOfList(std::string_view utf8);

}  // namespace orin::lists
