#include "screening/market_choice.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orin::screening {

namespace {

constexpr int16_t kAny = -1;

struct Row {
  MarketChoice choice;
  std::string_view name;
  int16_t listing;
  int16_t kind;
  int16_t kind_left_out;
};

constexpr std::array<Row, 8> kRows = {{
    {MarketChoice::kAll, "全銘柄", kAny, kAny, kAny},
    {MarketChoice::kNewYork, "ＮＹ市場銘柄", 1, kAny, kAny},
    {MarketChoice::kNasdaq, "ＮＡ市場銘柄", 2, kAny, kAny},
    {MarketChoice::kOther, "他市場銘柄", 3, kAny, kAny},
    {MarketChoice::kNyse, "ＮＹＳＥ銘柄", 1, store::kKindCommonStock, kAny},
    {MarketChoice::kNasdaqNational, "ＮａｓｄａｑＮＭ銘柄", 2, store::kKindCommonStock, kAny},
    {MarketChoice::kNasdaqSmallCap, "ＮａｓｄａｑＳＣ銘柄", 2, store::kKindSmallCap, kAny},
    {MarketChoice::kOtherExchanges, "他取引所銘柄", 3, kAny, store::kKindIndex},
}};

const Row& RowOf(MarketChoice choice) {
  return *std::find_if(kRows.begin(), kRows.end(),
                       [choice](const Row& r) { return r.choice == choice; });
}

bool Fits(int16_t wanted, int16_t found) { return wanted == kAny || wanted == found; }

}  // namespace

std::optional<MarketChoice> ParseMarketChoice(std::string_view text) {
  const auto row =
      std::find_if(kRows.begin(), kRows.end(), [text](const Row& r) { return r.name == text; });
  if (row == kRows.end()) return std::nullopt;
  return row->choice;
}

std::string_view NameOf(MarketChoice choice) { return RowOf(choice).name; }

std::span<const MarketChoice> MarketChoices() {
  static constexpr auto kChoices = [] {
    std::array<MarketChoice, kRows.size()> choices = {};
    for (size_t i = 0; i < kRows.size(); ++i) choices[i] = kRows[i].choice;
    return choices;
  }();
  return kChoices;
}

bool Matches(MarketChoice choice, const store::StockRecord& stock) {
  const Row& row = RowOf(choice);
  return Fits(row.listing, stock.listing) && Fits(row.kind, stock.kind) &&
         (row.kind_left_out == kAny || row.kind_left_out != stock.kind);
}

}  // namespace orin::screening
