#pragma once

#include "base/result.h"
#include "shell/settings/bus_settings.h"
#include "shell/settings/chart_action_settings.h"
#include "shell/settings/common_settings.h"
#include "shell/settings/settings_places.h"

namespace orin::shell {

/// All groups of orin.ini.
struct Settings {
  BusSettings bus;
  ChartActionSettings chart_action;
  CommonSettings common;

  bool operator==(const Settings&) const = default;
};

/// Every setting has its default where the settings file is absent. Fails where it cannot be read.
base::Result<Settings> LoadSettings(const SettingsPlaces& places);

}  // namespace orin::shell
