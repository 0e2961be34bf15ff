#include <algorithm>
#include <array>

#include "analysis/items/name_folding.h"
#include "chart/subcharts/sub_chart.h"

namespace orin::chart {

namespace {

using store::BarPeriod;

constexpr std::array kRows = {
    SubChart{1, "rsi", "ＲＳＩチャート", RsiChart, 0, {}},
    SubChart{2, "vr", "ボリュームレシオ", VolumeRatioChart, 0, {}},
    SubChart{3, "stochastics", "ストキャスティクス", StochasticsChart, 0, {}},
    SubChart{4, "rci", "ＲＣＩチャート", RciChart, 0, {}},
    SubChart{5, "kagi", "かぎ足チャート", KagiChart, 0, {}},
    SubChart{6, "pf", "ポイント＆フィギュア", PointAndFigureChart, 0, {}},
    SubChart{7, "correlation", "変化率相関チャート", CorrelationChart, 0, {}},
    SubChart{8, "inversewatch", "逆ウォッチチャート", InverseWatchChart, 0, {}},
    SubChart{9, "volume", "出来高チャート", VolumeChart, 0, {}},
    SubChart{10, "ichimoku", "一目均衡表チャート", IchimokuChart, 0, {}},
    SubChart{11, "bollinger", "ボリンジャーバンド", BollingerChart, 0, {}},
    SubChart{12, "parabolic", "パラボリック", ParabolicChart, 0, {}},
    SubChart{13, "volumebyprice", "出来高対応チャート", VolumeByPriceChart, 0, {}},
    SubChart{14, "intraday", "日中足チャート", IntradayChart, 0, {}},
    SubChart{15, "deviation", "移動平均乖離チャート", DeviationChart, 0, {}},
    SubChart{16, "dowdeviation", "ダウ指数乖離チャート", IndexDeviationChart, 0, {}},
    SubChart{17, "spread", "さやチャート", SpreadChart, 0, {}},
    SubChart{18, "ratio", "株価比率チャート", RatioChart, 0, {}},
    SubChart{19, "original1", "オリジナルチャート", OriginalChart, 0, {}},
    SubChart{20, "original2", "オリジナルチャート２", OriginalChart, 1, {}},
    SubChart{21, "original3", "オリジナルチャート３", OriginalChart, 2, {}},
    SubChart{22, "composite1", "複合チャート１", DayCompositeChart, 0, BarPeriod::kDay},
    SubChart{23, "composite2", "複合チャート２", DayCompositeChart, 1, BarPeriod::kDay},
    SubChart{24, "composite3", "複合チャート３", DayCompositeChart, 2, BarPeriod::kDay},
    SubChart{25, "composite4", "複合チャート４", DayCompositeChart, 3, BarPeriod::kDay},
    SubChart{26, "composite5", "複合チャート５", DayCompositeChart, 4, BarPeriod::kDay},
    SubChart{27, "composite6", "複合チャート６", DayCompositeChart, 5, BarPeriod::kDay},
    SubChart{22, "composite1", "週足複合チャート１", WeekCompositeChart, 0, BarPeriod::kWeek},
    SubChart{23, "composite2", "週足複合チャート２", WeekCompositeChart, 1, BarPeriod::kWeek},
    SubChart{24, "composite3", "週足複合チャート３", WeekCompositeChart, 2, BarPeriod::kWeek},
    SubChart{25, "composite4", "週足複合チャート４", WeekCompositeChart, 3, BarPeriod::kWeek},
    SubChart{26, "composite5", "週足複合チャート５", WeekCompositeChart, 4, BarPeriod::kWeek},
    SubChart{27, "composite6", "週足複合チャート６", WeekCompositeChart, 5, BarPeriod::kWeek},
    SubChart{22, "composite1", "月足複合チャート１", MonthCompositeChart, 0, BarPeriod::kMonth},
    SubChart{23, "composite2", "月足複合チャート２", MonthCompositeChart, 1, BarPeriod::kMonth},
    SubChart{24, "composite3", "月足複合チャート３", MonthCompositeChart, 2, BarPeriod::kMonth},
    SubChart{25, "composite4", "月足複合チャート４", MonthCompositeChart, 3, BarPeriod::kMonth},
    SubChart{26, "composite5", "月足複合チャート５", MonthCompositeChart, 4, BarPeriod::kMonth},
    SubChart{27, "composite6", "月足複合チャート６", MonthCompositeChart, 5, BarPeriod::kMonth},
};

bool IsFor(const SubChart& chart, BarPeriod period) {
  return !chart.period || *chart.period == period;
}

}  // namespace

std::span<const SubChart> SubCharts() { return kRows; }

const SubChart* FindSubChart(int32_t number, BarPeriod period) {
  const auto* found = std::ranges::find_if(
      kRows, [&](const SubChart& chart) { return chart.number == number && IsFor(chart, period); });
  return found == kRows.end() ? nullptr : found;
}

const SubChart* FindSubChart(std::string_view typed, BarPeriod period) {
  const std::string folded = analysis::FoldName(typed);
  const SubChart* of_other_bars = nullptr;
  for (const SubChart& chart : kRows) {
    const bool is_meant = folded == analysis::FoldName(chart.key) ||
                          folded == analysis::FoldName(chart.name) ||
                          folded == std::to_string(chart.number);
    if (!is_meant) continue;
    if (IsFor(chart, period)) return &chart;
    if (of_other_bars == nullptr) of_other_bars = &chart;
  }
  return of_other_bars;
}

int32_t FutureBars(const SubChart& chart, const settings::ChartDisplaySettings& display) {
  const bool is_ichimoku = chart.make == IchimokuChart && display.ichimoku.check;
  return is_ichimoku ? std::max(0, display.ichimoku.leading1.period - 1) : 0;
}

}  // namespace orin::chart
