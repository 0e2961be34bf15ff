#include <iostream>
#include <memory>

#include "app/orin_cli/command.h"
#include "app/orin_cli/terminal_progress.h"
#include "base/text.h"
#include "shell/store_places.h"
#include "store/store_check.h"

namespace orin::app {

namespace {

using store::CheckScope;
using store::StoreLocation;

base::Result<std::vector<std::string>> Check(const StoreLocation& location, CheckScope scope) {
  TerminalProgress progress;
  return store::CheckStore(location, progress, base::NativeFileSystem(), scope);
}

void Print(const std::vector<std::string>& findings) {
  for (const std::string& finding : findings) std::cout << base::PrintableLine(finding) << '\n';
}

int RunCheck(const Session& session) {
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  const StoreLocation location = shell::LocateStore(settings->bus, session.places);
  const auto findings = Check(location, CheckScope::kAll);
  if (!findings) return Report(findings.error());
  Print(*findings);
  if (!store::HasSums(location)) {
    Tell(
        "チェックサムがないので、値の変わった株価は見つけられません。"
        "orin-cli checksums で作れます。");
  }
  if (findings->empty()) {
    Tell("株価データに異常はありません。");
    return kDone;
  }
  Tell("株価データに" + std::to_string(findings->size()) + "件の異常があります。");
  return kFailed;
}

base::Status MakeSums(const StoreLocation& location) {
  auto opened =
      store::StockStore::Open(location, {store::Access::kWrite, {}}, base::NativeFileSystem());
  if (!opened) return base::Forward(opened);
  for (const std::string& problem : opened->Problems()) Tell(problem);
  TerminalProgress progress;
  return opened->MakeSums(progress);
}

int RunChecksums(const Session& session, bool force) {
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  const StoreLocation location = shell::LocateStore(settings->bus, session.places);
  const auto findings = Check(location, CheckScope::kAllButLackingSums);
  if (!findings) return Report(findings.error());
  Print(*findings);
  if (!findings->empty() && !force) {
    Tell("株価データに" + std::to_string(findings->size()) +
         "件の異常があるので、チェックサムを作りません。今の内容のまま作るには --force "
         "を付けてください。");
    return kFailed;
  }
  const base::Status made = MakeSums(location);
  if (!made) return Report(made.error());
  Tell("チェックサムを作りました。");
  return kDone;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("check", "株価データ全体を検査する");
  command->footer(
      "異常を１件１行で表示します。途中で切れた更新があれば、先に終わらせるか取り消します。");
  command->callback([&session] { session.run = [&session] { return RunCheck(session); }; });
}

void AddChecksumsCommand(CLI::App& app, Session& session) {
  const auto force = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("checksums", "株価データのチェックサムを作り直す");
  command->add_flag("--force", *force, "異常があっても、表示して今の内容のまま作る");
  command->footer(
      "今の内容から orin.sum と orinc001.dat～ を作ります。これより後に値の変わった株価を check "
      "が\n見つけます。チェックサムがないか読めないことのほかに異常があれば、表示して何も変えません"
      "。");
  command->callback([&session, force] {
    session.run = [&session, force] { return RunChecksums(session, *force); };
  });
}

}  // namespace orin::app
