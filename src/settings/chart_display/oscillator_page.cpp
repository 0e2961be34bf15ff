#include <array>

#include "settings/chart_display/display_rows.h"

namespace orin::settings {

namespace {

using Display = ChartDisplaySettings;

/// A sub-chart of two lines of one indicator.
struct LinePair {
  const char* stem;
  const char* name;
  std::array<PeriodLine, 2> Display::*lines;
  std::array<const char*, 2> periods;
};

constexpr std::array kPairs = {
    LinePair{"rsi", "ＲＳＩ", &Display::rsi, {"14", "32"}},
    LinePair{"dekidakavr", "ボリュームレシオ", &Display::volume_ratio, {"14", "32"}},
    LinePair{"rci", "ＲＣＩ", &Display::rci, {"14", "32"}},
    LinePair{"kairi", "移動平均乖離率", &Display::deviation, {"25", "75"}},
};
constexpr std::array kPairNumbers = {"１", "２"};
constexpr std::array kPairColors = {kLightGreen, kYellow};

DisplayHeading PairRows(const LinePair& pair) {
  DisplayHeading heading{pair.name, {}};
  for (size_t i = 0; i < kPairNumbers.size(); ++i) {
    const LineDefault line{pair.stem + std::to_string(i + 1),
                           std::string(pair.name) + kPairNumbers[i], "1", pair.periods[i],
                           kPairColors[i]};
    AddLineRows(line,
                PartOf(
                    pair.lines, [i](auto& lines) -> auto& { return lines[i]; }),
                heading);
  }
  return heading;
}

DisplayHeading StochasticsRows() {
  using Chart = StochasticsChart;
  const auto at = [](auto member) { return PartOf(&Display::stochastics, member); };
  return {"ストキャスティクス",
          {{"stochastics_check", at(&Chart::check), "1", Check(), "ストキャスティクスの表示",
            "ストキャスティクスのチャートを表示します。"},
           {"stochasticsk_number", at(&Chart::k_period), "5", kPeriod, "％Ｋの期間",
            "％Ｋを計算する足の数（１～１０００）です。"},
           {"stochasticsd_number", at(&Chart::d_period), "3", kPeriod, "％Ｄの期間",
            "％Ｄを計算する足の数（１～１０００）です。"},
           {"stochasticsk_color", at(&Chart::k_color), kLightGreen, Paint(), "％Ｋの色",
            "％Ｋの線の色です。"},
           {"stochasticsd_color", at(&Chart::d_color), kYellow, Paint(), "％Ｄの色",
            "％Ｄの線の色です。"}}};
}

DisplayHeading InverseWatchRows() {
  DisplayHeading heading{"逆ウォッチ", {}};
  AddLineRows({"reverse", "逆ウォッチ", "1", "25", kLightGreen}, &Display::inverse_watch, heading);
  return heading;
}

DisplayHeading CorrelationRows() {
  using Chart = CorrelationChart;
  static constexpr std::array kDataChoices = {
      SettingChoice{1, "１：日足"},
      SettingChoice{2, "２：週足"},
      SettingChoice{3, "３：月足"},
  };
  const auto at = [](auto member) { return PartOf(&Display::correlation, member); };
  return {"変化率相関",
          {{"correlation_check", at(&Chart::check), "1", Check(), "変化率相関の表示",
            "変化率相関チャートを表示します。"},
           {"correlation_color", at(&Chart::color), kLightGreen, Paint(), "相関の線の色",
            "軸と相関の線の色です。"},
           {"correlationplot_color", at(&Chart::plot_color), kYellow, Paint(), "点の色",
            "変化率の点の色です。"},
           {"correlationplot_number", at(&Chart::plot_count), "100", kPeriod, "点の数",
            "表示する点の数（１～１０００）です。"},
           {"correlationplot_datatype", at(&Chart::data_type), "2", Choice(kDataChoices),
            "変化率の足", "変化率を求める足の種類です。"},
           {"correlationplot_idouheikin", at(&Chart::average), "6", kPeriod, "移動平均の期間",
            "変化率を求める前に株価をならす足の数（１～１０００）です。"},
           {"correlation_meigaracode", at(&Chart::stock_code), "^DJI", Stock(), "相手の銘柄コード",
            "変化率を比べる相手の銘柄コード（８文字まで）です。"}}};
}

}  // namespace

DisplayPage OscillatorPage() {
  DisplayPage page{"サブチャート（オシレーター）", {}};
  for (const LinePair& pair : kPairs) page.headings.push_back(PairRows(pair));
  page.headings.push_back(StochasticsRows());
  page.headings.push_back(InverseWatchRows());
  page.headings.push_back(CorrelationRows());
  return page;
}

}  // namespace orin::settings
