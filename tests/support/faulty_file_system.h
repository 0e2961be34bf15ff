#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "base/file_system.h"

namespace orin::support {

/// What a power failure takes back. A disk is free to have kept or lost whatever was not flushed,
/// so that a writer must stand each of these.
enum class Loss {
  kNothing,         // the program died, the system goes on
  kWrites,          // writes and truncations after the file's last Sync
  kWritesAndNames,  // and files made, renamed or removed after the directory's last SyncDirectory
};

/// Real files with faults. Every changing operation counts: open for update, create, write,
/// truncate, reserve, sync, rename, remove, make directory, sync directory. To stop a job at
/// each of its operations:
///   for (int64_t n = 1;; ++n) {
///     FaultyFileSystem files;
///     files.DieAt(n);
///     Job(files);
///     Check();
///     if (!files.IsDead()) break;
///   }
class FaultyFileSystem final : public base::FileSystem {
 public:
  FaultyFileSystem();
  ~FaultyFileSystem() override;

  /// The n-th operation (from 1) and all after it fail without effect.
  void DieAt(int64_t operation) { die_at_ = operation; }
  /// The write at which the file system dies puts its first half into the file when it is longer
  /// than a disk sector of 512 bytes.
  void TearLastWrite() { torn_ = true; }
  void LoseOnDeath(Loss loss) { loss_ = loss; }
  /// Once files have grown by `bytes` in all, writes beyond a file's end and reservations fail;
  /// everything else goes on working. A write that fits in part is done in part. Removing a
  /// file gives nothing back.
  void LimitGrowth(int64_t bytes) { space_ = bytes; }

  [[nodiscard]] int64_t Operations() const { return operations_; }
  [[nodiscard]] bool IsDead() const { return die_at_ > 0 && operations_ >= die_at_; }

  base::Result<std::unique_ptr<base::WritableFile>> OpenForUpdate(
      const std::filesystem::path& path) override;
  base::Result<std::unique_ptr<base::WritableFile>> Create(
      const std::filesystem::path& path) override;
  base::Result<std::unique_ptr<base::WritableFile>> CreateNew(
      const std::filesystem::path& path) override;
  base::Status Rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  base::Status Remove(const std::filesystem::path& path) override;
  base::Status MakeDirectory(const std::filesystem::path& path) override;
  base::Status SyncDirectory(const std::filesystem::path& path) override;

 private:
  class File;

  /// Where a file is now; it follows renames.
  using Place = std::shared_ptr<std::filesystem::path>;

  /// Something that is not on the disk yet.
  struct Pending {
    Place file;                       // for contents
    std::filesystem::path directory;  // for names
    std::function<void()> undo;
  };

  base::Status Begin();
  Place PlaceOf(const std::filesystem::path& path);
  void PendContents(const Place& file, std::function<void()> undo);
  void PendName(const std::filesystem::path& path, std::function<void()> undo);
  void ContentsAreSafe(const Place& file);
  /// Grants up to `bytes` of growth.
  int64_t TakeSpace(int64_t bytes);

  int64_t operations_ = 0;
  int64_t die_at_ = 0;
  bool torn_ = false;
  Loss loss_ = Loss::kNothing;
  std::optional<int64_t> space_;
  std::map<std::filesystem::path, Place> places_;
  std::vector<Pending> pending_;  // oldest first
};

}  // namespace orin::support
