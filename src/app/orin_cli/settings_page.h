#pragma once

#include <string>

#include "settings/settings.h"

namespace orin::app {

/// docs/formats/settings.md, made from the tables of the settings.
std::string SettingsPage();

/// A heading and a line for each key: file, section, key, value, default and label as CSV. What
/// is secret is not shown.
std::string SettingsCsv(const settings::Settings& settings, const settings::SettingsPlaces& places);

}  // namespace orin::app
