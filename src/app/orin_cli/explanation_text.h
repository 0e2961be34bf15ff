#pragma once

#include <string>

#include "analysis/explanation.h"
#include "base/date.h"

namespace orin::app {

/// The explanation as an investor reads it: one sentence with the outcome and its reason, then
/// every condition with the values it compares and the bars they come from, then the notes of the
/// compiler. `stock` is code and name, as "AAPL（APPLE）".
std::string ExplanationText(const analysis::Explanation& explanation, const std::string& stock,
                            base::Date date);

}  // namespace orin::app
