#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "app/orin_cli/command.h"
#include "base/paths.h"
#include "shell/store_places.h"
#include "store/consistent_reading.h"
#include "store/system_file_listing.h"

namespace orin::app {

namespace {

using Listing = base::Result<std::vector<base::Table>>;

int Print(const Listing& tables) {
  if (!tables) return Report(tables.error());
  for (const base::Table& table : *tables) std::cout << table.ToCsv("\n");
  return kDone;
}

/// A file of the store that is open in one state.
int PrintOfStore(const store::StoreLocation& location, const std::string& file) {
  const auto path = base::NativePath(file, location.system_directory);
  std::optional<Listing> listing;
  const auto store = store::ReadConsistently(
      location, {}, base::NativeFileSystem(),
      [&](const store::StockStore&) { listing = store::ListSystemFile(path); });
  if (store) return Print(*listing);
  if (!listing) {
    // The listing is of use to find out why the store cannot be opened.
    static_cast<void>(Print(store::ListSystemFile(path)));
  }
  return Report(store.error());
}

/// A bare name is a file of the system directory, anything else a path.
int RunSystemFile(const Session& session, const std::string& file) {
  const std::filesystem::path path(file);
  if (path.has_parent_path()) return Print(store::ListSystemFile(path));
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  return PrintOfStore(shell::LocateStore(settings->bus, session.places), file);
}

}  // namespace

void AddSystemFileCommand(CLI::App& app, Session& session) {
  const auto file = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("system-file", "システムファイルの中身を表示する");
  command->add_option("FILE", *file, "orin.sys、orin.ind、orin.add、orin.del のどれか（必須）")
      ->required()
      ->type_name("");
  command->footer("ファイルにある通りに、見出しのある ＣＳＶ で表示します。");
  command->callback([&session, file] {
    session.run = [&session, file] { return RunSystemFile(session, *file); };
  });
}

}  // namespace orin::app
