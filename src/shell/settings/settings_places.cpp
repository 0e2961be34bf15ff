#include "shell/settings/settings_places.h"

#include "base/file_system.h"
#include "base/paths.h"

namespace orin::shell {

std::filesystem::path SimulationFile(const SettingsPlaces& places) {
  return places.ini_file.parent_path() / "orinsim.ini";
}

std::string DefaultText(const SettingsPlaces& places, DefaultBase base, std::string_view relative) {
  if (base == DefaultBase::kNone) return std::string(relative);
  std::string text = base::PathText(base == DefaultBase::kProgram ? places.program_directory
                                                                  : places.ini_file.parent_path());
  while (text.ends_with('/') || text.ends_with('\\')) text.pop_back();
  text += '\\';
  text += relative;
  return text;
}

std::filesystem::path NativeSetting(const SettingsPlaces& places, std::string_view setting) {
  return base::NativePath(setting, places.program_directory);
}

}  // namespace orin::shell
