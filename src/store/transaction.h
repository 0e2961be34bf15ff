#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "base/result.h"
#include "store/file_names.h"
#include "store/journal_format.h"
#include "store/store_lock.h"

namespace orin::store {

/// Changes to several files of the store that happen all or not at all. They are written down in
/// the journal first; the rename that gives the journal its name is the commit. Then they are
/// made and the journal is removed. The caller holds the StoreLock.
class Transaction {
 public:
  Transaction(const StoreLocation& location, base::FileSystem& files);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  /// Removes staged files of a transaction that was not committed.
  ~Transaction();

  /// Into an existing file, which grows where need be. The steps of one file are made in order;
  /// a file is either written to or replaced in one transaction.
  void Write(const StoreFile& file, int64_t offset, std::string_view bytes);
  void Fill(const StoreFile& file, int64_t offset, std::string_view pattern, int64_t times);
  void Remove(const StoreFile& file);
  /// The file's new content as a whole, on the disk beside it when this returns.
  base::Status Replace(const StoreFile& file, std::string_view bytes);
  /// The same for content too large for memory: write it to the file returned, Sync it.
  base::Result<std::unique_ptr<base::WritableFile>> Stage(const StoreFile& file);

  /// With failure nothing has changed, unless InDoubt(). Nothing to do is success.
  base::Status Commit();
  /// The commit may have happened, but was not carried out to the end: nothing may be written to
  /// the store before RecoverStore has succeeded.
  [[nodiscard]] bool InDoubt() const { return in_doubt_; }

 private:
  base::Status ReserveGrowth(const std::vector<JournalStep>& steps);
  base::Status SyncStaged();
  base::Status WriteJournal(std::string_view bytes);

  using OpenFiles = std::map<StoreFile, std::unique_ptr<base::WritableFile>>;

  const StoreLocation& location_;
  base::FileSystem& files_;
  JournalWriter journal_;
  std::set<StoreFile> staged_;
  OpenFiles open_;
  bool in_doubt_ = false;
};

/// Whether a transaction was committed and not carried out to the end.
bool HasJournal(const StoreLocation& location);

/// Carries out the journal; success where there is none. A damaged one gets a name of
/// FreeAsidePath and is told in a sentence, the result. The caller holds the StoreLock.
base::Result<std::optional<std::string>> RecoverStore(const StoreLocation& location,
                                                      base::FileSystem& files);

/// How long a reader waits for a live writer to carry out its journal, and between two looks.
inline constexpr std::chrono::seconds kCommitPatience{3};
inline constexpr std::chrono::milliseconds kCommitPause{20};

/// Waits while a live writer carries out its journal, until `deadline` at most. The lock where a
/// dead one has left a journal behind, none where there is nothing to recover.
base::Result<std::optional<StoreLock>> LockForRecovery(
    const StoreLocation& location, std::chrono::steady_clock::time_point deadline);

/// Removes staged files that no journal asks for, and temporaries of processes that are gone. Fails
/// with the first that cannot be removed, after it has tried them all; none of them hinders a
/// writer. The caller holds the StoreLock and has recovered the store.
base::Status RemoveLeftovers(const StoreLocation& location, base::FileSystem& files);

}  // namespace orin::store
