#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "base/date.h"
#include "base/ordinal.h"
#include "store/price_format.h"
#include "store/store_location.h"

namespace orin::support {

/// The balances of a slot on the days of a credit file, in the order of its dates.
using SlotBalances = std::pair<base::SlotRecord, std::vector<store::CreditBalance>>;

store::CreditBalance Balance(int32_t sell, int32_t buy);

/// Writes a credit file of up to a hundred `dates`, with records up to the highest slot given.
void WriteCreditFile(const store::StoreLocation& location, int16_t number,
                     const std::vector<base::Date>& dates,
                     const std::vector<SlotBalances>& balances);

/// Makes the header of orin.sys name the credit files first..current. For a store that is not open.
void NameCreditFiles(const store::StoreLocation& location, int16_t first, int16_t current);

}  // namespace orin::support
