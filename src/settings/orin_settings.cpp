#include "settings/orin_settings.h"

#include <array>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kStateChoices = {
    SettingChoice{0, "０：標準の大きさ"},
    SettingChoice{1, "１：最小化"},
    SettingChoice{2, "２：最大化"},
};
constexpr SettingForm kCoordinate = Number(-100000, 100000);
constexpr SettingForm kLength = Number(0, 100000);

}  // namespace

const KeyTable<OrinSettings>& OrinTable() {
  using Orin = OrinSettings;
  static const KeyTable<Orin> table{
      "orin.ini",
      "ORIN",
      {{"メイン画面",
        {{"画面の位置と大きさ",
          {{"WindowState", &Orin::window_state, "0", Choice(kStateChoices), "メイン画面の状態",
            "メイン画面を開くときの状態です。終了するときに書き換えられます。"},
           {"MdiFormTop", &Orin::window_top, "0", kCoordinate, "上端の位置",
            "メイン画面の上端の位置（ピクセル）です。終了するときに書き換えられます。"},
           {"MdiFormLeft", &Orin::window_left, "0", kCoordinate, "左端の位置",
            "メイン画面の左端の位置（ピクセル）です。終了するときに書き換えられます。"},
           {"MdiFormWidth", &Orin::window_width, "0", kLength, "幅",
            "メイン画面の幅（ピクセル）です。０なら画面に合わせて決めます。"},
           {"MdiFormHeight", &Orin::window_height, "0", kLength, "高さ",
            "メイン画面の高さ（ピクセル）です。０なら画面に合わせて決めます。"}}},
         {"起動画面とチャート",
          {{"LogoPicture", &Orin::logo_picture, "bmp\\orin.bmp", File(), "ロゴの絵",
            "ロゴとして表示する画像ファイルです。"},
           {"Chart1Hiritu", &Orin::main_chart_percent, "65", Number(10, 90), "メインチャートの高さ",
            "チャート画面のうちメインチャートの高さの割合（％、１０～９０）です。"},
           {"ChartList", &Orin::opens_with_list, "1", Check(), "データ一覧の表示",
            "チャート画面を開いたとき、データ一覧も表示します。"}}}}}}};
  return table;
}

OrinSettings ReadOrin(const base::ProfileFile& profile) { return ReadGroup(profile, OrinTable()); }

void WriteOrin(base::ProfileFile& profile, const OrinSettings& settings) {
  WriteGroup(profile, OrinTable(), settings);
}

}  // namespace orin::settings
