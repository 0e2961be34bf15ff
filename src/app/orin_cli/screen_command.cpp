#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "app/orin_cli/answer.h"
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

screening::Outcome<screening::RunResult> RunWithProgress(const store::StockStore& store,
                                                         const fs::path& file,
                                                         const screening::RunOptions& options) {
  // Its bar is gone before anything is told.
  TerminalProgress progress;
  return screening::RunAnalysisFile(store, file, options, base::NativeFileSystem(), progress);
}

int StatusOf(screening::RunFailure::Kind kind) {
  return kind == screening::RunFailure::Kind::kCannotBeCompiled ? kWrongUsage : kFailed;
}

int TellResult(const screening::RunResult& result, const fs::path& file, bool day_file,
               Answer& answer) {
  for (const std::string& note : result.notes) answer.Tell(base::PathText(file) + " の" + note);
  answer.Out() << base::PathText(result.result_list) << '\t' << result.selected.size() << '\n';
  if (!day_file) return kDone;
  const auto written = screening::WriteAnalysisDay(base::NativeFileSystem(), file, result.date);
  if (!written) return answer.Report(written.error());
  answer.Tell(
      "株価分析日付ファイル（analysisday.txt）を\n分析ファイルと同じディレクトリに作成しました。");
  return kDone;
}

/// Runs one file after the other, whether one fails or not. The first failure is the status.
int RunFiles(const store::StockStore& store, const std::vector<fs::path>& files,
             const screening::RunOptions& run_options, bool day_file, Answer& answer) {
  using Kind = screening::RunFailure::Kind;
  int status = kDone;
  for (const fs::path& file : files) {
    const auto result = RunWithProgress(store, file, run_options);
    int outcome = kDone;
    if (result) {
      outcome = TellResult(*result, file, day_file, answer);
    } else {
      answer.Tell(result.error().message);
      outcome = StatusOf(result.error().kind);
      const Kind kind = result.error().kind;
      if (kind == Kind::kStopped || kind == Kind::kStoreChanged) return outcome;
    }
    if (status == kDone) status = outcome;
  }
  answer.Tell("株価チェックが終了しました。");
  return status;
}

/// The store from the first price file of the command line on, else of the settings; nullopt where
/// all files are to be read.
base::Result<std::optional<store::StockStore>> OpenFromFirstFile(const StoreReading& reading,
                                                                 std::optional<int32_t> option) {
  const auto first_file = screening::FirstFileOfRun(
      reading.store.Master().Header(), reading.settings.common.first_price_file, option);
  if (!first_file) return base::Forward(first_file);
  if (!*first_file) return std::nullopt;
  auto store = store::StockStore::Open(reading.store.Location(),
                                       {store::Access::kRead, *first_file, &reading.store},
                                       base::NativeFileSystem());
  if (!store) return base::Forward(store);
  return std::optional(std::move(*store));
}

int Screen(const StoreReading& reading, const settings::SettingsPlaces& places,
           const ScreenOptions& options, Answer& answer) {
  const auto from_first_file = OpenFromFirstFile(reading, options.first_file);
  if (!from_first_file) return answer.Report(from_first_file.error());
  const store::StockStore& store = *from_first_file ? **from_first_file : reading.store;
  if (*from_first_file) {
    const auto explanation = screening::ExplainFirstFile(store, store.FirstFile());
    if (explanation) answer.Tell(*explanation);
  }

  std::vector<fs::path> files(options.files.begin(), options.files.end());
  screening::RunOptions run_options{places.program_directory,
                                    reading.settings.chart_action.adjusts_for_splits};
  if (!options.date.empty()) {
    const auto day = FindDay(store, options.date);
    if (!day) return answer.Report(day.error());
    run_options.date = store.Days().DateOf(*day);
  }
  if (!options.group.empty()) {
    const auto group = shell::FilesOfGroup(options.group, places.program_directory);
    if (!group) return answer.Report(group.error());
    files.insert(files.end(), group->ticked.begin(), group->ticked.end());
    run_options.days = screening::DaysOfGroup(store, group->all, run_options.date);
  }
  return RunFiles(store, files, run_options, options.day_file, answer);
}

int RunScreen(const Session& session, const ScreenOptions& options) {
  return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
    return Screen(reading, session.places, options, answer);
  });
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
      ->check(CLI::Range(1, int{store::kLastFileNumber}).description(""))
      ->type_name("N");
  command->add_flag("--day-file", options->day_file, "株価分析日付ファイルも作成する");
  command->footer("分析結果のファイル名と選ばれた銘柄の数を、タブで区切って１行ずつ表示します。");
  command->callback([&session, options, files, group] {
    if (files->count() == 0 && group->count() == 0) throw CLI::RequiredError("FILE");
    session.run = [&session, options] { return RunScreen(session, *options); };
  });
}

}  // namespace orin::app
