#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "base/result.h"
#include "settings/analysis_group.h"
#include "settings/bus_settings.h"
#include "settings/chart_action_settings.h"
#include "settings/chart_common_color_settings.h"
#include "settings/chart_display_settings.h"
#include "settings/common_settings.h"
#include "settings/menu_color_settings.h"
#include "settings/menu_display_settings.h"
#include "settings/orin_settings.h"
#include "settings/orin_simulation_settings.h"
#include "settings/settings_places.h"
#include "settings/stock_ranking_settings.h"
#include "settings/tax_settings.h"
#include "settings/window_settings.h"

namespace orin::settings {

/// All groups of the settings files. A Settings of its own holds no defaults: those are read.
struct Settings {
  BusSettings bus;
  TaxSettings tax;
  MenuColorSettings menu_color;
  MenuDisplaySettings menu_display;
  ChartCommonColorSettings chart_common_color;
  StockRankingSettings stock_ranking;
  ChartActionSettings chart_action;
  ChartDisplaySettings chart_display;
  OrinSettings orin;
  CommonSettings common;
  WindowSettings window;
  OrinSimulationSettings orin_simulation;  // of orinsim.ini
  AnalysisGroup analysis_group;            // of the file common.analysis_group_file names

  bool operator==(const Settings&) const = default;
};

struct LoadedSettings {
  Settings settings;
  /// One sentence for each file that is there and cannot be read; its settings are defaults.
  std::vector<std::string> problems;
};

/// Every setting has its default where its file is absent or cannot be read.
LoadedSettings LoadWhatIsReadable(const SettingsPlaces& places);

/// For jobs that must not go on with other settings than the user's: fails where orin.ini is
/// there and cannot be read. The two further files are read as LoadWhatIsReadable does.
base::Result<Settings> LoadSettings(const SettingsPlaces& places);

/// Writes the groups that differ between `before` and `after` into their files as these now
/// stand, so that lines this program does not know and what another instance has changed in
/// other groups stay. Each file is replaced whole. A file that cannot be read is left alone.
/// Tries every file and fails with the first sentence.
base::Status SaveSettings(base::FileSystem& files, const SettingsPlaces& places,
                          const Settings& before, const Settings& after);

}  // namespace orin::settings
