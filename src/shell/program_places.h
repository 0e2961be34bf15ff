#pragma once

#include <filesystem>
#include <string>

#include "base/result.h"
#include "settings/settings_places.h"

namespace orin::shell {

/// Where the program's files are by default: $ORIN_HOME, else $XDG_DATA_HOME/orin, else
/// ~/.local/share/orin.
std::filesystem::path DefaultProgramDirectory();

/// The places that the options --home and --ini name, as absolute paths; an empty `ini` is
/// orin.ini in the program directory. Fails for an empty `home`.
base::Result<settings::SettingsPlaces> PlacesOf(const std::string& home, const std::string& ini);

}  // namespace orin::shell
