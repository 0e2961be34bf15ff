#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/companion_formats.h"
#include "store/stock_master.h"

namespace orin::store {

/// The name as a reading: full-width kana, letters and digits become half-width upper case (a
/// voiced kana its base and "ﾞ" or "ﾟ"); characters without a half-width form stay.
std::string ReadingOfName(std::string_view name);

/// The stock whose code was typed: as it stands, else in capitals whatever the width it was typed
/// in. None where there is no such stock.
base::MasterRecord FindTyped(const StockMaster& master, std::string_view typed);

/// What orin.ind is ordered by: the reading with small kana as large ones, "ｦ" after "ﾜ", without
/// long-vowel and voice marks.
std::string SyllabaryKey(std::string_view reading);

/// A company's name where it is longer than the name in the master.
struct CompanyName {
  base::MasterRecord record;
  std::string name;
};

/// The bytes of orin.ind for the master: one entry a stock, in syllabary order. Stocks that
/// `known` has (by code) keep their company name and reading; the others take their name from
/// `companies` (ascending by record), else from the master, and the reading from the name.
base::Result<std::string> BuildNameIndex(const StockMaster& master,
                                         std::span<const IndexEntry> known,
                                         std::span<const CompanyName> companies);

/// The whole records of orin.ind.
std::vector<IndexEntry> DecodeNameIndex(std::string_view bytes);

}  // namespace orin::store
