#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/progress.h"
#include "base/result.h"
#include "store/file_names.h"
#include "store/findings.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

/// What the parts of CheckStore need of each other.
struct CheckedStore {
  const StoreLocation& location;
  /// None where orin.sys has no header that price files can be found with.
  std::optional<MasterHeader> header;
  StockMaster master;  // the stocks, well-formed or not

  [[nodiscard]] std::string NameForMessage(const StoreFile& file) const;
};

/// "銘柄AAPL（レコード3）"; a code that is none is left out.
std::string StockForMessage(const StockRecord& stock, int32_t record);

/// The content of a file; none, with a finding, where it is missing or cannot be read.
std::optional<std::string> ReadForCheck(const CheckedStore& store, FileKind kind,
                                        Findings& findings);
/// A finding where the last record of the file is cut short.
void CheckWholeRecords(const CheckedStore& store, const StoreFile& file, size_t length,
                       size_t record_length, Findings& findings);

/// Reads orin.sys into `store`.
void CheckMaster(CheckedStore& store, Findings& findings);
/// Files, calendar and bars; fails only when stopped.
base::Status CheckPrices(const CheckedStore& store, base::Progress& progress, Findings& findings);
/// orin.ind and orin.add or orin.del against orin.sys: counts, codes and record numbers.
void CheckIndex(const CheckedStore& store, Findings& findings);
void CheckList(const CheckedStore& store, FileKind kind, Findings& findings);
/// All companion files, also the order of orin.ind.
void CheckCompanions(const CheckedStore& store, Findings& findings);
void CheckSplits(const CheckedStore& store, Findings& findings);
/// orin.fin and orin.acc against orin.sys.
void CheckCompanyFiles(const CheckedStore& store, Findings& findings);
/// The checksums against the files; nothing where the store has none. Checksums that are missing
/// or cannot be read go to `lacking`. Fails only when stopped.
base::Status CheckSums(const CheckedStore& store, base::Progress& progress, Findings& findings,
                       Findings& lacking);
/// The credit files that the header names: numbers, whether they are there, lengths, dates.
void CheckCreditFiles(const CheckedStore& store, Findings& findings);

}  // namespace orin::store
