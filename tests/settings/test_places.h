#pragma once

#include "settings/settings_places.h"

namespace orin::settings {

/// Neither directory exists.
inline const SettingsPlaces kPlaces{"/p", "/s/orin.ini"};

}  // namespace orin::settings
