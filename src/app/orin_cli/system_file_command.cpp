#include <filesystem>
#include <iostream>
#include <memory>

#include "app/orin_cli/command.h"
#include "base/paths.h"
#include "shell/store_places.h"
#include "store/system_file_listing.h"

namespace orin::app {

namespace {

/// A bare name is a file of the system directory, anything else a path.
base::Result<std::filesystem::path> Locate(const Session& session, const std::string& file) {
  const std::filesystem::path path(file);
  if (path.has_parent_path()) return path;
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return base::Forward(settings);
  return base::NativePath(file, shell::LocateStore(settings->bus, session.places).system_directory);
}

int RunSystemFile(const Session& session, const std::string& file) {
  const auto path = Locate(session, file);
  if (!path) return Report(path.error());
  const auto tables = store::ListSystemFile(*path);
  if (!tables) return Report(tables.error());
  for (const base::Table& table : *tables) std::cout << table.ToCsv("\n");
  return kDone;
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
