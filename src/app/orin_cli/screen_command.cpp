#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "app/orin_cli/open_store.h"
#include "app/orin_cli/terminal_progress.h"
#include "screening/screening_run.h"
#include "shell/analysis_group_files.h"

namespace orin::app {

namespace {

namespace fs = std::filesystem;

struct ScreenOptions {
  std::vector<std::string> files;
  std::string group;
  std::string date;
  std::optional<int32_t> first_file;
  bool day_file = false;
};

int RunOne(const store::StockStore& store, const fs::path& file,
           const screening::RunOptions& run_options, bool day_file) {
  screening::Outcome<screening::RunResult> result;
  {
    TerminalProgress progress;
    result =
        screening::RunAnalysisFile(store, file, run_options, base::NativeFileSystem(), progress);
  }
  if (!result) {
    Tell(result.error().message);
    return result.error().kind == screening::RunFailure::Kind::kCannotBeCompiled ? kWrongUsage
                                                                                 : kFailed;
  }
  for (const std::string& note : result->notes) Tell(base::PathText(file) + " の" + note);
  std::cout << base::PathText(result->result_list) << '\t' << result->selected.size() << '\n';
  if (!day_file) return kDone;
  const auto written = screening::WriteAnalysisDay(base::NativeFileSystem(), file, result->date);
  if (!written) return Report(written.error());
  Tell("株価分析日付ファイル（analysisday.txt）を\n分析ファイルと同じディレクトリに作成しました。");
  return kDone;
}

/// Lets the run begin at the first price file of the command line, else of the settings.
base::Status StartAtFirstFile(OpenedStore& opened, std::optional<int32_t> option) {
  store::StockStore& store = opened.store;
  const auto first_file = screening::FirstFileOfRun(
      store.Master().Header(), opened.settings.common.analysis_system_first_file, option);
  if (!first_file) return base::Forward(first_file);
  if (!*first_file) return {};
  auto from_there = store::StockStore::Open(store.Location(), {store::Access::kRead, *first_file},
                                            base::NativeFileSystem());
  if (!from_there) return base::Forward(from_there);
  store = std::move(*from_there);
  const auto explanation = screening::ExplainFirstFile(store, **first_file);
  if (explanation) Tell(*explanation);
  return {};
}

int RunScreen(const Session& session, const ScreenOptions& options) {
  auto opened = OpenStore(session, store::Access::kRead);
  if (!opened) return Report(opened.error());
  const auto started = StartAtFirstFile(*opened, options.first_file);
  if (!started) return Report(started.error());

  std::vector<fs::path> files(options.files.begin(), options.files.end());
  screening::RunOptions run_options{session.places.program_directory,
                                    opened->settings.chart_action.bunkatsu_auto_check};
  if (!options.date.empty()) {
    const auto day = FindDay(opened->store, options.date);
    if (!day) return Report(day.error());
    run_options.date = opened->store.Days().DateOf(*day);
  }
  if (!options.group.empty()) {
    const auto group = shell::FilesOfGroup(options.group, session.places.program_directory);
    if (!group) return Report(group.error());
    files.insert(files.end(), group->ticked.begin(), group->ticked.end());
    run_options.days = screening::DaysOfGroup(opened->store, group->all, run_options.date);
  }
  int status = kDone;
  for (const fs::path& file : files) {
    const int outcome = RunOne(opened->store, file, run_options, options.day_file);
    // The first failure tells.
    if (status == kDone) status = outcome;
  }
  if (status == kDone) Tell("株価チェックが終了しました。");
  return status;
}

}  // namespace

void AddScreenCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<ScreenOptions>();
  CLI::App* command = app.add_subcommand("screen", "分析ファイルで銘柄を選び出す");
  CLI::Option* files = command->add_option("FILE", options->files, "分析ファイル")->type_name("");
  CLI::Option* group =
      command->add_option("--group", options->group, "株価分析グループファイル（orin.chk）")
          ->type_name("FILE.chk");
  files->excludes(group);
  command->add_option("--date", options->date, "分析ファイルの日付のかわりの分析日付 yyyy/mm/dd")
      ->type_name("D");
  command->add_option("--first-file", options->first_file, "読み込む先頭ファイルの番号")
      ->type_name("N");
  command->add_flag("--day-file", options->day_file, "株価分析日付ファイルも作成する");
  command->footer("分析結果のファイル名と選ばれた銘柄の数を、タブで区切って１行ずつ表示します。");
  command->callback([&session, options, files, group] {
    if (files->count() == 0 && group->count() == 0) throw CLI::RequiredError("FILE");
    session.run = [&session, options] { return RunScreen(session, *options); };
  });
}

}  // namespace orin::app
