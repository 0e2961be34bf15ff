#include <filesystem>
#include <iostream>
#include <memory>

#include "acquire/csv_update.h"
#include "app/orin_cli/open_store.h"
#include "app/orin_cli/terminal_progress.h"

namespace orin::app {

namespace {

struct UpdateCsvOptions {
  std::string directory;
  std::string week_directory;
  std::string stock_list;
};

acquire::CsvUpdateSource SourceOf(const UpdateCsvOptions& options, const settings::BusSettings& bus,
                                  const settings::SettingsPlaces& places) {
  const auto chosen = [&places](const std::string& option, const std::string& setting) {
    return option.empty() ? settings::NativeSetting(places, setting)
                          : std::filesystem::path(option);
  };
  acquire::CsvUpdateSource source;
  source.daily_directory = chosen(options.directory, bus.daily_csv_directory);
  source.weekly_directory = chosen(options.week_directory, bus.weekly_csv_directory);
  if (!options.stock_list.empty()) source.stock_list = options.stock_list;
  return source;
}

int RunUpdateCsv(const Session& session, const UpdateCsvOptions& options) {
  auto opened = OpenForChange(session);
  if (!opened) return Report(opened.error());
  base::Result<acquire::CsvUpdateSummary> summary;
  {
    TerminalProgress progress;
    summary = acquire::UpdateFromCsv(opened->store,
                                     SourceOf(options, opened->settings.bus, session.places),
                                     base::NativeFileSystem(), progress);
  }
  if (!summary) return Report(summary.error());
  std::cout << summary->files << ',' << summary->stocks << ',' << summary->days << '\n';
  if (!summary->problems.empty()) Tell(acquire::ProblemsSentence(*summary));
  if (!summary->log_failure.empty()) Tell(summary->log_failure);
  if (!summary->stopped) return summary->log_failure.empty() ? kDone : kFailed;
  Tell("ＣＳＶ株価更新を途中で中止しました。もう一度実行すると続きから更新します。");
  return kFailed;
}

}  // namespace

void AddUpdateCsvCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<UpdateCsvOptions>();
  CLI::App* command = app.add_subcommand("update-csv", "ＣＳＶファイルから株価を取り込む");
  command->add_option("--dir", options->directory, "日足の 銘柄コード.csv のディレクトリ")
      ->type_name("DIR");
  command->add_option("--week-dir", options->week_directory, "週足の 銘柄コード.csv のディレクトリ")
      ->type_name("DIR");
  command->add_option("--stocks", options->stock_list, "追加する銘柄の一覧")->type_name("LIST");
  command->footer(
      "ＣＳＶファイルの見出しは 年月日,始値,高値,安値,終値,出来高、銘柄の一覧の見出しは\n"
      "銘柄コード,銘柄名,上場コード,種別コード,業種コード です。^DJI.csv "
      "の日付が取引日になります。\n"
      "読み込んだファイル数,銘柄数,取引日数 を１行で表示します。");
  command->callback([&session, options] {
    session.run = [&session, options] { return RunUpdateCsv(session, *options); };
  });
}

}  // namespace orin::app
