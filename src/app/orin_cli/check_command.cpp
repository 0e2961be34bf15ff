#include <iostream>

#include "app/orin_cli/command.h"
#include "app/orin_cli/terminal_progress.h"
#include "shell/store_places.h"
#include "store/store_check.h"

namespace orin::app {

namespace {

int RunCheck(const Session& session) {
  const auto settings = shell::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  base::Result<std::vector<std::string>> findings;
  {
    TerminalProgress progress;
    findings = store::CheckStore(shell::LocateStore(settings->bus, session.places), progress);
  }
  if (!findings) return Report(findings.error());
  for (const std::string& finding : *findings) std::cout << finding << '\n';
  if (findings->empty()) {
    Tell("株価データに異常はありません。");
    return kDone;
  }
  Tell("株価データに" + std::to_string(findings->size()) + "件の異常があります。");
  return kFailed;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("check", "株価データ全体を検査する");
  command->footer(
      "異常を１件１行で表示します。途中で切れた更新があれば、先に終わらせるか取り消します。");
  command->callback([&session] { session.run = [&session] { return RunCheck(session); }; });
}

}  // namespace orin::app
