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

History TradePriceNeeds(const BoundItem& item);
void EvaluateBuyPrice(const BoundItem& item, StockContext& context, base::DayIndex first,
                      base::DayIndex last, base::ValueColumn& out);
void EvaluateSellPrice(const BoundItem& item, StockContext& context, base::DayIndex first,
                       base::DayIndex last, base::ValueColumn& out);

/// Indicators over one series, in all four forms.
inline constexpr ItemFamily kSeriesItems = {ItemFamily::Ending::kOffset, SeriesNeeds,
                                            EvaluateSeries};

// 終値 - 第二銘柄終値 of one day, and its extremes over a period of days.
inline constexpr ItemFamily kSpreadItem = {ItemFamily::Ending::kOffset, SpreadNeeds, EvaluateSpread,
                                           true};
inline constexpr ItemFamily kHighestSpreadItem = {ItemFamily::Ending::kOffset, ExtremeSpreadNeeds,
                                                  EvaluateHighestSpread, true};
inline constexpr ItemFamily kLowestSpreadItem = {ItemFamily::Ending::kOffset, ExtremeSpreadNeeds,
                                                 EvaluateLowestSpread, true};

/// The numbers 1 to 11 that choose a numeric function.
inline constexpr ItemFamily kFunctionNumberItems = {ItemFamily::Ending::kNone, FunctionNumberNeeds,
                                                    EvaluateFunctionNumber};

// The prices of the simulated trade, the same on every day.
inline constexpr ItemFamily kBuyPriceItem = {ItemFamily::Ending::kOptionalZero, TradePriceNeeds,
                                             EvaluateBuyPrice};
inline constexpr ItemFamily kSellPriceItem = {ItemFamily::Ending::kOptionalZero, TradePriceNeeds,
                                              EvaluateSellPrice};

/// How many bars a value at the offset reads that looks `history` bars back: history + 1 -
/// offset, History::kAll where that is too many.
int32_t BarsRead(int64_t history, int32_t offset);

}  // namespace orin::analysis
