#include "settings/chart_action_settings.h"

#include <array>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kSecondChartChoices = {
    SettingChoice{0, "０：サブチャート"},   SettingChoice{1, "１：週足チャート"},
    SettingChoice{2, "２：月足チャート"},   SettingChoice{3, "３：第二銘柄のチャート"},
    SettingChoice{4, "４：日中足チャート"}, SettingChoice{5, "５：表示しない"},
};
constexpr std::array kMoveChoices = {
    SettingChoice{0, "０：小さな移動"},
    SettingChoice{1, "１：大きな移動"},
    SettingChoice{2, "２：一画面ずつ"},
};
constexpr std::array kRevisionChoices = {
    SettingChoice{0, "０：毎回たずねる"},
    SettingChoice{1, "１：分割後の株価にあわせる"},
    SettingChoice{2, "２：分割前の株価にあわせる"},
};
constexpr SettingForm kSeconds = Number(1, 3600);
constexpr SettingForm kBars = Number(1, 10000);

using Action = ChartActionSettings;

KeyHeading<Action> ViewRows() {
  return {"表示する足と移動",
          {{"veaw_number", &Action::shown_bars, "120", kBars, "表示する足の数",
            "チャートに一度に表示する足の数（１～１００００）です。"},
           {"veawday", &Action::fewest_shown_bars, "20", kBars, "表示する足の最小の数",
            "拡大したときに表示する足の最小の数（１～１００００）です。"},
           {"move_number", &Action::small_step, "1", kBars, "小さな移動の足の数",
            "一度の小さな移動で動く足の数（１～１００００）です。"},
           {"moveday", &Action::large_step, "20", kBars, "大きな移動の足の数",
            "一度の大きな移動で動く足の数（１～１００００）です。"},
           {"movetype_defalt", &Action::scroll_step, "0", Choice(kMoveChoices), "移動の種類",
            "左右の移動で動く大きさです。"},
           {"daymargin", &Action::free_bars, "3", Number(0, 500), "右側の余白",
            "最新の足の右に空ける足の数（０～５００）です。"},
           {"chartgappercent", &Action::free_height_percent, "5", Number(0, 50), "上下の余白",
            "株価の上と下に空ける高さの割合（％、０～５０）です。"}}};
}

KeyHeading<Action> SecondChartRows() {
  return {"第二チャート",
          {{"chart2_defalt", &Action::second_chart, "0", Choice(kSecondChartChoices),
            "第二チャートの内容", "チャート画面を開いたとき第二チャートに表示するものです。"},
           {"chartsub_select", &Action::sub_chart, "9", Choice(SubChartChoices()),
            "サブチャートの種類", "第二チャートに表示するサブチャートです。"},
           {"key_second_check", &Action::key_shows_second_stock, "1", Check(),
            "キーで第二銘柄を表示", "キーを押したとき、下の銘柄を第二銘柄として表示します。"},
           {"key_second_Text", &Action::key_second_stock, "^DJI", Stock(), "キーで表示する銘柄",
            "キーで第二銘柄として表示する銘柄コード（８文字まで）です。"}}};
}

KeyHeading<Action> ShownRows() {
  return {"表示するもの",
          {{"toolbar_check", &Action::shows_toolbar, "1", Check(), "ツールバー",
            "チャート画面にツールバーを表示します。"},
           {"statusbar_check", &Action::shows_status_bar, "1", Check(), "ステータスバー",
            "チャート画面にステータスバーを表示します。"},
           {"deleteshow_check", &Action::shows_delisted, "0", Check(), "上場廃止の銘柄",
            "上場廃止になった銘柄も表示できるようにします。"},
           {"current_check", &Action::marks_last_close, "1", Check(), "直近の株価の線",
            "最新の終値の高さに線を引きます。"},
           {"daily_hige_check", &Action::has_daily_shadows, "1", Check(), "日足のひげ",
            "日足のローソク足に、高値と安値のひげを付けます。"},
           {"dekidaka_zero_base_check", &Action::volume_from_zero, "1", Check(),
            "出来高の目盛を０から", "出来高の目盛を０から始めます。"},
           {"entryday_check", &Action::marks_trades, "1", Check(), "売買した日",
            "取引明細にある売買の日に印を付けます。"},
           {"entrydayplus_check", &Action::labels_trades, "0", Check(), "売買の株価と株数",
            "売買した日の印に、株価と株数を添えます。"},
           {"shownow_check", &Action::shows_running_day, "1", Check(), "当日の株価",
            "取引中の当日の株価を足として表示します。"}}};
}

KeyHeading<Action> SplitRows() {
  return {"株式分割",
          {{"bunkatsu_auto_check", &Action::adjusts_for_splits, "1", Check(), "自動で分割調整",
            "株価を読み込むとき、分割前の株価を分割後の株価に合わせます。"},
           {"bunkatsu_line_chart", &Action::marks_splits, "1", Check(), "分割した日の線",
            "株式分割の日に縦線を引きます。"},
           {"kabukarevisionoption", &Action::split_correction, "0", Choice(kRevisionChoices),
            "分割修正の方法", "株価の分割修正で、どちらの株価に合わせるかです。"}}};
}

KeyHeading<Action> ListRows() {
  return {"銘柄の切り替え",
          {{"adminimovetimer", &Action::stock_seconds, "5", kSeconds, "自動表示の間隔",
            "銘柄の自動表示で、一つの銘柄を表示する秒数（１～３６００）です。"},
           {"daymovetimer", &Action::day_seconds, "1", kSeconds, "日付の自動移動の間隔",
            "日付を自動で進めるとき、一日を表示する秒数（１～３６００）です。"},
           {"key_adm_make_check", &Action::key_adds_to_list, "0", Check(), "キーでリストに追加",
            "キーを押したとき、表示中の銘柄を銘柄リストに加えます。"},
           {"meigaralistshow_number", &Action::listed_stocks, "30", Number(1, 1000),
            "リストに表示する銘柄数", "銘柄のリストに一度に表示する銘柄の数（１～１０００）です。"},
           {"meigaramemory_number", &Action::remembered_stocks, "20", Number(1, 1000),
            "履歴に残す銘柄数", "表示した銘柄の履歴に残す銘柄の数（１～１０００）です。"}}};
}

}  // namespace

const KeyTable<ChartActionSettings>& ChartActionTable() {
  static const KeyTable<Action> table{
      "orin.ini",
      "ChartAction",
      {{"チャートの動作", {ViewRows(), SecondChartRows(), ShownRows(), SplitRows(), ListRows()}}}};
  return table;
}

ChartActionSettings ReadChartAction(const base::ProfileFile& profile) {
  return ReadGroup(profile, ChartActionTable());
}

void WriteChartAction(base::ProfileFile& profile, const ChartActionSettings& settings) {
  WriteGroup(profile, ChartActionTable(), settings);
}

}  // namespace orin::settings
