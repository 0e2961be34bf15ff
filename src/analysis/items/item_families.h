#pragma once

#include "analysis/items/item_catalogue.h"

namespace orin::analysis {

// The rows of the families, each in the order of the condition editor.
std::span<const ItemEntry> SeriesItems();     // indicators over one series
std::span<const ItemEntry> LaggingItems();    // 遅行スパン
std::span<const ItemEntry> CreditItems();     // 売り残, 買い残
std::span<const ItemEntry> SpreadItems();     // さや...
std::span<const ItemEntry> CompanyItems();    // 銘柄ランク to 売買単位
std::span<const ItemEntry> FinancialItems();  // 単独..., 連結...
std::span<const ItemEntry> RankingItems();    // ランキング順位
std::span<const ItemEntry> TradeItems();      // 買い値, 売り値, 買い日付, 売り日付
std::span<const ItemEntry> FunctionNumberItems();  // Ａｂｓ to Ｔａｎ

// What others ask a call for. The functions are what ItemFamily says.

History SeriesNeeds(const BoundItem& item);
void EvaluateSeries(const BoundItem& item, StockContext& context, base::DayIndex first,
                    base::DayIndex last, base::ValueColumn& out);
History FunctionNumberNeeds(const BoundItem& item);
void EvaluateFunctionNumber(const BoundItem& item, StockContext& context, base::DayIndex first,
                            base::DayIndex last, base::ValueColumn& out);
History TradeNeeds(const BoundItem& item);
void EvaluateBuyPrice(const BoundItem& item, StockContext& context, base::DayIndex first,
                      base::DayIndex last, base::ValueColumn& out);
void EvaluateSellPrice(const BoundItem& item, StockContext& context, base::DayIndex first,
                       base::DayIndex last, base::ValueColumn& out);

/// Indicators over one series, in all four forms.
inline constexpr ItemFamily kSeriesItems = {ItemFamily::Ending::kOffset, SeriesNeeds,
                                            EvaluateSeries};

/// The numbers 1 to 11 that choose a numeric function.
inline constexpr ItemFamily kFunctionNumberItems = {ItemFamily::Ending::kNone, FunctionNumberNeeds,
                                                    EvaluateFunctionNumber};

// The prices of the simulated trade, the same on every day.
inline constexpr ItemFamily kBuyPriceItem = {ItemFamily::Ending::kOptionalZero, TradeNeeds,
                                             EvaluateBuyPrice};
inline constexpr ItemFamily kSellPriceItem = {ItemFamily::Ending::kOptionalZero, TradeNeeds,
                                              EvaluateSellPrice};

/// The count of the form's bars.
int32_t& BarsOfForm(History& needs, SeriesForm form);

/// How many bars a value at the offset reads that looks `history` bars back: history + 1 -
/// offset, History::kAll where that is too many.
int32_t BarsRead(int64_t history, int32_t offset);

}  // namespace orin::analysis
