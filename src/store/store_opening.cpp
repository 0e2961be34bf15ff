#include <sys/stat.h>
#include <thread>

#include "store/store_state.h"

namespace orin::store {

namespace {

using Clock = std::chrono::steady_clock;

bool HasLiveWriter(const StoreLocation& location) {
  return !StoreLock::Acquire(location.system_directory);
}

}  // namespace

base::Status StockStore::State::Recover() {
  const auto recovered = RecoverStore(location, *files);
  if (!recovered) return base::Forward(recovered);
  if (*recovered) recovery_problems.push_back(**recovered);
  return {};
}

base::Status StockStore::State::RecoverForReading(Clock::time_point deadline) {
  // Readers do without the lock, but what a dead writer has begun must be finished by someone.
  const auto recovery_lock = LockForRecovery(location, deadline);
  if (!recovery_lock) return base::Forward(recovery_lock);
  return *recovery_lock ? Recover() : base::Status();
}

std::string StockStore::State::Fingerprint() const {
  std::string text;
  const auto add = [&](const StoreFile& file) {
    struct stat found = {};
    if (stat(PathOf(location, file).c_str(), &found) != 0) return false;
    for (const int64_t number :
         {static_cast<int64_t>(found.st_ino), static_cast<int64_t>(found.st_size),
          static_cast<int64_t>(found.st_mtim.tv_sec),
          static_cast<int64_t>(found.st_mtim.tv_nsec)}) {
      text += std::to_string(number) + " ";
    }
    text += FileName(file) + "\n";
    return true;
  };
  for (const FileKind kind : {FileKind::kMaster, FileKind::kSplits, FileKind::kJournal}) {
    add({kind, 0});
  }
  // Files are numbered without gaps from whatever the oldest one is.
  bool has_begun = false;
  for (int16_t number = 1; number <= kLastFileNumber; ++number) {
    const bool is_there = add(DailyFile(number));
    if (has_begun && !is_there) break;
    has_begun = has_begun || is_there;
  }
  return text;
}

base::Status StockStore::State::OpenForReading() {
  const auto deadline = Clock::now() + kCommitPatience;
  for (;;) {
    if (const auto recovered = RecoverForReading(deadline); !recovered) return recovered;
    fingerprint = Fingerprint();
    const base::Status loaded = Load();
    // A writer may have begun its commit meanwhile; what has been loaded is mixed then.
    if (HasJournal(location)) continue;
    // Or it has begun and ended one.
    if (loaded && Clock::now() < deadline && Fingerprint() != fingerprint) continue;
    if (loaded || Clock::now() >= deadline || !HasLiveWriter(location)) return loaded;
    std::this_thread::sleep_for(kCommitPause);
  }
}

base::Status StockStore::State::OpenForWriting() {
  auto acquired = StoreLock::Acquire(location.system_directory);
  if (!acquired) return base::Forward(acquired);
  lock = std::move(*acquired);
  if (const base::Status recovered = Recover(); !recovered) return recovered;
  if (const auto removed = RemoveLeftovers(location, *files); !removed) return removed;
  fingerprint = Fingerprint();
  return Load();
}

base::Status StockStore::State::Open() {
  std::error_code failure;
  // Without its directory there is nothing to lock or recover; loading says what is missing.
  if (!std::filesystem::is_directory(location.system_directory, failure)) return Load();
  return options.access == Access::kWrite ? OpenForWriting() : OpenForReading();
}

}  // namespace orin::store
