#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/run_days.h"
#include "base/file_system.h"
#include "base/progress.h"
#include "base/result.h"
#include "screening/analysis_file.h"
#include "screening/result_list.h"
#include "store/stock_store.h"

namespace orin::screening {

struct RunOptions {
  /// Where the relative paths of analysis files begin.
  std::filesystem::path base_directory;
  bool adjust_splits = true;
  /// What the keywords stand for in a run over a group; none: analysisdate1 is the day of the
  /// file that is run, the others are not set.
  std::optional<analysis::RunDays> days = {};
};

/// What one analysis file gave.
struct RunResult {
  std::filesystem::path result_list;
  std::string title;
  base::Date date;
  int32_t selected = 0;
  /// What the writer of the analysis file should know, a sentence each.
  std::vector<std::string> notes;
};

/// Why a run gave nothing.
struct RunFailure {
  std::string message;              // one sentence that names file and value
  bool cannot_be_compiled = false;  // the condition
};
template <typename T>
using Outcome = tl::expected<T, RunFailure>;

/// The screening itself: the stocks of the market whose condition is true on the day, in record
/// order. `days` are those of the condition's keywords. Stops without a result when `progress`
/// says so.
Outcome<std::vector<SelectedStock>> Select(const store::StockStore& store,
                                           const AnalysisFile& analysis, base::DayIndex day,
                                           bool adjust_splits, base::Progress& progress,
                                           std::vector<std::string>& notes,
                                           const analysis::RunDays& days = {});

/// analysisdate1, 2, ... from the analysis files of a group in entry order, an empty path for an
/// entry without a file: the day of the file's analysis date, the newest one for a file without
/// a date. Not set for what cannot be read or names no day of the calendar.
analysis::RunDays DaysOfGroup(const store::StockStore& store,
                              std::span<const std::filesystem::path> files);

/// Runs one analysis file and writes its result list. Without a result directory the first line
/// of "workresultfilename.txt" in the base directory names it. Fails, and writes nothing, where
/// the file cannot be read or compiled, the date is no trading day, the second stock is unknown
/// or the result directory does not exist.
Outcome<RunResult> RunAnalysisFile(const store::StockStore& store,
                                   const std::filesystem::path& file, const RunOptions& options,
                                   base::FileSystem& files, base::Progress& progress);

/// Writes "analysisday.txt" with the date under analysis into the analysis file's directory.
base::Status WriteAnalysisDay(base::FileSystem& files, const std::filesystem::path& analysis_file,
                              base::Date date);

/// At least this many price files must remain readable when the first one is chosen.
inline constexpr int16_t kFewestPriceFiles = 4;

/// Whether enough price files remain when the store is opened with `first_file`, one of its
/// files; the sentence where not. All there are is enough.
base::Status CheckFirstFile(const store::MasterHeader& header, int16_t first_file);
/// What the choice means, in three lines; the store was opened with that first file.
base::Result<std::string> ExplainFirstFile(const store::StockStore& store);

}  // namespace orin::screening
