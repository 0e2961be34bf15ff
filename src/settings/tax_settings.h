#pragma once

#include "base/currency.h"
#include "base/profile_file.h"

namespace orin::settings {

/// Section Tax: rates in percent.
struct TaxSettings {
  base::Currency torihiki_zeiritu;        // transaction tax
  base::Currency jyouto_zeiritu;          // tax on capital gains
  base::Currency optiontorihiki_zeiritu;  // tax on option transactions
  base::Currency syouhi_zeiritu;          // consumption tax, on fees
  base::Currency syotoku_zeiritu;         // income tax
  base::Currency jyumin_zeiritu;          // resident tax
  bool capitalgain_tax = false;           // gains are taxed

  bool operator==(const TaxSettings&) const = default;
};

TaxSettings ReadTax(const base::ProfileFile& profile);
void WriteTax(base::ProfileFile& profile, const TaxSettings& settings);

}  // namespace orin::settings
