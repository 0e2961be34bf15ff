#pragma once

#include <string>

#include "analysis/condition.h"
#include "analysis/items/item_call.h"
#include "analysis/stock_context.h"
#include "base/ordinal.h"

namespace orin::analysis {

// Why something has no value on a day, in one or two Japanese sentences: what is certain, and
// "計算できません。" where nothing is. The context is loaded for the needs of what is asked about,
// and the day is one of its days.

/// Only for a call that has no value. A bar without data is named as the reason where the value
/// would exist if that bar had the data of its neighbour.
std::string WhyItemFails(const ItemCall& call, StockContext& context, base::DayIndex day);

/// Only for an operand that has no value although each of its item calls has one: the operation
/// that has no result.
std::string WhyOperationFails(const Piece& operand, StockContext& context, base::DayIndex day);

}  // namespace orin::analysis
