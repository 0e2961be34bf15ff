#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

/// 企業url.txt: the home pages of the stocks' companies.
using CompanyAddresses = std::map<StockCode, std::string>;

/// Lines of a code and an address, parted by "：", a tab or a comma, whichever comes first; of
/// several lines of a code the last counts. Empty lines, "T:" and "D:" lines and a line headed
/// 銘柄コード are no entries. Lines that cannot be read are told in `problems`, a sentence each.
CompanyAddresses ParseCompanyAddresses(std::string_view bytes, const std::string& file_name,
                                       std::vector<std::string>& problems);

/// Code page 932, by code, parted by "：". Fails with a sentence where an address has a character
/// that code page 932 lacks.
base::Result<std::string> SerializeCompanyAddresses(const CompanyAddresses& addresses);

}  // namespace orin::store
