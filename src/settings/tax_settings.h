#pragma once

#include "base/currency.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section Tax: rates in percent.
struct TaxSettings {
  base::Currency transaction_tax;         // transaction tax
  base::Currency capital_gains_tax;       // tax on capital gains
  base::Currency option_transaction_tax;  // tax on option transactions
  base::Currency consumption_tax;         // consumption tax, on fees
  base::Currency income_tax;              // income tax
  base::Currency resident_tax;            // resident tax
  bool taxes_gains = false;               // gains are taxed

  bool operator==(const TaxSettings&) const = default;
};

TaxSettings ReadTax(const base::ProfileFile& profile);
void WriteTax(base::ProfileFile& profile, const TaxSettings& settings);

}  // namespace orin::settings
