#include <array>

#include "settings/chart_display/display_rows.h"

namespace orin::settings {

namespace {

using Display = ChartDisplaySettings;

struct IchimokuDefault {
  const char* stem;
  const char* name;
  IchimokuLine IchimokuChart::*line;
  const char* period;
  const char* color;
};

constexpr std::array kIchimokuLines = {
    IchimokuDefault{"ichimokukijyun", "基準線", &IchimokuChart::base_line, "26", kLightGreen},
    IchimokuDefault{"ichimokutenkan", "転換線", &IchimokuChart::conversion, "9", kYellow},
    IchimokuDefault{"ichimokusenkou1", "先行スパン１", &IchimokuChart::leading1, "26", kLightRed},
    IchimokuDefault{"ichimokusenkou2", "先行スパン２", &IchimokuChart::leading2, "52", kLightCyan},
    IchimokuDefault{"ichimokuchikou", "遅行スパン", &IchimokuChart::lagging, "26", kLightMagenta},
};

DisplayHeading IchimokuRows() {
  DisplayHeading heading{"一目均衡表", {}};
  heading.rows.push_back({"ichimoku_check", PartOf(&Display::ichimoku, &IchimokuChart::check), "1",
                          Check(), "一目均衡表の表示", "一目均衡表のチャートを表示します。"});
  for (const IchimokuDefault& line : kIchimokuLines) {
    const std::string stem = line.stem;
    const std::string name = line.name;
    const auto place = PartOf(&Display::ichimoku, line.line);
    heading.rows.push_back({stem + "_number", PartOf(place, &IchimokuLine::period), line.period,
                            kPeriod, name + "の期間", name + "に使う足の数（１～１０００）です。"});
    heading.rows.push_back({stem + "_color", PartOf(place, &IchimokuLine::color), line.color,
                            Paint(), name + "の色", name + "の線の色です。"});
  }
  return heading;
}

DisplayHeading BollingerRows() {
  using Chart = BollingerChart;
  constexpr std::array kNames = {"±１σ", "±２σ", "±３σ"};
  constexpr std::array kColors = {kYellow, kLightRed, kLightMagenta};
  const auto at = [](auto member) { return PartOf(&Display::bollinger, member); };
  DisplayHeading heading{
      "ボリンジャーバンド",
      {{"bollinger_check", at(&Chart::check), "1", Check(), "ボリンジャーバンドの表示",
        "ボリンジャーバンドのチャートを表示します。"},
       {"bollinger_number", at(&Chart::period), "25", kPeriod, "移動平均の期間",
        "中心の移動平均と標準偏差を計算する足の数（１～１０００）です。"},
       {"bollinger_color", at(&Chart::color), kLightGreen, Paint(), "移動平均の色",
        "中心の移動平均の線の色です。"}}};
  for (size_t i = 0; i < kNames.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    const std::string name = kNames[i];
    const auto band = PartOf(
        at(&Chart::bands), [i](auto& bands) -> auto& { return bands[i]; });
    heading.rows.push_back({"bollinger_check" + number, PartOf(band, &BollingerBand::check), "1",
                            Check(), name + "の表示", name + "の二本の線を表示します。"});
    heading.rows.push_back({"bollingerhensa" + number + "_color",
                            PartOf(band, &BollingerBand::color), kColors[i], Paint(), name + "の色",
                            name + "の線の色です。"});
  }
  return heading;
}

DisplayHeading KagiRows() {
  using Chart = KagiChart;
  const auto at = [](auto member) { return PartOf(&Display::kagi, member); };
  return {"かぎ足",
          {{"key_check", at(&Chart::check), "1", Check(), "かぎ足の表示",
            "かぎ足チャートを表示します。"},
           {"key_teiritu", at(&Chart::rate), "7", Number(1, 100), "転換する率",
            "線が転換する株価の変化率（％、１～１００の整数）です。"},
           {"key_color", at(&Chart::color), kLightGreen, Paint(), "かぎ足の色",
            "かぎ足の線の色です。"}}};
}

DisplayHeading PointAndFigureRows() {
  using Chart = PointAndFigureChart;
  const auto at = [](auto member) { return PartOf(&Display::point_and_figure, member); };
  return {"ポイント＆フィギュア",
          {{"pointandfigure_check", at(&Chart::check), "1", Check(), "ポイント＆フィギュアの表示",
            "ポイント＆フィギュアのチャートを表示します。"},
           {"pointandfigure_teiritu", at(&Chart::rate), "1", Number(1, 100), "一枠の値幅率",
            "一枠の値幅の株価に対する率（％、１～１００の整数）です。"},
           {"pointandfigure_reversecount", at(&Chart::reversal_boxes), "3", Number(1, 100),
            "転換の枠数", "転換に要る枠の数（１～１００）です。"}}};
}

DisplayHeading ParabolicRows() {
  using Chart = ParabolicChart;
  const auto at = [](auto member) { return PartOf(&Display::parabolic, member); };
  return {"パラボリック",
          {{"sarafinitial", at(&Chart::initial), "0.02", Rate(0.0001, 1), "加速因子の初期値",
            "加速因子（ＡＦ）の初めの値（０．０００１～１）です。"},
           {"sarafupcount", at(&Chart::step), "0.01", Rate(0, 1), "加速因子の増加値",
            "高値や安値を更新するたびに加速因子に加える値（０～１）です。"},
           {"sarafmax", at(&Chart::maximum), "0.2", Rate(0.0001, 1), "加速因子の最大値",
            "加速因子の最大の値（０．０００１～１）です。"}}};
}

}  // namespace

DisplayPage PricePatternPage() {
  return {"サブチャート（株価の動き）",
          {IchimokuRows(), BollingerRows(), ParabolicRows(), KagiRows(), PointAndFigureRows()}};
}

}  // namespace orin::settings
