#pragma once

#include <string>

#include "base/profile_file.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// Section Bus: where files are. Paths as they stand in the file, with "\" between the parts;
/// NativeSetting makes them usable.
struct BusSettings {
  std::string update_file;             // quotes for the price update
  std::string daily_csv_directory;     // daily CSV files, one a stock
  std::string weekly_csv_directory;    // weekly ones
  std::string price_directory;         // price files
  std::string system_copy_directory;   // saved copies of the system files
  std::string stock_list_file;         // list of stocks to step through
  std::string comparison_file;         // comparison stocks
  std::string system_directory;        // orin.sys and its companions
  std::string settings_file;           // orin.ini itself
  std::string picture_file;            // picture of the start-up logo
  std::string trade_journal_file;      // trade journal
  std::string update_directory;        // random update files
  std::string daily_update_directory;  // daily random update files
  std::string ram_disk_directory;      // empty: none

  bool operator==(const BusSettings&) const = default;
};

BusSettings ReadBus(const base::ProfileFile& profile, const SettingsPlaces& places);
void WriteBus(base::ProfileFile& profile, const BusSettings& settings);
/// Resets the section. Its update_file is another than the one of a missing key.
void WriteBusDefaults(base::ProfileFile& profile, const SettingsPlaces& places);

}  // namespace orin::settings
