#pragma once

#include <optional>

#include "base/currency.h"

namespace orin::base {

/// `part` in percent of `whole`, through double; nullopt where `whole` is 0 or the percentage is
/// out of range.
inline std::optional<Currency> PercentOf(Currency part, Currency whole) {
  if (whole == Currency()) return std::nullopt;
  return Currency::FromDouble(static_cast<double>(part.Raw()) / static_cast<double>(whole.Raw()) *
                              100);
}

}  // namespace orin::base
