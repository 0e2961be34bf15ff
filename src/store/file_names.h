#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/stock_code.h"
#include "store/store_location.h"

namespace orin::store {

enum class FileKind {
  kMaster,         // orin.sys
  kNameIndex,      // orin.ind
  kAdded,          // orin.add
  kDeleted,        // orin.del
  kTrendLines,     // orin.lin
  kCompanies,      // orin.fin
  kStatements,     // orin.acc
  kSplits,         // 株式分割.txt
  kJournal,        // orin.jnl
  kSums,           // orin.sum
  kDaily,          // orin001.dat and on
  kDailySums,      // orinc001.dat and on
  kCredit,         // orins001.dat and on
  kIntraday,       // orint001.dat and on
  kNewestRanking,  // orin.rnk
  kRanking,        // orinm000.rnk and on
};

/// The greatest number of a price file, the first being 1, and of a ranking file, the first
/// being 0.
inline constexpr int16_t kLastFileNumber = 999;

/// A file of the store.
struct StoreFile {
  FileKind kind = FileKind::kMaster;
  int16_t number = 0;  // of price and ranking families, 0 for all others

  auto operator<=>(const StoreFile&) const = default;
};

/// A price file.
inline constexpr StoreFile DailyFile(int32_t number) {
  return {FileKind::kDaily, static_cast<int16_t>(number)};
}

// Those that a store has once.
inline constexpr StoreFile kMasterFile{FileKind::kMaster, 0};
inline constexpr StoreFile kIndexFile{FileKind::kNameIndex, 0};
inline constexpr StoreFile kAddedFile{FileKind::kAdded, 0};
inline constexpr StoreFile kDeletedFile{FileKind::kDeleted, 0};
inline constexpr StoreFile kSplitsFile{FileKind::kSplits, 0};
inline constexpr StoreFile kJournalFile{FileKind::kJournal, 0};
inline constexpr StoreFile kSumsFile{FileKind::kSums, 0};
inline constexpr StoreFile kTrendLinesFile{FileKind::kTrendLines, 0};
inline constexpr StoreFile kNewestRankingFile{FileKind::kNewestRanking, 0};
inline constexpr StoreFile kCompaniesFile{FileKind::kCompanies, 0};
inline constexpr StoreFile kStatementsFile{FileKind::kStatements, 0};

/// The name without its directory, UTF-8.
std::string FileName(const StoreFile& file);
/// ASCII letters in any case; nullopt for every other name that FileName never gives.
std::optional<StoreFile> ParseFileName(std::string_view name);

/// The directory the file belongs in.
const std::filesystem::path& DirectoryOf(const StoreLocation& location, const StoreFile& file);
/// Under the name found there, else the usual one.
std::filesystem::path PathOf(const StoreLocation& location, const StoreFile& file);
/// The file's new content until it takes the file's name; the name is the file's with ".tmp".
std::filesystem::path StagedPathOf(const StoreLocation& location, const StoreFile& file);
/// Where damaged content is kept for the user first; the name is the file's with ".bad".
std::filesystem::path SetAsidePathOf(const StoreLocation& location, const StoreFile& file);
/// The name, without its ending, of a file named after a stock: "AAPL", "BF%2FB". Characters that
/// lead out of a directory or that some disk refuses are written as "%" and their number, as are
/// lower-case letters, for disks that do not tell them from upper-case ones.
std::string CodeFileStem(const StockCode& code);
/// The code of such a name; characters may also stand as they are. nullopt where that is no code,
/// and for a name that begins with "." (a hidden file).
std::optional<StockCode> ParseCodeFileStem(std::string_view stem);

/// The store file that a staged file's name stands for; nullopt for any other name.
std::optional<StoreFile> ParseStagedName(std::string_view name);

/// The location with the names of its files as one look at the directories finds them. A file of
/// the usual name goes before others of the same letters. Nothing found where a directory cannot
/// be read.
StoreLocation WithFoundNames(const StoreLocation& location);
/// The files that differ by case alone from one that PathOf names, and so are not used.
std::vector<std::filesystem::path> UnusedNames(const StoreLocation& location);

}  // namespace orin::store
