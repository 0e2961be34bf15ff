#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "settings/settings.h"
#include "settings/settings_places.h"
#include "shell/error_log.h"
#include "shell/run_marker.h"
#include "shell/system_files.h"
#include "store/companion_formats.h"
#include "store/company_table.h"
#include "store/list_formats.h"
#include "store/ranking_files.h"
#include "store/stock_store.h"

namespace orin::shell {

/// Everything the windows read at run time. Owned by the program, handed on by reference.
struct ProgramState {
  settings::SettingsPlaces places;
  base::FileSystem* files = nullptr;
  settings::Settings settings;
  settings::Settings saved_settings;  // as they stand in the files
  /// False: orin.ini is there and could not be read. The settings are then defaults, and ShutDown
  /// writes none.
  bool are_settings_readable = true;
  bool has_help_file = false;  // Help\orinhelp.hlp in the program directory
  ErrorLog error_log;
  RunMarker program_marker;  // orin.act in the program directory
  RunMarker user_marker;     // orinuser.act in the settings directory

  /// None until there is a store; opened for reading.
  std::optional<store::StockStore> store;
  std::vector<store::IndexEntry> name_index;  // orin.ind
  store::StockList added;                     // orin.add
  store::StockList deleted;                   // orin.del
  store::CompanyTable companies;              // orin.fin, orin.acc
  SystemFiles system_files;                   // the further companions
  std::vector<store::Trade> trades;           // the trade journal
  /// The RAM disk's copy that `store` reads in the store's place; none: the store itself. What
  /// changes while the program runs (trend lines, the lists) is read and written at
  /// StoreLocation().
  std::optional<store::StoreLocation> ram_disk;
  base::MasterRecord initial_stock;  // "^DJI", else the first stock; none in an empty store
  /// Problems of the start that the user has been told; LoadStore does not repeat them.
  std::set<std::string> told_problems;

  /// CompareStore calls it where it finds a change; set by the main window.
  std::function<void()> on_store_changed;

  /// Called by a window that has loaded something from the store: where another process has
  /// changed the store, what the windows show may mix two states of it.
  void CompareStore() const;

  /// Where the store is as the settings name it, whatever is read from a RAM disk.
  [[nodiscard]] store::StoreLocation StoreLocation() const;
};

}  // namespace orin::shell
