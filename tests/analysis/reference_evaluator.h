#pragma once

#include <string_view>

#include "analysis/condition.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/ordinal.h"

namespace orin::analysis {

// The language in the plainest form: a list of tokens in which each pass replaces an operator and
// its operands by the result, done again for every operand, stock and day. Slow, and short enough
// to be checked by reading; what the compiled program gives must equal it.

Value ReferenceOperand(std::string_view text, StockContext& context, base::DayIndex day);
bool ReferenceCondition(const CompiledCondition& condition, StockContext& context,
                        base::DayIndex day);
/// The prices of the trade after the condition has been looked at on the day; those of the context
/// stay.
TradePrices ReferencePrices(const CompiledCondition& condition, StockContext& context,
                            base::DayIndex day);

}  // namespace orin::analysis
