#include "shell/settings/common_settings.h"

#include <array>

#include "base/text.h"
#include "shell/settings/setting_tables.h"

namespace orin::shell {

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
        {{"AnalysisSystemFirstFile", &Common::analysis_system_first_file, "0", Number(0, 999),
          "先頭の価格ファイル",
          "株価分析で読み込む先頭の価格ファイルの番号（１～９９９）です。０なら自動で決めます。"},
         {"AnalysisGroupFile", &Common::analysis_group_file, "orin.chk", File(), "株価分析グループ",
          "株価分析で使う条件をまとめたグループファイルです。"},
         {"SearchMeigaraCode2Default", &Common::search_meigara_code2_default, "^DJI", Stock(),
          "第二銘柄の銘柄コード",
          "第二銘柄の項目を使う分析で初めに選ばれる銘柄コード（８文字まで）です。"}}},
       {"ランキング分析",
        {{"RankingSynchro", &Common::ranking_synchro, "0", Check(), "更新に続けて分析",
          "株価更新が終わったら、続けてランキング分析をします。"},
         {"RankErrDefault", &Common::rank_err_default, "-999", Number(-999999999, 999999999),
          "求まらないときの値", "式の値が求まらない銘柄を並べるときの値（整数）です。"}}}}};
}

KeyPage<Common> UpdatePage() {
  return {"株価の更新と取得",
          {{"株価更新",
            {{"InputFormat", &Common::input_format, "6", Choice(kFormatChoices),
              "更新ファイルの形式", "株価更新で読み込むファイルの形式です。"},
             {"RondomUpdate", &Common::rondom_update, "1", Check(), "株価更新を実行",
              "更新ファイルから株価を更新します。過去の日付への更新もできます。"},
             {"CsvUpdate", &Common::csv_update, "0", Check(), "ＣＳＶ更新を実行",
              "銘柄ごとのＣＳＶファイルから株価を更新します。"},
             {"StockChange", &Common::stock_change, "1", Check(), "更新ファイルを残す",
              "読み込んだ更新ファイルを、日付の付いた名前で残します。"}}},
           {"株価の取得",
            {{"YahooKabugetAndUpdate", &Common::yahoo_kabuget_and_update, "1", Check(),
              "取得に続けて更新", "株価の取得が終わったら、続けて株価更新をします。"},
             {"KabugetReserveTime", &Common::kabuget_reserve_time, "11:00:00", Time(), "予約の時刻",
              "予約した株価の取得を始める時刻（時:分:秒）です。"},
             {"MonthNotGet", &Common::month_not_get, "0", Check(), "月曜日は取得しない",
              "予約した株価の取得を月曜日には行いません。"},
             {"DailyGetMeigaraFile", &Common::daily_get_meigara_file, "patrol\\serial.txt", File(),
              "日中足の銘柄ファイル", "日中足データを取得する銘柄のリストです。"},
             {"DaytimeFilecount", &Common::daytime_filecount, "1", Number(1, 999),
              "日中足のファイル数", "日中足データを残すファイルの数（１～９９９）です。"}}},
           {"データサービスとホームページ",
            {{"DaiwaUserid", &Common::daiwa_userid, "", Text(), "大和のユーザーＩＤ",
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
             {"TranslateSeparate", &Common::translate_separate, "0", Choice(kSeparatorChoices),
              "列の区切り", "列と列を区切る文字です。"},
             {"TranslateNikkeiCode", &Common::translate_nikkei_code, "^DJI", Stock(),
              "指数の銘柄コード", "指数として読み込む銘柄のコード（８文字まで）です。"},
             {"TranslateDekidakaUnit", &Common::translate_dekidaka_unit, "1", Number(1, 1000000),
              "出来高の単位", "ファイルの出来高の１が表す株数（１～１００００００）です。"}}},
           {"列の番号",
            {{"TranslateMeigaraCodeid", &Common::translate_meigara_codeid, "1", kColumn,
              "銘柄コードの列", "銘柄コードが左から何列目か（１～１００）です。"},
             {"TranslateHajimeneid", &Common::translate_hajimeneid, "2", kColumn, "始値の列",
              "始値が左から何列目か（１～１００）です。"},
             {"TranslateTakaneid", &Common::translate_takaneid, "3", kColumn, "高値の列",
              "高値が左から何列目か（１～１００）です。"},
             {"TranslateYasuneid", &Common::translate_yasuneid, "4", kColumn, "安値の列",
              "安値が左から何列目か（１～１００）です。"},
             {"TranslateOwarineid", &Common::translate_owarineid, "5", kColumn, "終値の列",
              "終値が左から何列目か（１～１００）です。"},
             {"TranslateDekidakaid", &Common::translate_dekidakaid, "6", kColumn, "出来高の列",
              "出来高が左から何列目か（１～１００）です。"}}}}};
}

KeyPage<Common> ChartPage() {
  return {
      "チャートの初めの状態",
      {{"チャート画面",
        {{"Chart2Default", &Common::chart2_default, "1", Check(), "第二チャートの表示",
          "チャート画面を開いたとき、第二チャートも表示します。"},
         {"Chart2SubchartDefault", &Common::chart2_subchart_default, "9", Choice(SubChartChoices()),
          "第二チャートのサブチャート",
          "チャート画面を開いたとき第二チャートに表示するサブチャートです。"},
         {"Chart2DataDefault", &Common::chart2_data_default, "1", Check(),
          "第二チャートのデータ一覧", "第二チャートの値もデータ一覧に表示します。"},
         {"ComplexchartDefault", &Common::complexchart_default, "1", Choice(kCompositeChoices),
          "日足の複合チャート", "日足で初めに表示する複合チャートです。"},
         {"Complex2chartDefault", &Common::complex2chart_default, "1", Choice(kCompositeChoices),
          "週足の複合チャート", "週足で初めに表示する複合チャートです。"},
         {"Complex3chartDefault", &Common::complex3chart_default, "1", Choice(kCompositeChoices),
          "月足の複合チャート", "月足で初めに表示する複合チャートです。"},
         {"ShowTrendline", &Common::show_trendline, "1", Check(), "トレンドラインの表示",
          "チャートにトレンドラインを表示します。"}}},
       {"株価の目盛の固定",
        {{"FixKabukaScale", &Common::fix_kabuka_scale, "0", Check(), "目盛の固定",
          "株価の目盛を、下の上限と下限の間に固定します。"},
         {"FixKabukaTakane", &Common::fix_kabuka_takane, "0", kPrice, "目盛の上限",
          "固定する目盛の上端の株価（ドル）です。"},
         {"FixKabukaYasune", &Common::fix_kabuka_yasune, "0", kPrice, "目盛の下限",
          "固定する目盛の下端の株価（ドル）です。"},
         {"FixKabukaChart", &Common::fix_kabuka_chart, "1", Check(), "メインチャートで固定",
          "メインチャートの目盛を固定します。"},
         {"FixKabukaChart2", &Common::fix_kabuka_chart2, "0", Check(), "第二チャートで固定",
          "第二チャートの目盛を固定します。"},
         {"FixKabukaWChart", &Common::fix_kabuka_w_chart, "0", Check(), "週足で固定",
          "週足のチャートの目盛を固定します。"},
         {"FixKabukaMChart", &Common::fix_kabuka_m_chart, "0", Check(), "月足で固定",
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
  ReadAnyNumber(profile.Get("Common", "AnalysisSystemFirstFile", ""),
                settings.analysis_system_first_file);
  return settings;
}

void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings) {
  WriteGroup(profile, CommonTable(), settings);
}

}  // namespace orin::shell
