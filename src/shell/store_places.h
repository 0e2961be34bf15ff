#pragma once

#include "shell/settings/bus_settings.h"
#include "shell/settings/settings_places.h"
#include "store/store_location.h"

namespace orin::shell {

/// The directories of the store that the path settings name.
store::StoreLocation LocateStore(const BusSettings& bus, const SettingsPlaces& places);

}  // namespace orin::shell
