#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/orin_cli/command.h"
#include "app/orin_cli/japanese_usage.h"

namespace orin::app {

int Report(const base::Error& error) {
  Tell(error.message);
  return kFailed;
}

void Tell(const std::string& sentence) { std::cerr << sentence << '\n'; }

namespace {

namespace fs = std::filesystem;

fs::path DefaultHome() {
  if (const char* home = std::getenv("ORIN_HOME"); home != nullptr && *home != '\0') return home;
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0') {
    return fs::path(data) / "orin";
  }
  const char* user = std::getenv("HOME");
  return fs::path(user != nullptr ? user : ".") / ".local/share/orin";
}

int Run(std::vector<std::string> arguments) {
  CLI::App app("ミルテ：米国株の株価データの管理と株価分析");
  app.name("orin-cli");
  std::string home = DefaultHome().string();
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
  AddScreenCommand(app, session);
  AddCheckCommand(app, session);
  AddSplitsCommand(app, session);
  AddSystemFileCommand(app, session);
  SpeakJapanese(app);

  ProtectExpressions(arguments);
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    return ExplainUsage(app, error);
  }
  session.places.program_directory = fs::absolute(home).lexically_normal();
  session.places.ini_file = ini.empty() ? session.places.program_directory / "orin.ini"
                                        : fs::absolute(ini).lexically_normal();
  return session.run();
}

}  // namespace

}  // namespace orin::app

int main(int argc, char** argv) {
  // The parser of the command line wants the arguments last first.
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const int status = orin::app::Run(std::move(arguments));
  std::cout.flush();
  if (!std::cout) {
    std::cerr << "標準出力に書き込めません。\n";
    return status == 0 ? 1 : status;
  }
  return status;
}
