#include <algorithm>
#include <span>
#include <vector>

#include "store/companion_formats.h"
#include "store/companion_sums.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/stock_store.h"
#include "store/store_lock.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

struct NewFile {
  StoreFile file;
  std::string bytes;
};

/// The files of an empty store in the order of their making. orin.sys comes last: it is what
/// makes the directory a store.
base::Result<std::vector<NewFile>> EmptyStore() {
  const auto no_stocks = EncodeStockList(StockList());
  if (!no_stocks) return base::Forward(no_stocks);
  const auto no_splits = SplitList().Serialize();
  if (!no_splits) return base::Forward(no_splits);
  const MasterRecordBytes header = EncodeMasterHeader(MasterHeader());
  std::vector<NewFile> made = {{{FileKind::kNameIndex, 0}, ""},
                               {{FileKind::kAdded, 0}, *no_stocks},
                               {{FileKind::kDeleted, 0}, *no_stocks},
                               {kSplitsFile, *no_splits},
                               {{FileKind::kMaster, 0}, std::string(AsText(header))}};
  CompanionSums sums;
  for (const SummedCompanion& companion : kSummedCompanions) {
    const auto file = std::ranges::find(made, StoreFile{companion.kind, 0}, &NewFile::file);
    if (file != made.end()) sums.Set(companion.kind, SumOfCompanion(companion, file->bytes));
  }
  made.insert(made.end() - 1, {kSumsFile, sums.Encode()});
  return made;
}

base::Status Refuse(const std::filesystem::path& path) {
  return base::Fail("「" + base::PathText(path) + "」がすでにあります。");
}

/// Files that the new store would take for its own.
bool IsOfAnotherStore(std::string_view name) {
  const auto file = ParseFileName(name);
  // Checksums are made from the other files and are worth nothing without them.
  return file && file->kind != FileKind::kDailySums &&
         (file->number > 0 || file->kind == FileKind::kTrendLines ||
          file->kind == FileKind::kCompanies || file->kind == FileKind::kStatements ||
          file->kind == FileKind::kNewestRanking || file->kind == FileKind::kRanking ||
          file->kind == FileKind::kJournal);
}

base::Status CheckDirectory(const std::filesystem::path& directory) {
  std::error_code failure;
  std::filesystem::directory_iterator entry(directory, failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    const std::u8string name = entry->path().filename().u8string();
    if (IsOfAnotherStore(std::string(name.begin(), name.end()))) return Refuse(entry->path());
  }
  return {};
}

/// Fails where there is anything that a user could miss.
base::Status CheckNothingIsThere(const StoreLocation& location,
                                 std::span<const NewFile> new_files) {
  for (const NewFile& made : new_files) {
    const std::filesystem::path path = PathOf(location, made.file);
    // The user's split list stays and becomes that of the new store.
    if (made.file == kSplitsFile || made.file == kSumsFile || !Exists(path)) continue;
    const auto bytes = base::ReadFile(path);
    // Companions as they are made here, without an orin.sys: the making was broken off.
    const bool is_remains = made.file.kind != FileKind::kMaster && bytes && *bytes == made.bytes;
    if (!is_remains) return Refuse(path);
  }
  for (const auto& directory : {location.system_directory, location.data_directory}) {
    if (const base::Status checked = CheckDirectory(directory); !checked) return checked;
  }
  return {};
}

base::Status MakeFiles(const StoreLocation& location, std::span<const NewFile> new_files,
                       base::FileSystem& files) {
  for (const NewFile& made : new_files) {
    const std::filesystem::path path = PathOf(location, made.file);
    if (made.file == kSplitsFile && Exists(path)) continue;
    const base::Status replaced = base::ReplaceFile(files, path, made.bytes);
    if (!replaced) return replaced;
  }
  return {};
}

}  // namespace

base::Status StockStore::Create(const StoreLocation& directories, base::FileSystem& files) {
  const StoreLocation location = WithFoundNames(directories);
  const auto new_files = EmptyStore();
  if (!new_files) return base::Forward(new_files);
  // First without the lock, which needs the directory: a refusal makes nothing.
  if (const auto free = CheckNothingIsThere(location, *new_files); !free) return free;
  for (const auto& directory : {location.system_directory, location.data_directory}) {
    if (const base::Status made = files.MakeDirectory(directory); !made) return made;
  }
  const auto lock = StoreLock::Acquire(location.system_directory);
  if (!lock) return base::Forward(lock);
  if (const auto free = CheckNothingIsThere(location, *new_files); !free) return free;
  return MakeFiles(location, *new_files, files);
}

}  // namespace orin::store
