#include <algorithm>
#include <iostream>
#include <memory>

#include "app/orin_cli/command.h"
#include "app/orin_cli/settings_page.h"

namespace orin::app {

namespace {

int RunSettings(const Session& session, bool markdown) {
  if (markdown) {
    std::cout << SettingsPage();
    return kDone;
  }
  const settings::LoadedSettings loaded = settings::LoadWhatIsReadable(session.places);
  for (const std::string& problem : loaded.problems) Tell(problem);
  const auto& copy_problem = session.simulation_problem;
  // A file that cannot be read is a problem of both.
  if (copy_problem && std::ranges::find(loaded.problems, *copy_problem) == loaded.problems.end()) {
    Tell(*copy_problem);
  }
  std::cout << SettingsCsv(loaded.settings, session.places);
  return loaded.problems.empty() ? kDone : kFailed;
}

}  // namespace

void AddSettingsCommand(CLI::App& app, Session& session) {
  const auto markdown = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("settings", "設定の値と既定値を表示する");
  command->add_flag("--markdown", *markdown, "docs/formats/settings.md の形で表示する");
  command->footer(
      "ファイル、セクション、キー、値、既定値、名前をＣＳＶで表示します。読めないファイルの設定は\n"
      "既定値になり、パスワードは表示しません。");
  command->callback([&session, markdown] {
    session.run = [&session, markdown] { return RunSettings(session, *markdown); };
  });
}

}  // namespace orin::app
