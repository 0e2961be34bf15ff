#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "app/japanese_usage.h"
#include "app/orin_cli/command.h"
#include "base/file_system.h"
#include "base/text.h"
#include "shell/program_places.h"

namespace orin::app {

int Report(const base::Error& error) {
  Tell(error.message);
  return kFailed;
}

void Tell(const std::string& sentence) { std::cerr << base::Printable(sentence) << '\n'; }

namespace {

namespace fs = std::filesystem;

int Run(std::vector<std::string> arguments) {
  CLI::App app("ミルテ：米国株の株価データの管理と株価分析");
  app.name("orin-cli");
  std::string home = shell::DefaultProgramDirectory().string();
  std::string ini;
  app.add_option("--home", home, "プログラムのディレクトリ")->type_name("DIR");
  app.add_option("--ini", ini, "設定ファイル（省略時は DIR/orin.ini）")->type_name("FILE");
  app.require_subcommand(1);
  app.fallthrough();

  Session session;
  AddInitCommand(app, session);
  AddUpdateCsvCommand(app, session);
  AddMasterCommand(app, session);
  AddBarsCommand(app, session);
  AddEvalCommand(app, session);
  AddSeriesCommand(app, session);
  AddExplainCommand(app, session);
  AddItemsCommand(app, session);
  AddSignalsCommand(app, session);
  AddScreenCommand(app, session);
  AddCheckCommand(app, session);
  AddChecksumsCommand(app, session);
  AddSplitsCommand(app, session);
  AddSystemFileCommand(app, session);
  AddCompanyCommand(app, session);
  AddChartCommand(app, session);
  AddSettingsCommand(app, session);
  SpeakJapanese(app);

  session.expressions = TakeExpressions(app, arguments);
  // The parser wants the arguments last first.
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    return ExplainUsage(app, error);
  }
  const auto places = shell::PlacesOf(home, ini);
  if (!places) return Report(places.error());
  session.places = *places;
  std::error_code ignored;
  if (!ini.empty() && !fs::exists(session.places.settings_file, ignored)) {
    Tell("設定ファイル " + base::PathText(session.places.settings_file) +
         " がないので、既定値を使います。");
  }
  const auto adopted = settings::AdoptSimulationFile(base::NativeFileSystem(), session.places);
  if (!adopted) session.simulation_problem = adopted.error().message;
  if (adopted && *adopted) Tell(**adopted);
  return session.run();
}

}  // namespace

}  // namespace orin::app

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  int status = orin::app::kFailed;
  try {
    status = orin::app::Run(std::move(arguments));
  } catch (const std::exception& failure) {
    // Nothing is known to throw; should it happen, the user still gets a sentence.
    orin::app::Tell(std::string("予期しない問題が起きたので中止しました（") + failure.what() +
                    "）。");
  }
  std::cout.flush();
  if (!std::cout) {
    std::cerr << "標準出力に書き込めません。\n";
    return status == 0 ? 1 : status;
  }
  return status;
}
