#include <algorithm>
#include <thread>
#include <utility>

#include "store/fingerprint.h"
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

void StockStore::State::TakeAwayLeftovers() {
  const base::Status removed = RemoveLeftovers(location, *files);
  if (removed) return;
  const std::string& problem = removed.error().message;
  const bool is_known = std::ranges::find(recovery_problems, problem) != recovery_problems.end();
  if (!is_known) recovery_problems.push_back(problem);
}

base::Status StockStore::State::RecoverForReading(Clock::time_point deadline) {
  // Readers do without the lock, but what a dead writer has begun must be finished by someone.
  const auto recovery_lock = LockForRecovery(location, deadline);
  if (!recovery_lock) return base::Forward(recovery_lock);
  return *recovery_lock ? Recover() : base::Status();
}

base::Status StockStore::State::OpenForReading() {
  const auto deadline = Clock::now() + kCommitPatience;
  for (;;) {
    if (const auto recovered = RecoverForReading(deadline); !recovered) return recovered;
    std::string before = SettledFingerprintOf(location);
    const base::Status loaded = Load();
    // A writer may have begun its commit meanwhile; what has been loaded is mixed then.
    if (HasJournal(location)) continue;
    // Or it has begun and ended one.
    if (loaded && Clock::now() < deadline && FingerprintOf(location) != before) continue;
    if (loaded || Clock::now() >= deadline || !HasLiveWriter(location)) {
      if (fingerprint.empty()) fingerprint = std::move(before);
      return loaded;
    }
    std::this_thread::sleep_for(kCommitPause);
  }
}

base::Status StockStore::State::OpenForWriting() {
  auto acquired = StoreLock::Acquire(location.system_directory);
  if (!acquired) return base::Forward(acquired);
  lock = std::move(*acquired);
  if (const base::Status recovered = Recover(); !recovered) return recovered;
  TakeAwayLeftovers();
  return Load();
}

base::Status StockStore::State::Open() {
  std::error_code failure;
  // Without its directory there is nothing to lock or recover; loading says what is missing.
  if (!std::filesystem::is_directory(location.system_directory, failure)) return Load();
  return options.access == Access::kWrite ? OpenForWriting() : OpenForReading();
}

}  // namespace orin::store
