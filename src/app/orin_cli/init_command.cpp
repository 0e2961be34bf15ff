#include "app/orin_cli/command.h"
#include "base/file_system.h"
#include "shell/store_places.h"
#include "store/stock_store.h"

namespace orin::app {

namespace {

int RunInit(const Session& session) {
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  const auto created = store::StockStore::Create(shell::LocateStore(settings->bus, session.places),
                                                 base::NativeFileSystem());
  return created ? kDone : Report(created.error());
}

}  // namespace

void AddInitCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("init", "空の株価データを作る");
  command->footer(
      "orin.sys と株価データのディレクトリを作ります。すでにあるときは何も変えずに失敗します。");
  command->callback([&session] { session.run = [&session] { return RunInit(session); }; });
}

}  // namespace orin::app
