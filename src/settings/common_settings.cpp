#include "settings/common_settings.h"

#include <array>

#include "base/text.h"
#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

using Common = CommonSettings;

constexpr std::array kFormatChoices = {
    SettingChoice{0, "０：Ｓｔｏｃｋｄａｔ形式"},   SettingChoice{1, "１：Ｋｃ２０株価ボード形式"},
    SettingChoice{2, "２：Ｋｙａｓ形式"},           SettingChoice{3, "３：大和総研形式"},
    SettingChoice{4, "４：株価情報（hahaha）形式"}, SettingChoice{5, "５：kabuゲッティー形式"},
    SettingChoice{6, "６：Ｙａｈｏｏ形式"},
};
constexpr std::array kSeparatorChoices = {
    SettingChoice{0, "０：カンマ"},
    SettingChoice{1, "１：タブ"},
    SettingChoice{2, "２：空白"},
};
constexpr std::array kCompositeChoices = {
    SettingChoice{1, "１：複合チャート１"}, SettingChoice{2, "２：複合チャート２"},
    SettingChoice{3, "３：複合チャート３"}, SettingChoice{4, "４：複合チャート４"},
    SettingChoice{5, "５：複合チャート５"}, SettingChoice{6, "６：複合チャート６"},
};
constexpr SettingForm kColumn = Number(1, 100);
constexpr SettingForm kPrice = Rate(0, 999999999);

KeyPage<Common> AnalysisPage() {
  return {
      "株価分析",
      {{"株価分析",
        {{"AnalysisSystemFirstFile", &Common::first_price_file, "0", Number(0, 999),
          "先頭の価格ファイル",
          "株価分析で読み込む先頭の価格ファイルの番号（１～９９９）です。０なら自動で決めます。"},
         {"AnalysisGroupFile", &Common::analysis_group_file, "orin.chk", File(), "株価分析グループ",
          "株価分析で使う条件をまとめたグループファイルです。"},
         {"SearchMeigaraCode2Default", &Common::second_stock, "^DJI", Stock(),
          "第二銘柄の銘柄コード",
          "第二銘柄の項目を使う分析で初めに選ばれる銘柄コード（８文字まで）です。"}}},
       {"ランキング分析",
        {{"RankingSynchro", &Common::ranks_after_update, "0", Check(), "更新に続けて分析",
          "株価更新が終わったら、続けてランキング分析をします。"},
         {"RankErrDefault", &Common::unranked_value, "-999", Number(-999999999, 999999999),
          "求まらないときの値", "式の値が求まらない銘柄を並べるときの値（整数）です。"}}}}};
}

KeyPage<Common> UpdatePage() {
  return {"株価の更新と取得",
          {{"株価更新",
            {{"InputFormat", &Common::input_format, "6", Choice(kFormatChoices),
              "更新ファイルの形式", "株価更新で読み込むファイルの形式です。"},
             {"RondomUpdate", &Common::updates_from_files, "1", Check(), "株価更新を実行",
              "更新ファイルから株価を更新します。過去の日付への更新もできます。"},
             {"CsvUpdate", &Common::updates_from_csv, "0", Check(), "ＣＳＶ更新を実行",
              "銘柄ごとのＣＳＶファイルから株価を更新します。"},
             {"StockChange", &Common::archives_update_files, "1", Check(), "更新ファイルを残す",
              "読み込んだ更新ファイルを、日付の付いた名前で残します。"}}},
           {"株価の取得",
            {{"YahooKabugetAndUpdate", &Common::updates_after_download, "1", Check(),
              "取得に続けて更新", "株価の取得が終わったら、続けて株価更新をします。"},
             {"KabugetReserveTime", &Common::download_time, "11:00:00", Time(), "予約の時刻",
              "予約した株価の取得を始める時刻（時:分:秒）です。"},
             {"MonthNotGet", &Common::skips_monday_download, "0", Check(), "月曜日は取得しない",
              "予約した株価の取得を月曜日には行いません。"},
             {"DailyGetMeigaraFile", &Common::intraday_stocks_file, "patrol\\serial.txt", File(),
              "日中足の銘柄ファイル", "日中足データを取得する銘柄のリストです。"},
             {"DaytimeFilecount", &Common::intraday_files, "1", Number(1, 999),
              "日中足のファイル数", "日中足データを残すファイルの数（１～９９９）です。"}}},
           {"データサービスとホームページ",
            {{"DaiwaUserid", &Common::daiwa_user, "", Text(), "大和のユーザーＩＤ",
              "大和のデータサービスを利用するときのユーザーＩＤです。"},
             {"DaiwaPassword", &Common::daiwa_password, "", Secret(), "大和のパスワード",
              "大和のデータサービスを利用するときのパスワードです。"},
             {"StockWebSite", &Common::stock_web_site, "", Text(), "企業情報のアドレス",
              "企業情報のページのアドレスです。銘柄コードが後ろに付きます。空なら開きません。"},
             {"AccountWebSite", &Common::account_web_site, "", Text(), "決算情報のアドレス",
              "決算情報のページのアドレスです。銘柄コードが後ろに付きます。空なら開きません。"}}}}};
}

KeyPage<Common> TranslatePage() {
  return {"ほかの形式の株価ファイル",
          {{"ファイル",
            {{"TranslateDataFile", &Common::translate_data_file, "", File(), "変換するファイル",
              "ミルテの形式に変換する株価ファイルです。"},
             {"TranslateFirstLine", &Common::translate_first_line, "1", Number(1, 10000),
              "初めの銘柄の行", "初めの銘柄がある行の番号（１～１００００）です。"},
             {"TranslateSeparate", &Common::translate_separator, "0", Choice(kSeparatorChoices),
              "列の区切り", "列と列を区切る文字です。"},
             {"TranslateNikkeiCode", &Common::translate_index_code, "^DJI", Stock(),
              "指数の銘柄コード", "指数として読み込む銘柄のコード（８文字まで）です。"},
             {"TranslateDekidakaUnit", &Common::translate_volume_unit, "1", Number(1, 1000000),
              "出来高の単位", "ファイルの出来高の１が表す株数（１～１００００００）です。"}}},
           {"列の番号",
            {{"TranslateMeigaraCodeid", &Common::translate_code_column, "1", kColumn,
              "銘柄コードの列", "銘柄コードが左から何列目か（１～１００）です。"},
             {"TranslateHajimeneid", &Common::translate_open_column, "2", kColumn, "始値の列",
              "始値が左から何列目か（１～１００）です。"},
             {"TranslateTakaneid", &Common::translate_high_column, "3", kColumn, "高値の列",
              "高値が左から何列目か（１～１００）です。"},
             {"TranslateYasuneid", &Common::translate_low_column, "4", kColumn, "安値の列",
              "安値が左から何列目か（１～１００）です。"},
             {"TranslateOwarineid", &Common::translate_close_column, "5", kColumn, "終値の列",
              "終値が左から何列目か（１～１００）です。"},
             {"TranslateDekidakaid", &Common::translate_volume_column, "6", kColumn, "出来高の列",
              "出来高が左から何列目か（１～１００）です。"}}}}};
}

KeyPage<Common> ChartPage() {
  return {"チャートの初めの状態",
          {{"チャート画面",
            {{"Chart2Default", &Common::opens_second_chart, "1", Check(), "第二チャートの表示",
              "チャート画面を開いたとき、第二チャートも表示します。"},
             {"Chart2SubchartDefault", &Common::second_sub_chart, "9", Choice(SubChartChoices()),
              "第二チャートのサブチャート",
              "チャート画面を開いたとき第二チャートに表示するサブチャートです。"},
             {"Chart2DataDefault", &Common::lists_second_values, "1", Check(),
              "第二チャートのデータ一覧", "第二チャートの値もデータ一覧に表示します。"},
             {"ComplexchartDefault", &Common::daily_composite, "1", Choice(kCompositeChoices),
              "日足の複合チャート", "日足で初めに表示する複合チャートです。"},
             {"Complex2chartDefault", &Common::weekly_composite, "1", Choice(kCompositeChoices),
              "週足の複合チャート", "週足で初めに表示する複合チャートです。"},
             {"Complex3chartDefault", &Common::monthly_composite, "1", Choice(kCompositeChoices),
              "月足の複合チャート", "月足で初めに表示する複合チャートです。"},
             {"ShowTrendline", &Common::shows_trend_lines, "1", Check(), "トレンドラインの表示",
              "チャートにトレンドラインを表示します。"}}},
           {"株価の目盛の固定",
            {{"FixKabukaScale", &Common::has_fixed_scale, "0", Check(), "目盛の固定",
              "株価の目盛を、下の上限と下限の間に固定します。"},
             {"FixKabukaTakane", &Common::fixed_high, "0", kPrice, "目盛の上限",
              "固定する目盛の上端の株価（ドル）です。"},
             {"FixKabukaYasune", &Common::fixed_low, "0", kPrice, "目盛の下限",
              "固定する目盛の下端の株価（ドル）です。"},
             {"FixKabukaChart", &Common::fixes_main_chart, "1", Check(), "メインチャートで固定",
              "メインチャートの目盛を固定します。"},
             {"FixKabukaChart2", &Common::fixes_second_chart, "0", Check(), "第二チャートで固定",
              "第二チャートの目盛を固定します。"},
             {"FixKabukaWChart", &Common::fixes_weekly_charts, "0", Check(), "週足で固定",
              "週足のチャートの目盛を固定します。"},
             {"FixKabukaMChart", &Common::fixes_monthly_charts, "0", Check(), "月足で固定",
              "月足のチャートの目盛を固定します。"}}}}};
}

/// A number beyond 32 bits is the nearest one within.
void ReadAnyNumber(std::string_view text, int32_t& value) {
  if (ParseSetting(text, Number(INT32_MIN, INT32_MAX), value)) return;
  text = base::TrimBlanks(text);
  const bool is_negative = text.starts_with('-');
  if (is_negative) text.remove_prefix(1);
  const bool is_number = text.find_first_of("0123456789") != std::string_view::npos &&
                         text.find_first_not_of("0123456789.") == std::string_view::npos &&
                         text.find('.') == text.rfind('.');
  if (is_number) value = is_negative ? INT32_MIN : INT32_MAX;
}

}  // namespace

const KeyTable<CommonSettings>& CommonTable() {
  static const KeyTable<Common> table{
      "orin.ini", "Common", {AnalysisPage(), UpdatePage(), TranslatePage(), ChartPage()}};
  return table;
}

CommonSettings ReadCommon(const base::ProfileFile& profile) {
  Common settings = ReadGroup(profile, CommonTable());
  // A number that is no file's is told where it is used; another one would be read in silence.
  ReadAnyNumber(profile.Get("Common", "AnalysisSystemFirstFile", ""), settings.first_price_file);
  return settings;
}

void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings) {
  WriteGroup(profile, CommonTable(), settings);
}

}  // namespace orin::settings
