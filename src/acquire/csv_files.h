#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "acquire/csv_history.h"
#include "acquire/line_problems.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::acquire {

/// The stock whose days are the calendar.
inline constexpr std::string_view kCalendarCode = "^DJI";

/// A CSV file named after its stock.
struct CsvFile {
  store::StockCode code;
  std::filesystem::path path;
};

/// The faults of files, a sentence each. The first ten thousand are kept, the rest counted: a fault
/// of every file of a large market must not fill the memory.
class FileProblems {
 public:
  static constexpr size_t kKept = 10'000;

  void Add(std::string sentence);
  void Add(const std::filesystem::path& file, const LineProblems& problems);

  [[nodiscard]] const std::vector<std::string>& Sentences() const { return sentences_; }
  [[nodiscard]] int64_t Further() const { return further_; }

 private:
  std::vector<std::string> sentences_;
  int64_t further_ = 0;
};

/// The files CODE.csv (CodeFileStem) of a directory (the ending's case does not count), the
/// calendar's first, the others by code. Names that are no code and second files of a code are
/// problems. Fails where the directory cannot be read.
base::Result<std::vector<CsvFile>> ListCsvFiles(const std::filesystem::path& directory,
                                                FileProblems& problems);

/// nullopt, with a problem, where the file cannot be read or is larger than kLargestCsvHistory.
/// Problems of its lines are in the history.
std::optional<CsvHistory> ReadCsvHistory(const CsvFile& file, FileProblems& problems);

/// Whether ReadCsvHistory would give a history with a heading.
bool IsCsvHistory(const CsvFile& file);

}  // namespace orin::acquire
