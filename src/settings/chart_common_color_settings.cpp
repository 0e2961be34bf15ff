#include "settings/chart_common_color_settings.h"

#include "settings/palette.h"
#include "settings/setting_tables.h"

namespace orin::settings {

const KeyTable<ChartCommonColorSettings>& ChartCommonColorTable() {
  using Chart = ChartCommonColorSettings;
  static const KeyTable<Chart> table{
      "orin.ini",
      "ChartCommonColor",
      {{"チャート共通の色",
        {{"メインチャート",
          {{"chartbase_color", &Chart::ground, kBlack, Paint(), "背景の色",
            "チャートの背景の色です。"},
           {"chartchar_color", &Chart::text, kWhite, Paint(), "文字の色",
            "メインチャートの文字の色です。"},
           {"chartline_color", &Chart::lines, kGray, Paint(), "枠と目盛線の色",
            "メインチャートの枠と目盛線の色です。"},
           {"chartup_color", &Chart::rise, kLightRed, Paint(), "陽線の色",
            "終値が始値以上の足の色です。"},
           {"chartdown_color", &Chart::fall, kLightCyan, Paint(), "陰線の色",
            "終値が始値より安い足の色です。"},
           {"chartmoveline_color", &Chart::cross_hair, kWhite, Paint(), "カーソル線の色",
            "マウスの位置を示す線の色です。"},
           {"charttrendline_color", &Chart::trend_lines, kYellow, Paint(), "トレンドラインの色",
            "トレンドラインの色です。"}}},
         {"サブチャート",
          {{"chartsubchar_color", &Chart::sub_chart_text, kWhite, Paint(), "サブチャートの文字の色",
            "サブチャートの文字の色です。"},
           {"chartsubline_color", &Chart::sub_chart_lines, kGray, Paint(),
            "サブチャートの枠と目盛線の色", "サブチャートの枠と目盛線の色です。"},
           {"chartsinyouurizan_color", &Chart::credit_sales, kLightCyan, Paint(), "信用売り残の色",
            "信用取引の売り残の線の色です。"},
           {"chartsinyoukaizan_color", &Chart::credit_purchases, kLightRed, Paint(),
            "信用買い残の色", "信用取引の買い残の線の色です。"}}},
         {"データ一覧",
          {{"chartfixbase_color", &Chart::heading_ground, kSilver, Paint(), "見出しの背景の色",
            "データ一覧の見出しの背景の色です。"},
           {"chartfixchar_color", &Chart::heading_text, kBlack, Paint(), "見出しの文字の色",
            "データ一覧の見出しの文字の色です。"}}}}}}};
  return table;
}

ChartCommonColorSettings ReadChartCommonColor(const base::ProfileFile& profile) {
  return ReadGroup(profile, ChartCommonColorTable());
}

void WriteChartCommonColor(base::ProfileFile& profile, const ChartCommonColorSettings& settings) {
  WriteGroup(profile, ChartCommonColorTable(), settings);
}

}  // namespace orin::settings
