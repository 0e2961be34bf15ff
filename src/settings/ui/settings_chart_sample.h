#pragma once

#include <string>

#include "chart/sample_chart.h"
#include "settings/settings_catalogue.h"

namespace orin::settings {

/// The sample chart on which the colours under a heading of the group show.
chart::SampleChoice SampleFor(const SettingsGroup& group, const std::string& heading);

}  // namespace orin::settings
