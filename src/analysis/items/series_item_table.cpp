#include "analysis/items/item_families.h"

namespace orin::analysis {

namespace {

constexpr const ItemFamily* kSeries = &kSeriesItems;

// The weekly label counts 日, unlike those of its siblings.
constexpr ItemEntry kMinusEnergy = {.name = "マイナスエネルギー",
                                    .family = kSeries,
                                    .labels = {"マイナスエネルギーを合計する日数"},
                                    .indicator = "minus_energy",
                                    .weekly_label = "週間マイナスエネルギーを合計する日数"};

// Names and labels that 日 stands in must suit the rule that turns it into 週 and 月.
constexpr ItemEntry kSeriesRows[] = {
    {"始値", kSeries, {}, "open"},
    {"高値", kSeries, {}, "high"},
    {"安値", kSeries, {}, "low"},
    {"終値", kSeries, {}, "close"},
    {"出来高", kSeries, {}, "volume"},
    {"前日比", kSeries, {}, "close_change", 0, NameRule::kBare},
    {"始値合計", kSeries, {"始値合計する日数"}, "open_sum"},
    {"高値合計", kSeries, {"高値合計する日数"}, "high_sum"},
    {"安値合計", kSeries, {"安値合計する日数"}, "low_sum"},
    {"終値合計", kSeries, {"終値合計する日数"}, "close_sum"},
    {"出来高合計", kSeries, {"出来高合計する日数"}, "volume_sum"},

    {"移動平均", kSeries, {"移動平均日数"}, "moving_average"},
    {"移動平均乖離率", kSeries, {"移動平均乖離日数"}, "deviation_rate"},
    {"最高値", kSeries, {"最高値チェック期間"}, "highest_high"},
    {"最高値出来高", kSeries, {"最高値出来高チェック期間"}, "highest_high_volume"},
    {"最安値", kSeries, {"最安値チェック期間"}, "lowest_low"},
    {"最安値出来高", kSeries, {"最安値出来高チェック期間"}, "lowest_low_volume"},
    {"終値最高値", kSeries, {"終値最高値チェック期間"}, "highest_close"},
    {"終値最安値", kSeries, {"終値最安値チェック期間"}, "lowest_close"},
    {"出来高最大値", kSeries, {"最大値チェック期間"}, "highest_volume"},
    {"出来高最小値", kSeries, {"最小値チェック期間"}, "lowest_volume"},
    {"出来高合計最大値",
     kSeries,
     {"出来高合計する日数", "最大値チェック期間"},
     "highest_volume_sum"},
    {"出来高合計最小値",
     kSeries,
     {"出来高合計する日数", "最小値チェック期間"},
     "lowest_volume_sum"},
    {"ＲＣＩ", kSeries, {"ＲＣＩ日数"}, "rci"},
    {"ＲＳＩ", kSeries, {"ＲＳＩ日数"}, "rsi"},
    {"ＶＲ", kSeries, {"ＶＲ日数"}, "volume_ratio"},
    {"％Ｋ", kSeries, {"％Ｋ日数"}, "stochastic_k"},
    {"％Ｄ", kSeries, {"％Ｋ日数", "％Ｄ日数"}, "stochastic_d"},
    {"かぎ足値",
     kSeries,
     {"かぎ足日数", "かぎ足率", "転換点(直前の転換点は－１を指定）"},
     "kagi_value"},
    {"かぎ足転換数", kSeries, {"かぎ足日数", "かぎ足率"}, "kagi_turns"},
    {"基準値", kSeries, {"基準日数"}, "base_line"},
    {"転換値", kSeries, {"転換日数"}, "conversion_line"},
    {"先行スパン１", kSeries, {"基準日数", "転換日数", "先行日数"}, "leading_span_1"},
    {"先行スパン２", kSeries, {"先行日数", "先行スパン２日数"}, "leading_span_2"},
    {"出来高比率", kSeries, {"出来高比率日数"}, "volume_share"},
    {"出来高比率合計", kSeries, {"出来高比率合計する日数"}, "volume_share_sum"},
    {"株価上昇日出来高合計", kSeries, {"株価上昇日出来高合計する日数"}, "volume_of_rises"},
    {"株価下降日出来高合計", kSeries, {"株価下降日出来高合計する日数"}, "volume_of_falls"},
    {"株価上昇日上昇幅合計", kSeries, {"株価上昇日上昇幅合計する日数"}, "sum_of_rises"},
    {"株価下降日下降幅合計", kSeries, {"株価下降日下降幅合計する日数"}, "sum_of_falls"},
    {"株価上昇日数", kSeries, {"株価上昇日数を求める日数"}, "count_of_rises"},
    {"株価下降日数", kSeries, {"株価下降日数を求める日数"}, "count_of_falls"},
    {"ボリンジャーバンド",
     kSeries,
     {"移動平均日数", "移動平均からの偏差（－３～３を指定）"},
     "bollinger"},
    {"最高値経過日数", kSeries, {"最高値チェック期間"}, "highest_high_age"},
    {"最安値経過日数", kSeries, {"最安値チェック期間"}, "lowest_low_age"},
    {"ＭＡＣＤ", kSeries, {"ＥＭＡ１日数", "ＥＭＡ２日数"}, "macd"},
    {"ＰＤＩ", kSeries, {"ＰＤＩ日数"}, "plus_di"},
    {"ＭＤＩ", kSeries, {"ＭＤＩ日数"}, "minus_di"},
    {"ＡＤＸ", kSeries, {"ＡＤＸ期間日数", "ＰＤＩ，ＭＤＩ日数"}, "adx"},
    {"ＳＡＲ",
     kSeries,
     {"ＡＦ初期値（１／１００単位）", "ＡＦ増加値（１／１００単位）",
      "ＡＦ最大値（１／１００単位）"},
     "parabolic_sar"},
    {"強エネルギー", kSeries, {"強エネルギーを合計する日数"}, "strong_energy"},
    {"弱エネルギー", kSeries, {"弱エネルギーを合計する日数"}, "weak_energy"},
    {"強人気", kSeries, {"強人気を合計する日数"}, "strong_popularity"},
    {"弱人気", kSeries, {"弱人気を合計する日数"}, "weak_popularity"},
    {"プラスエネルギー", kSeries, {"プラスエネルギーを合計する日数"}, "plus_energy"},
    kMinusEnergy,
    {"平均株価",
     kSeries,
     {"移動平均日数（２～１００）", "サンプル日数（５～２００）"},
     "mean_price",
     0,
     NameRule::kWithinPeriods},
    {"日付", kSeries, {}, "date", 0, NameRule::kPrefixOnly},
};

}  // namespace

std::span<const ItemEntry> SeriesItems() { return kSeriesRows; }

}  // namespace orin::analysis
