#pragma once

#include <cstdint>
#include <optional>

#include "base/result.h"
#include "shell/settings/bus_settings.h"
#include "shell/settings/common_settings.h"
#include "shell/settings/settings_places.h"
#include "store/store_location.h"

namespace orin::shell {

/// The directories of the store that the path settings name.
store::StoreLocation LocateStore(const BusSettings& bus, const SettingsPlaces& places);

/// The first price file the user has chosen; none for the master's own. Fails for a number that
/// no price file can have.
base::Result<std::optional<int16_t>> ChosenFirstFile(const CommonSettings& common);

}  // namespace orin::shell
