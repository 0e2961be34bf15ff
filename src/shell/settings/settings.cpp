#include "shell/settings/settings.h"

namespace orin::shell {

base::Result<Settings> LoadSettings(const SettingsPlaces& places) {
  const auto profile = base::ProfileFile::Load(places.ini_file);
  if (!profile) return base::Forward(profile);
  return Settings{ReadBus(*profile, places), ReadChartAction(*profile), ReadCommon(*profile)};
}

}  // namespace orin::shell
