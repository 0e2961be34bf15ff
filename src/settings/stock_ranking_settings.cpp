#include "settings/stock_ranking_settings.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

using Ranking = StockRankingSettings;

constexpr std::array kSlotChoices = {
    SettingChoice{1, "１：ランキング１"}, SettingChoice{2, "２：ランキング２"},
    SettingChoice{3, "３：ランキング３"}, SettingChoice{4, "４：ランキング４"},
    SettingChoice{5, "５：ランキング５"}, SettingChoice{6, "６：ランキング６"},
    SettingChoice{7, "７：ランキング７"},
};
constexpr std::array kOrderChoices = {
    SettingChoice{0, "０：大きい順"},
    SettingChoice{1, "１：小さい順"},
};

struct SlotDefault {
  const char* label;
  const char* analysis;
  const char* title;
};

constexpr std::array<SlotDefault, Ranking::kSlots> kSlotDefaults = {{
    {"出来高", "出来高(0)", "出来高ランキング"},
    {"前日比率", "終値(0) * 100 / 終値(-1) - 100", "前日比率ランキング"},
    {"乖離率", "移動平均乖離率(25,0)", "移動平均乖離率ランキング"},
    {"ＰＥＲ", "株価収益率", "株価収益率（ＰＥＲ）ランキング"},
    {"", "", ""},
    {"", "", ""},
    {"", "", ""},
}};

KeyHeading<Ranking> SlotRows(size_t i) {
  const std::string number = std::to_string(i + 1);
  const SlotDefault& defaults = kSlotDefaults[i];
  using Slot = decltype(Ranking::slots)::value_type;
  return {std::string(kSlotChoices[i].text.substr(std::string_view("１：").size())),
          {{"rankkoumoku" + number, Numbered(&Ranking::slots, i, &Slot::label), defaults.label,
            Text(), "項目名", "一覧の列の見出しです。空ならこの順位は使いません。"},
           {"rankanalysis" + number, Numbered(&Ranking::slots, i, &Slot::analysis),
            defaults.analysis, Expression(), "式", "銘柄の順位を決める値の式です。"},
           {"ranktitle" + number, Numbered(&Ranking::slots, i, &Slot::title), defaults.title,
            Text(), "題名", "ランキングの題名です。"}}};
}

KeyTable<Ranking> MakeRankingTable() {
  KeyPage<Ranking> page{"ランキング", {}};
  for (size_t i = 0; i < Ranking::kSlots; ++i) page.headings.push_back(SlotRows(i));
  page.headings.push_back(
      {"並べ方と保存",
       {{"ranksortkey", &Ranking::sort_slot, "1", Choice(kSlotChoices), "並べ替えの項目",
         "ランキングの一覧を並べ替える項目です。"},
        {"ranksortarray", &Ranking::sort_direction, "0", Choice(kOrderChoices), "並べ替えの順",
         "ランキングの一覧の並び順です。"},
        {"rankmaxfilecount", &Ranking::kept_files, "100", Number(1, 999), "残すファイルの数",
         "過去のランキングを何日分残すか（１～９９９）です。"},
        {"rankmaxcsvcount", &Ranking::csv_stocks, "100", Number(1, 99999), "ＣＳＶの銘柄数",
         "ＣＳＶに書き出す上位の銘柄の数（１～９９９９９）です。"}}});
  return {"orin.ini", "StockRanking", {std::move(page)}};
}

}  // namespace

const KeyTable<StockRankingSettings>& StockRankingTable() {
  static const KeyTable<Ranking> table = MakeRankingTable();
  return table;
}

StockRankingSettings ReadStockRanking(const base::ProfileFile& profile) {
  return ReadGroup(profile, StockRankingTable());
}

void WriteStockRanking(base::ProfileFile& profile, const StockRankingSettings& settings) {
  WriteGroup(profile, StockRankingTable(), settings);
}

}  // namespace orin::settings
