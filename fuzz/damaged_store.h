#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "store/store_location.h"

namespace orin::fuzz {

/// A small store in memory whose files an input damages. The input is a list of edits:
///   1 byte   low half and bit 6: the file, as kEditedFiles numbers them (the number wraps round);
///            bits 4 and 5: what to do, 0 replace
///            the content, 1 overwrite at the place, 2 cut (or fill up with zeros) to the place as
///            length, 3 remove the file
///   3 bytes  place in the file, little-endian
///   2 bytes  n, little-endian
///   n bytes  the bytes to write; fewer where the input ends
/// A journal of steps alone is written with the right beginning and checksum.
class DamagedStore {
 public:
  /// The scratch directory is in memory where the system has /dev/shm, and of this process.
  DamagedStore();
  DamagedStore(const DamagedStore&) = delete;
  DamagedStore& operator=(const DamagedStore&) = delete;
  ~DamagedStore();

  [[nodiscard]] const store::StoreLocation& Location() const { return location_; }
  /// Writes the whole store with the input's edits, in place of whatever was there.
  void Write(std::string_view input) const;

 private:
  using Contents = std::map<std::string, std::string>;  // by file name

  std::filesystem::path root_;
  store::StoreLocation location_;
  Contents sound_;
};

/// The native files, but a write behind 1 MiB finds the disk full: a damaged journal may ask for a
/// gigabyte.
class SmallDisk final : public base::FileSystem {
 public:
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
};

}  // namespace orin::fuzz
