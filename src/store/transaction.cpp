#include "store/transaction.h"

#include <algorithm>
#include <thread>

#include "base/temporary_file.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

using OpenFiles = std::map<StoreFile, std::unique_ptr<base::WritableFile>>;

// New slots of a whole market are a hundred megabytes of the same entry.
constexpr size_t kFillBuffer = size_t{1} << 18;

base::Result<base::WritableFile*> OpenOnce(const StoreLocation& location, const StoreFile& file,
                                           base::FileSystem& files, OpenFiles& open) {
  auto& opened = open[file];
  if (!opened) {
    auto result = files.OpenForUpdate(PathOf(location, file));
    if (!result) return base::Forward(result);
    opened = std::move(*result);
  }
  return opened.get();
}

base::Status WriteStep(const JournalStep& step, base::WritableFile& file) {
  if (step.times == 1) return file.WriteAt(step.offset, step.bytes);
  const auto length = static_cast<int64_t>(step.bytes.size());
  const auto at_once =
      std::clamp<int64_t>(static_cast<int64_t>(kFillBuffer) / length, 1, step.times);
  std::string buffer;
  for (int64_t i = 0; i < at_once; ++i) buffer += step.bytes;
  int64_t offset = step.offset;
  for (int64_t left = step.times; left > 0; left -= at_once) {
    const int64_t size = std::min(left, at_once) * length;
    const base::Status written =
        file.WriteAt(offset, std::string_view(buffer).substr(0, static_cast<size_t>(size)));
    if (!written) return written;
    offset += size;
  }
  return {};
}

/// Makes the changes of a committed journal, as often as it takes.
class Replay {
 public:
  Replay(const StoreLocation& location, base::FileSystem& files, OpenFiles& open)
      : location_(location), files_(files), open_(open) {}

  base::Status Run(const std::vector<JournalStep>& steps) {
    for (const JournalStep& step : steps) {
      if (const base::Status made = Make(step); !made) return made;
    }
    // The journal goes only after everything it stands for is on the disk.
    for (const auto& [file, opened] : open_) {
      if (const base::Status synced = opened->Sync(); !synced) return synced;
    }
    for (const std::filesystem::path& directory : directories_) {
      if (const base::Status synced = files_.SyncDirectory(directory); !synced) return synced;
    }
    if (const base::Status removed = files_.Remove(PathOf(location_, kJournalFile)); !removed) {
      return removed;
    }
    return files_.SyncDirectory(location_.system_directory);
  }

 private:
  base::Status Make(const JournalStep& step) {
    const std::filesystem::path path = PathOf(location_, step.file);
    switch (step.kind) {
      case JournalStep::Kind::kWrite: {
        const auto file = OpenOnce(location_, step.file, files_, open_);
        return file ? WriteStep(step, **file) : base::Forward(file);
      }
      case JournalStep::Kind::kReplace: {
        directories_.insert(DirectoryOf(location_, step.file));
        const std::filesystem::path staged = StagedPathOf(location_, step.file);
        // No longer there: an earlier run has renamed it.
        return Exists(staged) ? files_.Rename(staged, path) : base::Status();
      }
      case JournalStep::Kind::kRemove:
        directories_.insert(DirectoryOf(location_, step.file));
        return files_.Remove(path);
    }
    return {};
  }

  const StoreLocation& location_;
  base::FileSystem& files_;
  OpenFiles& open_;
  std::set<std::filesystem::path> directories_;
};

/// The staged files of one directory, with regard to what lies there now.
base::Status RemoveStaged(const std::filesystem::path& directory, base::FileSystem& files) {
  std::error_code failure;
  std::vector<std::filesystem::path> leftovers;
  std::filesystem::directory_iterator entry(directory, failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    const std::u8string name = entry->path().filename().u8string();
    if (ParseStagedName(std::string(name.begin(), name.end()))) leftovers.push_back(entry->path());
  }
  base::Status status;
  for (const std::filesystem::path& path : leftovers) {
    const base::Status removed = files.Remove(path);
    if (status && !removed) status = removed;
  }
  return status;
}

using Recovery = base::Result<std::optional<std::string>>;

Recovery WithoutSentence(const base::Status& status) {
  return status ? Recovery(std::nullopt) : base::Forward(status);
}

Recovery SetJournalAside(const StoreLocation& location, base::FileSystem& files) {
  const std::filesystem::path path = PathOf(location, kJournalFile);
  const std::filesystem::path aside = FreeAsidePath(SetAsidePathOf(location, kJournalFile));
  base::Status status = files.Rename(path, aside);
  if (status) status = files.SyncDirectory(location.system_directory);
  if (!status) return base::Forward(status);
  return "「" + base::PathText(path) + "」が壊れているため、書かれていた更新を行わずに「" +
         base::PathText(aside) + "」に名前を変えました。";
}

}  // namespace

Transaction::Transaction(const StoreLocation& location, base::FileSystem& files)
    : location_(location), files_(files) {}

Transaction::~Transaction() {
  if (in_doubt_) return;
  for (const StoreFile& file : staged_) {
    // Whatever stays is removed by the next start.
    static_cast<void>(files_.Remove(StagedPathOf(location_, file)));
  }
}

void Transaction::Write(const StoreFile& file, int64_t offset, std::string_view bytes) {
  journal_.Add({JournalStep::Kind::kWrite, file, offset, 1, bytes});
}

void Transaction::Fill(const StoreFile& file, int64_t offset, std::string_view pattern,
                       int64_t times) {
  journal_.Add({JournalStep::Kind::kWrite, file, offset, times, pattern});
}

void Transaction::Remove(const StoreFile& file) {
  journal_.Add({JournalStep::Kind::kRemove, file, 0, 1, {}});
}

base::Result<std::unique_ptr<base::WritableFile>> Transaction::Stage(const StoreFile& file) {
  staged_.insert(file);
  journal_.Add({JournalStep::Kind::kReplace, file, 0, 1, {}});
  return files_.Create(StagedPathOf(location_, file));
}

base::Status Transaction::Replace(const StoreFile& file, std::string_view bytes) {
  const auto staged = Stage(file);
  if (!staged) return base::Forward(staged);
  if (const base::Status written = (*staged)->WriteAt(0, bytes); !written) return written;
  return (*staged)->Sync();
}

base::Status Transaction::ReserveGrowth(const std::vector<JournalStep>& steps) {
  std::map<StoreFile, int64_t> ends;
  for (const JournalStep& step : steps) {
    if (step.kind != JournalStep::Kind::kWrite) continue;
    ends[step.file] = std::max(ends[step.file], step.End());
  }
  for (const auto& [file, end] : ends) {
    const auto opened = OpenOnce(location_, file, files_, open_);
    if (!opened) return base::Forward(opened);
    std::error_code failure;
    // Only growth can meet a full disk; what is overwritten has its blocks.
    const auto length = std::filesystem::file_size(PathOf(location_, file), failure);
    if (!failure && end <= static_cast<int64_t>(length)) continue;
    if (const base::Status reserved = (*opened)->Reserve(end); !reserved) return reserved;
  }
  return {};
}

base::Status Transaction::SyncStaged() {
  std::set<std::filesystem::path> directories;
  for (const StoreFile& file : staged_) directories.insert(DirectoryOf(location_, file));
  for (const std::filesystem::path& directory : directories) {
    if (const base::Status synced = files_.SyncDirectory(directory); !synced) return synced;
  }
  return {};
}

base::Status Transaction::WriteJournal(std::string_view bytes) {
  const std::filesystem::path staged_path = StagedPathOf(location_, kJournalFile);
  const auto staged = files_.Create(staged_path);
  if (!staged) return base::Forward(staged);
  base::Status status = (*staged)->WriteAt(0, bytes);
  if (status) status = (*staged)->Sync();
  if (status) status = files_.Rename(staged_path, PathOf(location_, kJournalFile));
  if (!status) {
    static_cast<void>(files_.Remove(staged_path));
    return status;
  }
  // From the rename on the journal may be found by the next start.
  in_doubt_ = true;
  return files_.SyncDirectory(location_.system_directory);
}

base::Status Transaction::Commit() {
  if (journal_.IsEmpty()) return {};
  const std::string bytes = journal_.Finish();
  const auto steps = DecodeJournal(bytes);
  if (!steps) return base::Forward(steps);
  // Everything that can fail for want of space comes before the commit.
  if (const base::Status reserved = ReserveGrowth(*steps); !reserved) return reserved;
  if (const base::Status synced = SyncStaged(); !synced) return synced;
  if (const base::Status written = WriteJournal(bytes); !written) return written;
  if (const base::Status made = Replay(location_, files_, open_).Run(*steps); !made) return made;
  in_doubt_ = false;
  staged_.clear();
  return {};
}

bool HasJournal(const StoreLocation& location) { return Exists(location, kJournalFile); }

base::Result<std::optional<std::string>> RecoverStore(const StoreLocation& location,
                                                      base::FileSystem& files) {
  // A journal whose removal is not on the disk yet could come back after later changes.
  if (!HasJournal(location)) return WithoutSentence(files.SyncDirectory(location.system_directory));
  const std::filesystem::path path = PathOf(location, kJournalFile);
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  const auto steps = DecodeJournal(*bytes);
  // It was written whole before it got its name, so this is later damage, and what it would do
  // cannot be known.
  if (!steps) return SetJournalAside(location, files);
  OpenFiles open;
  return WithoutSentence(Replay(location, files, open).Run(*steps));
}

base::Result<std::optional<StoreLock>> LockForRecovery(
    const StoreLocation& location, std::chrono::steady_clock::time_point deadline) {
  while (HasJournal(location)) {
    auto lock = StoreLock::Acquire(location.system_directory);
    if (lock) return std::move(*lock);
    if (std::chrono::steady_clock::now() >= deadline) return base::Forward(lock);
    std::this_thread::sleep_for(kCommitPause);
  }
  return std::nullopt;
}

base::Status RemoveLeftovers(const StoreLocation& location, base::FileSystem& files) {
  base::Status status;
  for (const auto& directory : {location.system_directory, location.data_directory}) {
    for (const base::Status& removed :
         {RemoveStaged(directory, files), base::RemoveLeftTemporaries(files, directory)}) {
      if (status && !removed) status = removed;
    }
  }
  return status;
}

}  // namespace orin::store
