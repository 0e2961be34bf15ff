#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/explanation.h"
#include "base/date.h"

namespace orin::analysis {

/// A line of an explanation: a condition with its truth, or a value it compares.
struct OutlineRow {
  size_t level = 0;  // how deep it stands, 0 outermost
  std::string text;
  std::string value;          // "－" where it fails; of a condition empty
  std::string remark;         // the bars a value comes from, or why it fails
  std::optional<bool> truth;  // of a condition
};

/// The outcome and its reason, as an investor reads them, in a line that ends in "\n"; one more
/// line for each Or-term where there are several. `stock` is code and name, as "AAPL（APPLE）".
std::string OutcomeText(const Explanation& explanation, const std::string& stock, base::Date date);

/// Every condition with the values it compares and the bars they come from.
std::vector<OutlineRow> OutlineOf(const Explanation& explanation);

}  // namespace orin::analysis
