#include "acquire/market_setup.h"

#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "acquire/csv_update.h"
#include "base/text.h"
#include "store/file_names.h"
#include "store/stock_store.h"
#include "store/store_lock.h"

namespace orin::acquire {

namespace fs = std::filesystem;

namespace {

/// What the directory holds; nothing where it cannot be read.
std::vector<fs::path> EntriesOf(const fs::path& directory) {
  std::vector<fs::path> paths;
  std::error_code failure;
  fs::directory_iterator entry(directory, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    paths.push_back(entry->path());
  }
  return paths;
}

bool Exists(const fs::path& path) {
  std::error_code failure;
  return fs::exists(fs::symlink_status(path, failure));
}

/// A file that only a store writes. A split list may be the user's own, as may old logs.
bool IsOfStoreAlone(std::string_view name) {
  const auto file = store::ParseFileName(name);
  if (file) return file->kind != store::FileKind::kSplits;
  return store::ParseStagedName(name).has_value();
}

bool IsSplitListOrLog(std::string_view name) {
  const auto file = store::ParseFileName(name);
  if (file) return file->kind == store::FileKind::kSplits;
  return name.starts_with('K') && name.ends_with(".LOG");
}

/// The files in the store's directories that `is_meant` says of their names.
std::set<fs::path> FilesOf(const store::StoreLocation& location,
                           bool (*is_meant)(std::string_view)) {
  std::set<fs::path> files;
  for (const auto& directory : {location.system_directory, location.data_directory}) {
    for (const fs::path& path : EntriesOf(directory)) {
      if (is_meant(base::PathText(path.filename()))) files.insert(path);
    }
  }
  return files;
}

/// Takes away what was made of a store. That the making failed is what the user must hear, not
/// what comes of this.
void TakeAway(const store::StoreLocation& location, const std::set<fs::path>& users_own,
              base::FileSystem& files) {
  // Another process may have been faster at making a store here.
  const auto lock = store::StoreLock::Acquire(location.system_directory);
  if (!lock) return;
  for (const fs::path& path : FilesOf(location, IsOfStoreAlone)) {
    static_cast<void>(files.Remove(path));
  }
  for (const fs::path& path : FilesOf(location, IsSplitListOrLog)) {
    if (!users_own.contains(path)) static_cast<void>(files.Remove(path));
  }
}

base::Result<MarketSummary> Fill(const store::StoreLocation& location, const MarketSource& source,
                                 base::FileSystem& files, base::Progress& progress) {
  if (!source.quotes) return MarketSummary{};
  auto store = store::StockStore::Open(location, {store::Access::kWrite, {}}, files);
  if (!store) return base::Forward(store);
  const auto summary =
      UpdateFromCsv(*store, {*source.quotes, {}, source.stock_list}, files, progress);
  if (!summary) return base::Forward(summary);
  return MarketSummary{static_cast<int32_t>(store->Master().Stocks().size()), summary->days,
                       summary->stopped, summary->problems};
}

/// Copies files and remembers which, until the copy is known to be whole.
class Copying {
 public:
  explicit Copying(base::FileSystem& files) : files_(files) {}

  base::Status CopyTree(const fs::path& from, const fs::path& to) {
    if (const auto made = files_.MakeDirectory(to); !made) return made;
    for (const fs::path& path : EntriesOf(from)) {
      std::error_code failure;
      const fs::path target = to / path.filename();
      const auto copied =
          fs::is_directory(path, failure) ? CopyTree(path, target) : CopyFile(path, target);
      if (!copied) return copied;
    }
    return {};
  }

  void TakeAway() {
    for (const fs::path& path : made_) static_cast<void>(files_.Remove(path));
  }

 private:
  base::Status CopyFile(const fs::path& from, const fs::path& to) {
    if (Exists(to)) return {};
    const auto bytes = base::ReadFile(from);
    if (!bytes) return base::Forward(bytes);
    made_.push_back(to);
    return base::ReplaceFile(files_, to, *bytes);
  }

  base::FileSystem& files_;
  std::vector<fs::path> made_;
};

/// An analysis file of the demo writes its lists into patrol/<its name>.
base::Status MakeResultDirectories(const fs::path& demo, const fs::path& program_directory,
                                   base::FileSystem& files) {
  for (const fs::path& analysis : EntriesOf(demo / "analysis")) {
    const auto made = files.MakeDirectory(program_directory / "patrol" / analysis.stem());
    if (!made) return made;
  }
  return {};
}

}  // namespace

base::Result<MarketSummary> SetUpMarket(const store::StoreLocation& location,
                                        const MarketSource& source, base::FileSystem& files,
                                        base::Progress& progress) {
  const std::set<fs::path> users_own = FilesOf(location, IsSplitListOrLog);
  const std::set<fs::path> before = FilesOf(location, IsOfStoreAlone);
  if (const auto created = store::StockStore::Create(location, files); !created) {
    // Refused or broken off: without an orin.sys there is nothing here that anyone could miss.
    const fs::path master = store::PathOf(location, {store::FileKind::kMaster, 0});
    if (before.empty() && !Exists(master)) TakeAway(location, users_own, files);
    return base::Forward(created);
  }
  auto summary = Fill(location, source, files, progress);
  // Create would have refused had there been anything of a store but empty remains.
  if (!summary) TakeAway(location, users_own, files);
  return summary;
}

base::Status CopyDemoFiles(const fs::path& demo, const fs::path& program_directory,
                           base::FileSystem& files) {
  std::error_code failure;
  if (!fs::is_directory(demo, failure)) {
    return base::Fail("見本市場のディレクトリ " + base::PathText(demo) + " がありません。");
  }
  Copying copying(files);
  auto copied = copying.CopyTree(demo, program_directory);
  if (copied) copied = MakeResultDirectories(demo, program_directory, files);
  if (!copied) copying.TakeAway();
  return copied;
}

}  // namespace orin::acquire
