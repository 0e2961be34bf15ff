#include "screening/result_sets.h"

#include <algorithm>
#include <unordered_set>

#include "base/cp932.h"
#include "base/file_system.h"
#include "base/text.h"

namespace orin::screening {

namespace fs = std::filesystem;
using store::StockCode;

namespace {

using CodeSet = std::unordered_set<StockCode, store::StockCodeHash>;

constexpr size_t kMostNotes = 10;

CodeSet SetOf(std::span<const StockCode> codes) { return {codes.begin(), codes.end()}; }

/// The date in the name of a result list.
std::optional<base::Date> DateOfName(const fs::path& list) {
  const std::string name = list.filename().string();
  constexpr size_t kDigits = 8;
  if (name.size() != 1 + kDigits + 4 || !base::EqualsIgnoreCase(name.substr(0, 1), "k") ||
      !base::EqualsIgnoreCase(name.substr(1 + kDigits), ".txt")) {
    return std::nullopt;
  }
  return base::Date::ParseCompact(name.substr(1, kDigits));
}

}  // namespace

ListedCodes ParseList(std::string_view utf8) {
  ListedCodes list;
  CodeSet seen;
  size_t number = 0;
  bool has_title = false;
  bool has_date = false;
  for (const std::string_view line : base::SplitLines(utf8)) {
    ++number;
    const std::string_view mark = line.substr(0, 2);
    // A code may begin so as well; the header lines come first.
    if (!has_title && base::EqualsIgnoreCase(mark, "T:")) {
      has_title = true;
      list.title = base::TrimBlanks(line.substr(2));
    } else if (!has_date && base::EqualsIgnoreCase(mark, "D:")) {
      has_date = true;
      list.date = base::Date::Parse(base::TrimBlanks(line.substr(2)));
    } else if (!base::TrimBlanks(line).empty()) {
      const auto code = StockCode::Parse(base::TrimBlanks(line.substr(0, StockCode::kWidth)));
      if (!code) {
        if (list.notes.size() < kMostNotes) {
          list.notes.push_back(std::to_string(number) + "行目：" + code.error().message);
        }
      } else if (seen.insert(*code).second) {
        list.codes.push_back(*code);
      }
    }
  }
  return list;
}

base::Result<ListedCodes> ReadList(const fs::path& file) {
  const auto bytes = base::ReadFile(file, kLargestList);
  if (!bytes) return base::Forward(bytes);
  return ParseList(base::DecodeText(*bytes).text);
}

std::vector<StockCode> Combine(std::span<const StockCode> here, std::span<const StockCode> other,
                               ListOperation operation) {
  std::vector<StockCode> kept;
  if (operation == ListOperation::kInEither) {
    kept.assign(here.begin(), here.end());
    const CodeSet known = SetOf(here);
    std::ranges::copy_if(other, std::back_inserter(kept),
                         [&known](const StockCode& code) { return !known.contains(code); });
    return kept;
  }
  const CodeSet others = SetOf(other);
  const bool wanted = operation == ListOperation::kInBoth;
  std::ranges::copy_if(here, std::back_inserter(kept),
                       [&](const StockCode& code) { return others.contains(code) == wanted; });
  return kept;
}

std::optional<fs::path> PreviousResultList(const fs::path& list) {
  const auto date = DateOfName(list);
  if (!date) return std::nullopt;
  std::optional<base::Date> newest;
  std::optional<fs::path> found;
  std::error_code failure;
  for (fs::directory_iterator each(list.parent_path(), failure), end; !failure && each != end;
       each.increment(failure)) {
    const auto other = DateOfName(each->path());
    if (!other || *other >= *date || (newest && *other <= *newest)) continue;
    newest = other;
    found = each->path();
  }
  return found;
}

}  // namespace orin::screening
