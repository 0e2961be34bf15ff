#pragma once

#include "settings/bus_settings.h"
#include "settings/settings_places.h"
#include "store/store_location.h"

namespace orin::shell {

/// The directories of the store that the path settings name.
store::StoreLocation LocateStore(const settings::BusSettings& bus,
                                 const settings::SettingsPlaces& places);

}  // namespace orin::shell
