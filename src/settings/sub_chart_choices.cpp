#include <array>

#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::array kSubCharts = {
    SettingChoice{0, "０：なし"},
    SettingChoice{1, "１：ＲＳＩチャート"},
    SettingChoice{2, "２：ボリュームレシオ"},
    SettingChoice{3, "３：ストキャスティクス"},
    SettingChoice{4, "４：ＲＣＩチャート"},
    SettingChoice{5, "５：かぎ足チャート"},
    SettingChoice{6, "６：ポイント＆フィギュア"},
    SettingChoice{7, "７：変化率相関チャート"},
    SettingChoice{8, "８：逆ウォッチチャート"},
    SettingChoice{9, "９：出来高チャート"},
    SettingChoice{10, "１０：一目均衡表チャート"},
    SettingChoice{11, "１１：ボリンジャーバンド"},
    SettingChoice{12, "１２：パラボリック"},
    SettingChoice{13, "１３：出来高対応チャート"},
    SettingChoice{14, "１４：日中足チャート"},
    SettingChoice{15, "１５：移動平均乖離チャート"},
    SettingChoice{16, "１６：ダウ指数乖離チャート"},
    SettingChoice{17, "１７：さやチャート"},
    SettingChoice{18, "１８：株価比率チャート"},
    SettingChoice{19, "１９：オリジナルチャート"},
    SettingChoice{20, "２０：オリジナルチャート２"},
    SettingChoice{21, "２１：オリジナルチャート３"},
    SettingChoice{22, "２２：複合チャート１"},
    SettingChoice{23, "２３：複合チャート２"},
    SettingChoice{24, "２４：複合チャート３"},
    SettingChoice{25, "２５：複合チャート４"},
    SettingChoice{26, "２６：複合チャート５"},
    SettingChoice{27, "２７：複合チャート６"},
};

}  // namespace

std::span<const SettingChoice> SubChartChoices() { return kSubCharts; }

}  // namespace orin::settings
