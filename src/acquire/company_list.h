#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "acquire/line_problems.h"
#include "base/currency.h"
#include "base/result.h"
#include "store/company_table.h"
#include "store/stock_master.h"
#include "store/stock_store.h"

namespace orin::acquire {

/// All fields of all stocks that a store can hold are some 20 MB.
inline constexpr int64_t kLargestCompanyList = int64_t{64} << 20;

/// A value that a list gives a stock; none: it is no longer known.
struct CompanyValue {
  const store::StockRecord* stock;   // of the master the list was read with
  const store::CompanyField* field;  // of store::kCompanyFields
  std::optional<base::Currency> value;
};

/// Company data as a list file gives it.
struct CompanyList {
  std::vector<CompanyValue> values;  // in file order, each field of a stock once
  int32_t rows = 0;                  // lines below the heading that are not empty
  int32_t stocks = 0;                // of them, those of a stock whose values count
  bool has_heading = false;
  LineProblems problems;
};

/// Reads a list whose heading names 銘柄コード and fields of store::kCompanyFields in any order,
/// one stock a line. A blank field leaves what is stored, "-" forgets it; a number may have ","
/// between groups of three digits where it is in double quotes. Columns and values that are wrong
/// are left out with a problem, as are lines of unknown stocks or with another number of fields
/// than the heading; of several lines of one code the first counts.
CompanyList ParseCompanyList(std::string_view utf8, const store::StockMaster& master);

/// A list with all fields of the stocks of which anything is known, in master order and in the
/// form that ParseCompanyList reads: reading it into an empty table gives this one.
std::string FormatCompanyList(const store::StockMaster& master,
                              const store::CompanyTable& companies);

/// What an import did.
struct CompanySummary {
  int32_t rows = 0;
  int32_t stocks = 0;
  int32_t values = 0;                 // that are other than those stored before
  std::vector<std::string> problems;  // sentences with file and line, at most a hundred and one
};

/// Reads a list file (UTF-8 or code page 932) into the store's tables. Stocks and fields that are
/// not in the file keep what they have. Fails, with nothing changed, without a heading.
base::Result<CompanySummary> ImportCompanies(store::StockStore& store,
                                             const std::filesystem::path& file);

}  // namespace orin::acquire
