#include "acquire/csv_files.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/cp932.h"
#include "base/file_system.h"
#include "base/text.h"
#include "store/file_names.h"

namespace orin::acquire {

namespace {

namespace fs = std::filesystem;

bool IsCsvName(const fs::path& path) {
  return base::EqualsIgnoreCase(base::PathText(path.extension()), ".csv");
}

bool ComesBefore(const CsvFile& a, const CsvFile& b) {
  const bool a_first = a.code.Text() == kCalendarCode;
  const bool b_first = b.code.Text() == kCalendarCode;
  if (a_first != b_first) return a_first;
  return std::pair(a.code, a.path) < std::pair(b.code, b.path);
}

/// Leaves one file a code.
void DropSecondFiles(std::vector<CsvFile>& found, FileProblems& problems) {
  size_t kept = 0;
  for (size_t i = 0; i < found.size(); ++i) {
    if (kept > 0 && found[kept - 1].code == found[i].code) {
      problems.Add(base::PathText(found[i].path.filename()) + " は " +
                   base::PathText(found[kept - 1].path.filename()) +
                   " と同じ銘柄コードなので読み込みません。");
      continue;
    }
    if (kept != i) found[kept] = std::move(found[i]);
    ++kept;
  }
  found.erase(found.begin() + static_cast<std::ptrdiff_t>(kept), found.end());
}

}  // namespace

void FileProblems::Add(std::string sentence) {
  if (sentences_.size() < kKept) {
    sentences_.push_back(std::move(sentence));
  } else {
    ++further_;
  }
}

void FileProblems::Add(const fs::path& file, const LineProblems& problems) {
  const std::string name = base::PathText(file.filename());
  for (const LineProblem& problem : problems.Kept()) {
    const std::string place =
        problem.line == 0 ? std::string(" ") : " " + std::to_string(problem.line) + "行目：";
    Add(name + place + problem.message + "。");
  }
  if (problems.Further() > 0) {
    Add(name + " ほか" + std::to_string(problems.Further()) + "行に問題があります。");
  }
}

base::Result<std::vector<CsvFile>> ListCsvFiles(const fs::path& directory, FileProblems& problems) {
  std::vector<CsvFile> found;
  std::error_code failure;
  for (fs::directory_iterator at(directory, failure), end; !failure && at != end;
       at.increment(failure)) {
    const fs::path& path = at->path();
    if (!IsCsvName(path)) continue;
    const auto code = store::ParseCodeFileStem(base::PathText(path.stem()));
    if (code) {
      found.push_back({*code, path});
    } else {
      problems.Add(base::PathText(path.filename()) + " ファイル名が銘柄コードではありません。");
    }
  }
  if (failure) {
    return base::Fail("ＣＳＶファイルのディレクトリ " + base::PathText(directory) +
                      " を読み込めません。");
  }
  std::sort(found.begin(), found.end(), ComesBefore);
  DropSecondFiles(found, problems);
  return found;
}

std::optional<CsvHistory> ReadCsvHistory(const CsvFile& file, FileProblems& problems) {
  const auto bytes = base::ReadFile(file.path, kLargestCsvHistory);
  if (!bytes) {
    problems.Add(bytes.error().message);
    return std::nullopt;
  }
  return ParseCsvHistory(base::DecodeText(*bytes).text);
}

bool IsCsvHistory(const CsvFile& file) {
  const auto bytes = base::ReadFile(file.path, kLargestCsvHistory);
  return bytes && HasCsvHistoryHeading(base::DecodeText(*bytes).text);
}

}  // namespace orin::acquire
