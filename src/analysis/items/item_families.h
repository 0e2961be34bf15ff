#pragma once

#include "analysis/items/item_catalogue.h"

namespace orin::analysis {

// The functions of the families; see ItemFamily for what they are given.

History SeriesNeeds(const BoundItem& item);
void EvaluateSeries(const BoundItem& item, StockContext& context, base::DayIndex first,
                    base::DayIndex last, base::ValueColumn& out);

History SpreadNeeds(const BoundItem& item);
void EvaluateSpread(const BoundItem& item, StockContext& context, base::DayIndex first,
                    base::DayIndex last, base::ValueColumn& out);

History ExtremeSpreadNeeds(const BoundItem& item);
void EvaluateHighestSpread(const BoundItem& item, StockContext& context, base::DayIndex first,
                           base::DayIndex last, base::ValueColumn& out);
void EvaluateLowestSpread(const BoundItem& item, StockContext& context, base::DayIndex first,
                          base::DayIndex last, base::ValueColumn& out);

History FunctionNumberNeeds(const BoundItem& item);
void EvaluateFunctionNumber(const BoundItem& item, StockContext& context, base::DayIndex first,
                            base::DayIndex last, base::ValueColumn& out);

/// Indicators over one series, in all four forms.
inline constexpr ItemFamily kSeriesItems = {true, SeriesNeeds, EvaluateSeries};

// 終値 - 第二銘柄終値 of one day, and its extremes over a period of days.
inline constexpr ItemFamily kSpreadItem = {true, SpreadNeeds, EvaluateSpread};
inline constexpr ItemFamily kHighestSpreadItem = {true, ExtremeSpreadNeeds, EvaluateHighestSpread};
inline constexpr ItemFamily kLowestSpreadItem = {true, ExtremeSpreadNeeds, EvaluateLowestSpread};

/// The numbers 1 to 11 that choose a numeric function.
inline constexpr ItemFamily kFunctionNumberItems = {false, FunctionNumberNeeds,
                                                    EvaluateFunctionNumber};

/// How many bars a value at the offset reads that looks `history` bars back: history + 1 -
/// offset, History::kAll where that is too many.
int32_t BarsRead(int64_t history, int32_t offset);

}  // namespace orin::analysis
