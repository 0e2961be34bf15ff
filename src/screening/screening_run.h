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
#include "screening/stock_days.h"
#include "store/stock_store.h"

namespace orin::screening {

struct RunOptions {
  /// Where the relative paths of analysis files begin.
  std::filesystem::path base_directory;
  bool adjust_splits = true;
  /// What the keywords stand for in a run over a group; none: analysisdate1 is the day of the
  /// file that is run, the others are not set.
  std::optional<analysis::RunDays> days = {};
  /// In place of the analysis date of the files.
  std::optional<base::Date> date = {};
};

/// What one analysis file gave.
struct RunResult {
  std::filesystem::path result_list;
  AnalysisFile analysis;
  base::Date date;  // under analysis
  analysis::RunDays days;
  StockDays own_days;
  std::vector<SelectedStock> selected;
  /// What the writer of the analysis file should know, a sentence each.
  std::vector<std::string> notes;
};

/// Why a run gave nothing.
struct RunFailure {
  enum class Kind { kOther, kCannotBeCompiled, kStopped, kStoreChanged };

  std::string message;  // one sentence that names file and value
  Kind kind = Kind::kOther;
};
template <typename T>
using Outcome = tl::expected<T, RunFailure>;

/// The second stock of an analysis. Without one the items that read it fail, and all else is done.
struct SecondStock {
  const store::StockRecord* record = nullptr;  // of the master; null without one
  std::string problem;                         // the sentence about a code that no stock has
};
SecondStock FindSecondStock(const store::StockStore& store,
                            const std::optional<store::StockCode>& code);

/// The day of a screening.
struct SelectDay {
  base::DayIndex day;
  bool adjust_splits = true;
  analysis::RunDays days = {};          // of the condition's keywords
  const StockDays* own_days = nullptr;  // of stocks that are looked at on another day
};

/// The screening itself: the stocks of the market whose condition is true on the day, in record
/// order. Stops without a result when `progress` says so.
Outcome<std::vector<SelectedStock>> Select(const store::StockStore& store,
                                           const AnalysisFile& analysis, const SelectDay& when,
                                           base::Progress& progress,
                                           std::vector<std::string>& notes);

/// Of a file that is run alone: analysisdate1 is its day.
analysis::RunDays DaysOfFile(base::DayIndex day);

/// analysisdate1, 2, ... from the analysis files of a group in entry order, an empty path for an
/// entry without a file: the day of the file's analysis date, the newest one for a file without
/// a date; `date` in their place where it is given. Not set for what cannot be read or names no
/// day of the calendar.
analysis::RunDays DaysOfGroup(const store::StockStore& store,
                              std::span<const std::filesystem::path> files,
                              std::optional<base::Date> date = {});

/// The day of an analysis: its date's, the newest one without a date. Fails with a sentence that
/// begins with `file_name` for a date that is no trading day of the store.
base::Result<base::DayIndex> FindDay(const store::StockStore& store,
                                     const std::optional<base::Date>& date,
                                     const std::string& file_name);
/// Fails where the file cannot be read or has a value that is none.
base::Result<AnalysisFile> ReadAnalysisFile(const std::filesystem::path& file);
/// Where the result list of an analysis goes: its own directory, else that of the first line of
/// "workresultfilename.txt" in the base directory. Fails where none is given or it does not exist.
base::Result<std::filesystem::path> FindResultDirectory(
    const AnalysisFile& analysis, const std::string& file_name,
    const std::filesystem::path& base_directory);

/// Runs one analysis file and writes its result list. Stocks that orinana.day in the base
/// directory names are looked at on the days it gives. Fails, and writes nothing, where the file
/// cannot be read or compiled, the date is no trading day, the result directory does not exist, or
/// another process has changed the store meanwhile.
Outcome<RunResult> RunAnalysisFile(const store::StockStore& store,
                                   const std::filesystem::path& file, const RunOptions& options,
                                   base::FileSystem& files, base::Progress& progress);

/// Writes "analysisday.txt" with the date under analysis into the analysis file's directory.
base::Status WriteAnalysisDay(base::FileSystem& files, const std::filesystem::path& analysis_file,
                              base::Date date);

/// At least this many price files must remain readable when the first one is chosen.
inline constexpr int16_t kFewestPriceFiles = 4;

/// The first price file of a run: `option`, else the setting AnalysisSystemFirstFile; nullopt for
/// all files. Fails with a sentence where the store lacks a file of that number, and where fewer
/// than kFewestPriceFiles would be read, unless these are all files.
base::Result<std::optional<int16_t>> FirstFileOfRun(const store::MasterHeader& header,
                                                    int32_t setting,
                                                    std::optional<int32_t> option = {});
/// What the choice of one of the store's files means, in four lines.
base::Result<std::string> ExplainFirstFile(const store::StockStore& store, int16_t first_file);

}  // namespace orin::screening
