#include "settings/settings_places.h"

#include <system_error>

#include "base/paths.h"

namespace orin::settings {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSimulationFile = "orinsim.ini";

/// One that cannot be looked at is taken for present, so that reading it tells the reason.
bool IsThere(const fs::path& path) {
  std::error_code failure;
  return fs::exists(path, failure) || failure;
}

}  // namespace

fs::path SimulationFile(const SettingsPlaces& places) {
  return places.program_directory / kSimulationFile;
}

fs::path SimulationFileInUse(const SettingsPlaces& places) {
  const fs::path own = SimulationFile(places);
  const fs::path other = places.settings_file.parent_path() / kSimulationFile;
  return !IsThere(own) && IsThere(other) ? other : own;
}

base::Result<std::optional<std::string>> AdoptSimulationFile(base::FileSystem& files,
                                                             const SettingsPlaces& places) {
  const fs::path own = SimulationFile(places);
  const fs::path used = SimulationFileInUse(places);
  if (used == own) return std::nullopt;
  const auto bytes = base::ReadFile(used);
  if (!bytes) return base::Forward(bytes);
  const auto copied = base::ReplaceFile(files, own, *bytes, base::Readers::kOwner);
  if (!copied) {
    return base::Fail("シミュレーションの設定は「" + base::PathText(used) + "」のものを使います。" +
                      copied.error().message);
  }
  return "シミュレーションの設定「" + base::PathText(used) + "」を「" + base::PathText(own) +
         "」に写しました。これからは写したファイルを使います。元のファイルは残してあります。";
}

std::string DefaultText(const SettingsPlaces& places, DefaultBase base, std::string_view relative) {
  if (base == DefaultBase::kNone) return std::string(relative);
  std::string text =
      base::PathText(base == DefaultBase::kProgram ? places.program_directory
                                                   : places.settings_file.parent_path());
  while (text.ends_with('/') || text.ends_with('\\')) text.pop_back();
  text += '\\';
  text += relative;
  return text;
}

fs::path NativeSetting(const SettingsPlaces& places, std::string_view setting) {
  return base::NativePath(setting, places.program_directory);
}

}  // namespace orin::settings
