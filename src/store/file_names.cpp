#include "store/file_names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <set>
#include <system_error>
#include <utility>

#include "base/text.h"

namespace orin::store {

namespace {

struct FixedName {
  FileKind kind;
  std::string_view name;
};

constexpr std::array<FixedName, 11> kFixedNames = {{
    {FileKind::kMaster, "orin.sys"},
    {FileKind::kNameIndex, "orin.ind"},
    {FileKind::kAdded, "orin.add"},
    {FileKind::kDeleted, "orin.del"},
    {FileKind::kTrendLines, "orin.lin"},
    {FileKind::kCompanies, "orin.fin"},
    {FileKind::kStatements, "orin.acc"},
    {FileKind::kSplits, "株式分割.txt"},
    {FileKind::kJournal, "orin.jnl"},
    {FileKind::kSums, "orin.sum"},
    {FileKind::kNewestRanking, "orin.rnk"},
}};

struct Family {
  FileKind kind;
  std::string_view prefix;
  std::string_view suffix;
  int16_t first;
  bool is_of_prices;
};

constexpr std::array<Family, 5> kFamilies = {{
    {FileKind::kDaily, "orin", ".dat", 1, true},
    {FileKind::kDailySums, "orinc", ".dat", 1, true},
    {FileKind::kCredit, "orins", ".dat", 1, true},
    {FileKind::kIntraday, "orint", ".dat", 1, true},
    {FileKind::kRanking, "orinm", ".rnk", 0, false},
}};

constexpr std::string_view kStagedSuffix = ".tmp";
constexpr std::string_view kSetAsideSuffix = ".bad";
constexpr size_t kNumberWidth = 3;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::optional<int16_t> ParseNumber(std::string_view digits) {
  if (digits.size() != kNumberWidth || !std::ranges::all_of(digits, IsDigit)) return std::nullopt;
  int16_t number = 0;
  // Three digits hold the upper bound by themselves.
  for (const char digit : digits) number = static_cast<int16_t>(number * 10 + (digit - '0'));
  return number;
}

constexpr std::string_view kEncodedInStems = "%/\\:*?\"<>|";

bool IsEncodedInStem(char c, bool at_an_end) {
  return kEncodedInStems.find(c) != std::string_view::npos || (c >= 'a' && c <= 'z') ||
         (c == '.' && at_an_end);
}

/// The character of "%2F"; nullopt where `text` does not begin so.
std::optional<char> ParseEncoded(std::string_view text) {
  constexpr size_t kLength = 3;
  if (text.size() < kLength || text.front() != '%') return std::nullopt;
  unsigned char number = 0;
  const char* digits = text.data() + 1;
  const auto [end, failure] = std::from_chars(digits, text.data() + kLength, number, 16);
  if (failure != std::errc{} || end != text.data() + kLength) return std::nullopt;
  return static_cast<char>(number);
}

std::filesystem::path PathFromUtf8(std::string_view name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

/// The store file that a name, or the name of what is kept beside a file, stands for.
std::optional<StoreFile> FileOf(std::string_view name) {
  if (const auto file = ParseFileName(name)) return file;
  for (const std::string_view suffix : {kStagedSuffix, kSetAsideSuffix}) {
    if (base::LowerAscii(name).ends_with(suffix)) {
      return ParseFileName(name.substr(0, name.size() - suffix.size()));
    }
  }
  return std::nullopt;
}

/// The names of the store's files, and of what is kept beside them, that lie where they belong.
std::vector<std::pair<StoreFile, std::string>> NamesIn(const StoreLocation& location) {
  std::vector<std::pair<StoreFile, std::string>> names;
  for (const auto& directory :
       std::set<std::filesystem::path>{location.system_directory, location.data_directory}) {
    std::error_code failure;
    std::filesystem::directory_iterator entry(directory, failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
      const std::u8string u8 = entry->path().filename().u8string();
      std::string name(u8.begin(), u8.end());
      const auto file = FileOf(name);
      if (file && DirectoryOf(location, *file) == directory) {
        names.emplace_back(*file, std::move(name));
      }
    }
  }
  return names;
}

/// A name beside the file's: as it is found there, else the file's own with the suffix.
std::filesystem::path PathBeside(const StoreLocation& location, const StoreFile& file,
                                 std::string_view suffix) {
  const auto found = location.found_names.find(FileName(file) + std::string(suffix));
  if (found != location.found_names.end()) {
    return DirectoryOf(location, file) / PathFromUtf8(found->second);
  }
  std::filesystem::path path = PathOf(location, file);
  path += suffix;
  return path;
}

}  // namespace

std::string FileName(const StoreFile& file) {
  for (const FixedName& fixed : kFixedNames) {
    if (fixed.kind == file.kind) return std::string(fixed.name);
  }
  const auto* family = std::ranges::find(kFamilies, file.kind, &Family::kind);
  std::array<char, 8> digits{};
  std::snprintf(digits.data(), digits.size(), "%03d", file.number);
  return std::string(family->prefix) + digits.data() + std::string(family->suffix);
}

std::optional<StoreFile> ParseFileName(std::string_view any_case) {
  const std::string name = base::LowerAscii(any_case);
  for (const FixedName& fixed : kFixedNames) {
    if (fixed.name == name) return StoreFile{fixed.kind, 0};
  }
  for (const Family& family : kFamilies) {
    if (!name.starts_with(family.prefix) || !name.ends_with(family.suffix)) continue;
    const size_t fixed = family.prefix.size() + family.suffix.size();
    if (name.size() != fixed + kNumberWidth) continue;
    const auto number =
        ParseNumber(std::string_view(name).substr(family.prefix.size(), kNumberWidth));
    if (number && *number >= family.first) return StoreFile{family.kind, *number};
  }
  return std::nullopt;
}

const std::filesystem::path& DirectoryOf(const StoreLocation& location, const StoreFile& file) {
  const auto* family = std::ranges::find(kFamilies, file.kind, &Family::kind);
  const bool is_of_prices = family != kFamilies.end() && family->is_of_prices;
  return is_of_prices ? location.data_directory : location.system_directory;
}

std::filesystem::path PathOf(const StoreLocation& location, const StoreFile& file) {
  const std::string name = FileName(file);
  const auto found = location.found_names.find(name);
  return DirectoryOf(location, file) /
         PathFromUtf8(found == location.found_names.end() ? name : found->second);
}

std::filesystem::path StagedPathOf(const StoreLocation& location, const StoreFile& file) {
  return PathBeside(location, file, kStagedSuffix);
}

std::filesystem::path SetAsidePathOf(const StoreLocation& location, const StoreFile& file) {
  return PathBeside(location, file, kSetAsideSuffix);
}

std::string CodeFileStem(const StockCode& code) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const std::string_view text = code.Text();
  std::string stem;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (IsEncodedInStem(text[i], i == 0 || i + 1 == text.size())) {
      stem += {'%', kDigits[c / kDigits.size()], kDigits[c % kDigits.size()]};
    } else {
      stem += text[i];
    }
  }
  return stem;
}

std::optional<StockCode> ParseCodeFileStem(std::string_view stem) {
  if (stem.starts_with('.')) return std::nullopt;
  std::string text;
  while (!stem.empty()) {
    const auto encoded = ParseEncoded(stem);
    text += encoded.value_or(stem.front());
    stem.remove_prefix(encoded ? 3 : 1);
  }
  // Blanks on the right belong to a field, not to a name.
  if (text.ends_with(' ')) return std::nullopt;
  const auto code = StockCode::Parse(text);
  return code ? std::optional(*code) : std::nullopt;
}

std::optional<StoreFile> ParseStagedName(std::string_view any_case) {
  const std::string name = base::LowerAscii(any_case);
  if (!name.ends_with(kStagedSuffix)) return std::nullopt;
  return ParseFileName(std::string_view(name).substr(0, name.size() - kStagedSuffix.size()));
}

StoreLocation WithFoundNames(const StoreLocation& location) {
  StoreLocation found = location;
  found.found_names.clear();
  std::set<std::string> usual;
  for (const auto& [file, name] : NamesIn(location)) {
    std::string lower = base::LowerAscii(name);
    if (lower == name) {
      usual.insert(std::move(lower));
    } else {
      // Of several, the first in byte order, so that every run takes the same one.
      std::string& kept = found.found_names[std::move(lower)];
      if (kept.empty() || name < kept) kept = name;
    }
  }
  for (const std::string& name : usual) found.found_names.erase(name);
  return found;
}

std::vector<std::filesystem::path> UnusedNames(const StoreLocation& location) {
  std::vector<std::filesystem::path> unused;
  for (const auto& [file, name] : NamesIn(location)) {
    std::filesystem::path path = DirectoryOf(location, file) / PathFromUtf8(name);
    if (ParseFileName(name) && path != PathOf(location, file)) unused.push_back(std::move(path));
  }
  std::ranges::sort(unused);
  return unused;
}

}  // namespace orin::store
