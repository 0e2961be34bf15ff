#include "settings/orin_simulation_settings.h"

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kTradeChoices = {
    SettingChoice{0, "０：買いから始める"},
    SettingChoice{1, "１：空売りから始める"},
};
constexpr std::array kStockChoices = {
    SettingChoice{0, "０：市場のすべての銘柄"},
    SettingChoice{1, "１：指定した銘柄"},
};
constexpr std::array kMarketChoices = {
    SettingChoice{0, "０：全市場"},
    SettingChoice{1, "１：ＮＹ市場"},
    SettingChoice{2, "２：ＮＡ市場"},
    SettingChoice{3, "３：他市場"},
};

constexpr const char* kGoldenCross =
    "移動平均(66,-1) >= 移動平均(22,-1) And  移動平均(66,0) <= 移動平均(22,0) ";
constexpr const char* kDeadCross =
    "移動平均(66,-1) <= 移動平均(22,-1) And  移動平均(66,0) >= 移動平均(22,0) "
    "Or 買い値 * 0.9 > 終値(0)";

}  // namespace

const KeyTable<OrinSimulationSettings>& OrinSimulationTable() {
  using Simulation = OrinSimulationSettings;
  const auto buy = [](size_t i) {
    return [i](auto& g) -> auto& { return g.buy_analysis[i]; };
  };
  const auto sale = [](size_t i) {
    return [i](auto& g) -> auto& { return g.sale_analysis[i]; };
  };
  static const KeyTable<Simulation> table{
      "orinsim.ini",
      "OrinSimulation",
      {{"シミュレーション",
        {{"対象",
          {{"sim_option", &Simulation::option, "0", Choice(kTradeChoices), "売買の順",
            "買ってから売るか、空売りしてから買い戻すかです。"},
           {"sim_analysis_option", &Simulation::stock_choice, "0", Choice(kStockChoices),
            "対象の銘柄", "シミュレーションする銘柄です。"},
           {"sim_jyoujyou", &Simulation::listing, "0", Choice(kMarketChoices), "対象の市場",
            "「市場のすべての銘柄」のときの市場です。"},
           {"sim_meigaracode", &Simulation::stock, "", Stock(), "銘柄コード",
            "「指定した銘柄」のときの銘柄コード（８文字まで）です。"},
           {"sim_meigaracode2", &Simulation::second_stock, "^DJI", Stock(), "第二銘柄の銘柄コード",
            "条件の第二銘柄の項目に使う銘柄コードです。"},
           {"sim_start_date", &Simulation::start_date, "1900/01/01", Day(), "開始日",
            "シミュレーションを始める日付です。"},
           {"sim_end_date", &Simulation::end_date, "2100/01/01", Day(), "終了日",
            "シミュレーションを終える日付です。"}}},
         {"買いの条件",
          {{"sim_buy_title", &Simulation::buy_title, "ゴールデンクロス", Text(), "買いの題名",
            "買いの条件の題名です。"},
           {"sim_buy_analysis", buy(0), kGoldenCross, Condition(), "買いの条件",
            "買う日の条件式です。"},
           {"sim_buy_analysis2", buy(1), "", Condition(), "買いの条件２",
            "買いの条件に加えて成り立つべき条件式です。空ならありません。"},
           {"sim_buy_analysis3", buy(2), "", Condition(), "買いの条件３",
            "買いの条件に加えて成り立つべき条件式です。空ならありません。"}}},
         {"売りの条件",
          {{"sim_sale_title", &Simulation::sale_title, "デッドクロス", Text(), "売りの題名",
            "売りの条件の題名です。"},
           {"sim_sale_analysis", sale(0), kDeadCross, Condition(), "売りの条件",
            "売る日の条件式です。"},
           {"sim_sale_analysis2", sale(1), "", Condition(), "売りの条件２",
            "売りの条件に加えて成り立つべき条件式です。空ならありません。"},
           {"sim_sale_analysis3", sale(2), "", Condition(), "売りの条件３",
            "売りの条件に加えて成り立つべき条件式です。空ならありません。"}}}}}}};
  return table;
}

OrinSimulationSettings ReadOrinSimulation(const base::ProfileFile& profile) {
  return ReadGroup(profile, OrinSimulationTable());
}

void WriteOrinSimulation(base::ProfileFile& profile, const OrinSimulationSettings& settings) {
  WriteGroup(profile, OrinSimulationTable(), settings);
}

}  // namespace orin::settings
