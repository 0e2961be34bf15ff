#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::acquire {

/// What a CSV update reads. Every file is CODE.csv; the ending's case does not count.
struct CsvUpdateSource {
  std::filesystem::path daily_directory;
  /// Weekly histories; a directory that does not exist has none.
  std::filesystem::path weekly_directory;
  std::optional<std::filesystem::path> stock_list;
};

struct CsvUpdateSummary {
  int32_t files = 0;         // CSV files read, daily and weekly
  int32_t stocks = 0;        // stocks that had a file
  int32_t days = 0;          // days of the calendar afterwards
  int32_t added_stocks = 0;  // stocks new in the master
  int64_t changed_bars = 0;  // bars stored that were not there before
  bool stopped = false;      // by the user; what was committed stays
  /// What was wrong with the files, a sentence each, as in the log.
  std::vector<std::string> problems;
  int64_t further_problems = 0;    // beyond those sentences
  std::filesystem::path log_file;  // empty where there is no log
  /// Why there is no log, a sentence that names the directory; empty where there is one.
  std::string log_failure;
};

/// The number of problems and the first of them; empty where nothing went wrong.
std::string ProblemsSentence(const CsvUpdateSummary& summary);

/// UpdateFromCsv: imports price histories into the store in two passes, daily, then weekly.
///
/// 1. Stocks of the list that the master lacks are added in the list's order, then stocks that
///    only have a daily file, by code, as 他市場. Those that the store has no room for are
///    problems.
/// 2. The days of "^DJI" become days of the calendar.
/// 3. Every daily bar on a day of the calendar replaces the stored one. A day that the file does
///    not tell stays as stored.
/// 4. A weekly bar goes to the last trading day of its week where the stock has no bar in that
///    week, so that the derived weekly bar is the file's.
///
/// Files are read one at a time and stocks committed some at a time, so that the memory taken does
/// not depend on their number; a run that was stopped or killed is completed by running
/// it again, which rewrites nothing that is stored already. What is wrong with a file is told in
/// the log "K" + newest day + ".LOG" in the data directory and the rest goes on. Fails where
/// there is no calendar, the directory cannot be read or the store cannot be written.
base::Result<CsvUpdateSummary> UpdateFromCsv(store::StockStore& store,
                                             const CsvUpdateSource& source, base::FileSystem& files,
                                             base::Progress& progress);

}  // namespace orin::acquire
