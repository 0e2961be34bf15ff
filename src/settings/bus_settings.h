#pragma once

#include <string>

#include "base/profile_file.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// Section Bus: where files are. Paths as they stand in the file, with "\" between the parts;
/// NativeSetting makes them usable.
struct BusSettings {
  std::string update_file;       // quotes for the price update
  std::string csvday_dir;        // daily CSV files, one a stock
  std::string csvweek_dir;       // weekly ones
  std::string datasave_dir;      // price files
  std::string systemsave_dir;    // saved copies of the system files
  std::string serial_file;       // list of stocks to step through
  std::string comp_file;         // comparison stocks
  std::string system_dir;        // orin.sys and its companions
  std::string ini_file;          // orin.ini itself
  std::string picture_file;      // picture of the start-up logo
  std::string meisai_file;       // trade journal
  std::string random_dir;        // random update files
  std::string daily_random_dir;  // daily random update files
  std::string ramdisk_dir;       // empty: none

  bool operator==(const BusSettings&) const = default;
};

BusSettings ReadBus(const base::ProfileFile& profile, const SettingsPlaces& places);
void WriteBus(base::ProfileFile& profile, const BusSettings& settings);
/// Resets the section. Its update_file is another than the one of a missing key.
void WriteBusDefaults(base::ProfileFile& profile, const SettingsPlaces& places);

}  // namespace orin::settings
