#include <vector>

#include "analysis/items/item_families.h"

namespace orin::analysis {

namespace {

std::vector<ItemEntry> JoinGroups() {
  std::vector<ItemEntry> all;
  for (const ItemGroup& group : ItemGroups()) {
    all.insert(all.end(), group.rows.begin(), group.rows.end());
  }
  return all;
}

}  // namespace

std::span<const ItemGroup> ItemGroups() {
  static const std::vector<ItemGroup> groups = {
      {"株価と指標", SeriesItems()},       {"株価と指標", LaggingItems()},
      {"信用残", CreditItems()},           {"さや", SpreadItems()},
      {"会社情報", CompanyItems()},        {"財務", FinancialItems()},
      {"ランキング", RankingItems()},      {"シミュレーションの売買", TradeItems()},
      {"数値関数", FunctionNumberItems()},
  };
  return groups;
}

std::span<const ItemEntry> ItemCatalogue() {
  static const std::vector<ItemEntry> all = JoinGroups();
  return all;
}

}  // namespace orin::analysis
