#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "store/stock_master.h"

namespace orin::screening {

/// Which stocks an analysis looks at ("分析上場市場").
enum class MarketChoice {
  kAll,             // 全銘柄
  kNewYork,         // ＮＹ市場銘柄: listing code 1
  kNasdaq,          // ＮＡ市場銘柄: listing code 2
  kOther,           // 他市場銘柄: listing code 3
  kNyse,            // ＮＹＳＥ銘柄: listing code 1, kind code 1
  kNasdaqNational,  // ＮａｓｄａｑＮＭ銘柄: listing code 2, kind code 1
  kNasdaqSmallCap,  // ＮａｓｄａｑＳＣ銘柄: listing code 2, kind code 2
  kOtherExchanges,  // 他取引所銘柄: listing code 3, any kind code but 9 (index)
};

/// nullopt for a text that names no choice.
std::optional<MarketChoice> ParseMarketChoice(std::string_view text);

/// As an analysis file names it.
std::string_view NameOf(MarketChoice choice);
/// In the order in which they are offered.
std::span<const MarketChoice> MarketChoices();

bool Matches(MarketChoice choice, const store::StockRecord& stock);

}  // namespace orin::screening
