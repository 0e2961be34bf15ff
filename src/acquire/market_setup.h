#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/store_location.h"

namespace orin::acquire {

/// What a new market is made from.
struct MarketSource {
  /// Directory of CODE.csv histories with ^DJI.csv among them; none: the market stays empty.
  std::optional<std::filesystem::path> quotes;
  std::optional<std::filesystem::path> stock_list;
};

struct MarketSummary {
  int32_t stocks = 0;    // in the master
  int32_t days = 0;      // of the calendar
  bool stopped = false;  // by the user; the store is there, with what was imported until then
  /// What was wrong with the files, a sentence each; the rest was imported.
  std::vector<std::string> problems;
};

/// Makes a store and fills it. Where that fails, the store's files are taken away again, so that a
/// second try finds the place as the first one did; a 株式分割.txt and logs that were there stay.
/// Refuses where there is a store, and then changes nothing.
base::Result<MarketSummary> SetUpMarket(const store::StoreLocation& location,
                                        const MarketSource& source, base::FileSystem& files,
                                        base::Progress& progress);

/// Copies the demo's files (settings, analysis files, group file, quotes, list of stocks) into the
/// program directory and makes the directories of its result lists, patrol/<analysis file>. Files
/// that exist there are kept as they are; where a copy fails, those made until then are removed.
base::Status CopyDemoFiles(const std::filesystem::path& demo,
                           const std::filesystem::path& program_directory, base::FileSystem& files);

}  // namespace orin::acquire
