#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/currency.h"
#include "base/result.h"
#include "store/company_format.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// The company and financial data of the stocks, from orin.fin and orin.acc. A value, as read; it
/// is saved with StockStore::SaveCompanies. A record speaks for a stock only where it holds the
/// stock's code, so that a slot that went to another stock has no data.
class CompanyTable {
 public:
  /// Reads both files, some megabytes. A missing one is an empty table; fails with a sentence
  /// that names the file that cannot be read.
  static base::Result<CompanyTable> Load(const StoreLocation& location);

  /// nullopt where nothing is known.
  [[nodiscard]] std::optional<base::Currency> Value(const StockRecord& stock,
                                                    const CompanyField& field) const;
  /// nullopt forgets the value. False for a stock that can have no record: a slot outside
  /// 2..32767, no code.
  bool Set(const StockRecord& stock, const CompanyField& field,
           std::optional<base::Currency> value);

  /// The whole file as it is to be written.
  [[nodiscard]] std::string Bytes(const CompanyFile& file) const;

 private:
  [[nodiscard]] const char* Record(const StockRecord& stock, size_t file) const;
  char* MakeRecord(const StockRecord& stock, size_t file);

  std::array<std::string, kCompanyFiles.size()> images_;  // empty: the file is missing
};

}  // namespace orin::store
