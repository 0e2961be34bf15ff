#include "settings/bus_settings.h"

#include "settings/setting_tables.h"

namespace orin::settings {

const KeyTable<BusSettings>& BusTable() {
  using Bus = BusSettings;
  constexpr auto kProgram = DefaultBase::kProgram;
  constexpr auto kSettings = DefaultBase::kSettings;
  static const KeyTable<Bus> table{
      "orin.ini",
      "Bus",
      {{"ファイルの場所",
        {{"株価データ",
          {{"update_file", &Bus::update_file, "yahoo\\YahooHtm.txt", File(kProgram),
            "株価更新ファイル", "株価更新で読み込むファイルです。"},
           {"csvday_dir", &Bus::daily_csv_directory, "brand\\", Directory(kProgram),
            "日足ＣＳＶの場所", "銘柄ごとの日足のＣＳＶファイルを置くディレクトリです。"},
           {"csvweek_dir", &Bus::weekly_csv_directory, "brand_w\\", Directory(kProgram),
            "週足ＣＳＶの場所", "銘柄ごとの週足のＣＳＶファイルを置くディレクトリです。"},
           {"datasave_dir", &Bus::price_directory, "data\\", Directory(kProgram),
            "価格ファイルの場所",
            "株価を蓄える価格ファイル（orin001.dat など）のディレクトリです。"},
           {"systemsave_dir", &Bus::system_copy_directory, "old\\", Directory(kProgram),
            "システムファイルの控えの場所",
            "更新の前のシステムファイルを控えとして残すディレクトリです。"}}},
         {"銘柄リストとシステム",
          {{"serial_file", &Bus::stock_list_file, "patrol\\serial.txt", File(kProgram),
            "連続表示ファイル", "チャートで順に表示する銘柄のリストです。"},
           {"comp_file", &Bus::comparison_file, "patrol\\compare.txt", File(kProgram),
            "比較表示ファイル", "比べて表示する銘柄のリストです。"},
           {"system_dir", &Bus::system_directory, "", Directory(kProgram), "システムファイルの場所",
            "orin.sys とその付属ファイル、株式分割.txt のあるディレクトリです。"},
           // The blank at the end of these six names is part of them.
           {"ini_file ", &Bus::settings_file, "orin.ini", File(kSettings), "設定ファイル",
            "設定を保存しているファイルの名前の控えです。読み込む設定ファイルは変わりません。"},
           {"picture_file ", &Bus::picture_file, "bmp\\orin.bmp", File(kProgram), "起動画面の絵",
            "起動中の画面に表示する画像ファイルです。"},
           {"meisai_file ", &Bus::trade_journal_file, "orin.trn", File(kSettings),
            "取引明細ファイル", "売買の記録を保存するファイルです。"},
           {"random_dir ", &Bus::update_directory, "", Directory(kProgram), "ランダム更新の場所",
            "ランダム更新に使うファイルのディレクトリです。"},
           {"daily_random_dir ", &Bus::daily_update_directory, "", Directory(kProgram),
            "日々のランダム更新の場所", "日々のランダム更新に使うファイルのディレクトリです。"},
           {"ramdisk_dir ", &Bus::ram_disk_directory, "", Directory(), "ＲＡＭディスクの場所",
            "起動のとき株価データを写して速く読むＲＡＭディスクのディレクトリです。空なら使いません"
            "。"}}}}}}};
  return table;
}

BusSettings ReadBus(const base::ProfileFile& profile, const SettingsPlaces& places) {
  return ReadGroup(profile, BusTable(), places);
}

void WriteBus(base::ProfileFile& profile, const BusSettings& settings) {
  WriteGroup(profile, BusTable(), settings);
}

void WriteBusDefaults(base::ProfileFile& profile, const SettingsPlaces& places) {
  BusSettings defaults = ReadBus(base::ProfileFile(), places);
  defaults.update_file = "html\\StockHtm.txt";
  WriteBus(profile, defaults);
}

}  // namespace orin::settings
