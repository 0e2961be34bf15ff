#include "analysis/items/item_families.h"

namespace orin::analysis {

namespace {

constexpr const ItemFamily* kSeries = &kSeriesItems;
constexpr const ItemFamily* kNumber = &kFunctionNumberItems;

constexpr ItemEntry Number(std::string_view name, int32_t number) {
  return {name, kNumber, {}, {}, number, NameRule::kDailyOnly};
}

// The order is that of the condition editor; nothing else depends on it. Names that 日 stands in
// must suit the rule that turns it into 週 and 月.
constexpr ItemEntry kItems[] = {
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
    {"ＲＳＩ", kSeries, {"ＲＳＩ日数"}, "rsi"},
    {"ＶＲ", kSeries, {"ＶＲ日数"}, "volume_ratio"},
    {"％Ｋ", kSeries, {"％Ｋ日数"}, "stochastic_k"},
    {"％Ｄ", kSeries, {"％Ｋ日数", "％Ｄ日数"}, "stochastic_d"},
    {"株価上昇日出来高合計", kSeries, {"株価上昇日出来高合計する日数"}, "volume_of_rises"},
    {"株価下降日出来高合計", kSeries, {"株価下降日出来高合計する日数"}, "volume_of_falls"},
    {"株価上昇日上昇幅合計", kSeries, {"株価上昇日上昇幅合計する日数"}, "sum_of_rises"},
    {"株価下降日下降幅合計", kSeries, {"株価下降日下降幅合計する日数"}, "sum_of_falls"},
    {"株価上昇日数", kSeries, {"株価上昇日数を求める日数"}, "count_of_rises"},
    {"株価下降日数", kSeries, {"株価下降日数を求める日数"}, "count_of_falls"},
    {"最高値経過日数", kSeries, {"最高値チェック期間"}, "highest_high_age"},
    {"最安値経過日数", kSeries, {"最安値チェック期間"}, "lowest_low_age"},
    {"ＰＤＩ", kSeries, {"ＰＤＩ日数"}, "plus_di"},
    {"ＭＤＩ", kSeries, {"ＭＤＩ日数"}, "minus_di"},
    {"ＡＤＸ", kSeries, {"ＡＤＸ期間日数", "ＰＤＩ，ＭＤＩ日数"}, "adx"},
    {"日付", kSeries, {}, "date", 0, NameRule::kPrefixOnly},

    {"さや", &kSpreadItem, {}, {}, 0, NameRule::kDailyOnly},
    {"さや最大値", &kHighestSpreadItem, {"さや最大値チェック期間"}, {}, 0, NameRule::kDailyOnly},
    {"さや最小値", &kLowestSpreadItem, {"さや最小値チェック期間"}, {}, 0, NameRule::kDailyOnly},

    {"買い値", &kBuyPriceItem, {}, {}, 0, NameRule::kDailyOnly},
    {"売り値", &kSellPriceItem, {}, {}, 0, NameRule::kDailyOnly},

    Number("Ａｂｓ", 1),
    Number("Ａｔｎ", 2),
    Number("Ｃｏｓ", 3),
    Number("Ｅｘｐ", 4),
    Number("Ｆｉｘ", 5),
    Number("Ｉｎｔ", 6),
    Number("Ｌｏｇ", 7),
    Number("Ｓｇｎ", 8),
    Number("Ｓｉｎ", 9),
    Number("Ｓｑｒ", 10),
    Number("Ｔａｎ", 11),
};

}  // namespace

std::span<const ItemEntry> ItemCatalogue() { return kItems; }

}  // namespace orin::analysis
