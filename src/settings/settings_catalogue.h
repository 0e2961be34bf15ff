#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "settings/setting_form.h"
#include "settings/settings.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// A key as the settings window shows it.
struct SettingEntry {
  std::string section;  // as they stand in the file
  std::string key;
  std::string heading;      // keys of one heading follow each other
  std::string label;        // short, as "短期の日数"
  std::string explanation;  // a sentence or two
  SettingKind kind = SettingKind::kText;
  double minimum = 0;  // of kNumber and kRate
  double maximum = 0;
  std::span<const SettingChoice> choices = {};  // of kChoice

  std::function<std::string(const Settings&)> text;
  std::function<std::string(const SettingsPlaces&)> default_text;
  /// Puts the text into the settings. Fails, with a sentence for the user and nothing changed,
  /// where it is none of the kind or outside the limits.
  std::function<base::Status(Settings&, std::string_view)> assign;
};

/// A group of settings: one section of a settings file, or a part of one, or the three sections
/// of the group file.
struct SettingsGroup {
  std::string title;      // as "チャートの動作"
  std::string file;       // as "orin.ini"
  std::string section;    // as "ChartAction"; of the group file the first
  std::string help_page;  // of the manual
  std::vector<SettingEntry> entries;
};

/// Every key of every settings file, in the order of the settings window. Made once.
const std::vector<SettingsGroup>& SettingsCatalogue();

}  // namespace orin::settings
