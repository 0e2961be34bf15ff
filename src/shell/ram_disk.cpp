#include "shell/ram_disk.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "shell/start_up_stages.h"
#include "store/file_names.h"
#include "store/store_lock.h"
#include "store/stored_file.h"
#include "store/transaction.h"

namespace orin::shell {

namespace {

namespace fs = std::filesystem;
using store::FileKind;
using store::StoreFile;
using store::StoreLocation;

constexpr const char* kMarkName = "orin.ram";
// Progress is told after each piece; a hard disk reads this in some tens of milliseconds.
constexpr size_t kPiece = size_t{4} << 20;

int64_t Megabytes(int64_t bytes) {
  constexpr int64_t kMegabyte = 1000000;
  return (bytes + kMegabyte - 1) / kMegabyte;
}

base::Error Sentence(const fs::path& path, const std::string& rest) {
  return {"「" + base::PathText(path) + "」" + rest};
}

base::Status Failure(const fs::path& path, const std::string& rest) {
  return tl::unexpected(Sentence(path, rest));
}

/// The store's files in a directory, without the journal.
std::set<StoreFile> StoreFilesIn(const fs::path& directory) {
  std::set<StoreFile> found;
  std::error_code failure;
  for (fs::directory_iterator entry(directory, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const auto file = store::ParseFileName(entry->path().filename().string());
    if (file && file->kind != FileKind::kJournal) found.insert(*file);
  }
  return found;
}

/// The files of both directories that belong where they are.
std::vector<StoreFile> FilesOf(const StoreLocation& store) {
  std::set<StoreFile> found = StoreFilesIn(store.system_directory);
  found.merge(StoreFilesIn(store.data_directory));
  std::vector<StoreFile> files;
  std::ranges::copy_if(found, std::back_inserter(files),
                       [&store](const StoreFile& file) { return store::Exists(store, file); });
  return files;
}

int64_t SizeOrNone(const fs::path& path) {
  std::error_code failure;
  const auto size = fs::file_size(path, failure);
  return failure ? -1 : static_cast<int64_t>(size);
}

bool IsCopied(const fs::path& from, const fs::path& to) {
  std::error_code failure;
  const auto changed = fs::last_write_time(from, failure);
  if (failure || SizeOrNone(from) != SizeOrNone(to)) return false;
  const auto copied = fs::last_write_time(to, failure);
  return !failure && changed == copied;
}

class Copy {
 public:
  Copy(const StoreLocation& store, const fs::path& directory, base::FileSystem& files,
       base::Progress& progress)
      : store_(store::WithFoundNames(store)),
        copy_(store::WithFoundNames({directory, directory})),
        files_(files),
        progress_(progress) {}

  base::Status Prepare() {
    const fs::path& directory = copy_.system_directory;
    std::error_code failure;
    for (const fs::path& own : {store_.system_directory, store_.data_directory}) {
      if (fs::equivalent(own, directory, failure)) {
        return Failure(directory, "は株価データそのものの場所なので、ＲＡＭディスクにできません。");
      }
    }
    const fs::path above = directory.parent_path();
    if (!fs::is_directory(above, failure)) {
      return Failure(above, "がないので、ＲＡＭディスクを使えません。");
    }
    if (const base::Status made = files_.MakeDirectory(directory); !made) return made;
    return Mark();
  }

  /// kStopped where the user does not want to wait.
  base::Result<RamDiskCopy> Run() {
    if (const base::Status removed = RemoveOthers(); !removed) return base::Forward(removed);
    std::vector<StoreFile> wanted = FilesOf(store_);
    std::erase_if(wanted, [this](const StoreFile& file) {
      return IsCopied(PathOf(store_, file), PathOf(copy_, file));
    });
    for (const StoreFile& file : wanted) total_ += SizeOrNone(PathOf(store_, file));
    for (const StoreFile& file : wanted) {
      const base::Status copied = CopyFile(file);
      if (copied && !stopped_) continue;
      static_cast<void>(files_.Remove(StagedPathOf(copy_, file)));
      if (!copied) return base::Forward(copied);
      return RamDiskCopy::kStopped;
    }
    return RamDiskCopy::kWhole;
  }

 private:
  /// A directory that holds a store of its own must not be written over.
  base::Status Mark() {
    const fs::path& directory = copy_.system_directory;
    const fs::path mark = directory / kMarkName;
    if (store::Exists(mark)) return {};
    if (!StoreFilesIn(directory).empty()) {
      return Failure(directory, "には写しでない株価データがあるので、ＲＡＭディスクにできません。");
    }
    return base::ReplaceFile(files_, mark, base::PathText(store_.system_directory) + "\r\n");
  }

  /// What an earlier copy has left half-way, and files that the store no longer has.
  base::Status RemoveOthers() {
    if (const base::Status removed = store::RemoveLeftovers(copy_, files_); !removed) {
      return removed;
    }
    for (const StoreFile& file : StoreFilesIn(copy_.system_directory)) {
      if (store::Exists(store_, file)) continue;
      if (const base::Status removed = files_.Remove(PathOf(copy_, file)); !removed) return removed;
    }
    return files_.Remove(PathOf(copy_, {FileKind::kJournal, 0}));
  }

  base::Status CopyFile(const StoreFile& file) {
    const fs::path from = PathOf(store_, file);
    const auto source = base::MappedFile::Open(from);
    if (!source) return base::Forward(source);
    const fs::path staged = StagedPathOf(copy_, file);
    base::Status copied = CopyBytes(source->Bytes(), staged);
    if (!copied || stopped_) return copied;
    std::error_code failure;
    fs::last_write_time(staged, fs::last_write_time(from, failure), failure);
    return files_.Rename(staged, PathOf(copy_, file));
  }

  base::Status CopyBytes(std::string_view bytes, const fs::path& staged) {
    const auto file = files_.Create(staged);
    if (!file) return base::Forward(file);
    base::Status status = (*file)->Reserve(static_cast<int64_t>(bytes.size()));
    for (size_t offset = 0; status && !stopped_ && offset < bytes.size(); offset += kPiece) {
      stopped_ = !progress_.Report(kRamDiskStatus, Megabytes(done_), Megabytes(total_));
      const std::string_view piece = bytes.substr(offset, kPiece);
      if (!stopped_) status = (*file)->WriteAt(static_cast<int64_t>(offset), piece);
      done_ += static_cast<int64_t>(piece.size());
    }
    return status;
  }

  StoreLocation store_;
  StoreLocation copy_;
  base::FileSystem& files_;
  base::Progress& progress_;
  int64_t done_ = 0;   // bytes
  int64_t total_ = 0;  // bytes to copy
  bool stopped_ = false;
};

}  // namespace

base::Result<RamDiskCopy> CopyToRamDisk(const StoreLocation& store, const fs::path& directory,
                                        base::FileSystem& files, base::Progress& progress) {
  // A writer at work would leave the copy with files of different days.
  const auto lock = store::StoreLock::Acquire(store.system_directory);
  if (!lock) return base::Forward(lock);
  if (store::HasJournal(store)) {
    return tl::unexpected(
        Sentence(store.system_directory, "の更新が終わっていないので、コピーできません。"));
  }
  Copy copy(store, directory, files, progress);
  if (const base::Status prepared = copy.Prepare(); !prepared) return base::Forward(prepared);
  return copy.Run();
}

void UseRamDisk(StartUpRun& run) {
  ProgramState& state = run.state;
  const std::string& setting = state.settings.bus.ram_disk_directory;
  if (setting.empty()) return;
  run.screen.ShowStatus(kRamDiskStatus);
  const fs::path directory = settings::NativeSetting(state.places, setting);
  const auto copied = CopyToRamDisk(state.StoreLocation(), directory, *state.files, run.screen);
  run.problems.AddFailure(StartUpStep::kRamDisk, copied);
  if (copied && *copied == RamDiskCopy::kWhole) {
    const StoreLocation location = {directory, directory};
    auto opened =
        store::StockStore::Open(location, {store::Access::kRead, {}, &*state.store}, *state.files);
    run.problems.AddFailure(StartUpStep::kRamDisk, opened);
    if (opened) {
      state.store.emplace(std::move(*opened));
      state.ram_disk = state.store->Location();
    }
  }
  run.problems.Show();
}

}  // namespace orin::shell
