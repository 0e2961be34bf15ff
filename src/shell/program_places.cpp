#include "shell/program_places.h"

#include <cstdlib>
#include <system_error>

namespace orin::shell {

namespace fs = std::filesystem;

namespace {

/// As it is where the current directory is gone.
fs::path Absolute(const fs::path& path) {
  std::error_code failure;
  const fs::path absolute = fs::absolute(path, failure);
  return (failure ? path : absolute).lexically_normal();
}

}  // namespace

fs::path DefaultProgramDirectory() {
  if (const char* home = std::getenv("ORIN_HOME"); home != nullptr && *home != '\0') return home;
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0') {
    return fs::path(data) / "orin";
  }
  const char* user = std::getenv("HOME");
  return fs::path(user != nullptr ? user : ".") / ".local/share/orin";
}

base::Result<settings::SettingsPlaces> PlacesOf(const std::string& home, const std::string& ini) {
  if (home.empty()) return base::Fail("--home のディレクトリが空です。");
  settings::SettingsPlaces places;
  places.program_directory = Absolute(home);
  places.settings_file = ini.empty() ? places.program_directory / "orin.ini" : Absolute(ini);
  return places;
}

}  // namespace orin::shell
