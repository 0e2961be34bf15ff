#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/lost_pages.h"
#include "base/result.h"

namespace orin::base {

/// A file open for reading and writing at places.
class WritableFile {
 public:
  WritableFile() = default;
  WritableFile(const WritableFile&) = delete;
  WritableFile& operator=(const WritableFile&) = delete;
  virtual ~WritableFile() = default;

  virtual Status WriteAt(int64_t offset, std::string_view bytes) = 0;
  virtual Status Truncate(int64_t length) = 0;
  /// Sets blocks aside for a file of `length` bytes without changing its length, so that a later
  /// write up to there cannot meet a full disk. Success where the system cannot do it.
  virtual Status Reserve(int64_t length) = 0;
  /// Everything written so far is on the disk when this returns.
  virtual Status Sync() = 0;
};

/// Every change the program makes to files goes through here, so that a test can stop the
/// program at any one of them. Failures name the path and the reason.
class FileSystem {
 public:
  FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;
  virtual ~FileSystem() = default;

  /// An existing file for change in place.
  virtual Result<std::unique_ptr<WritableFile>> OpenForUpdate(
      const std::filesystem::path& path) = 0;
  /// A new, empty file; one of the same name is emptied.
  virtual Result<std::unique_ptr<WritableFile>> Create(const std::filesystem::path& path) = 0;
  /// A new, empty file that nobody else has made, locked (flock) until it is closed; a null pointer
  /// where something has its name.
  virtual Result<std::unique_ptr<WritableFile>> CreateNew(const std::filesystem::path& path) = 0;
  virtual Status Rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
  /// Success where there is no such file.
  virtual Status Remove(const std::filesystem::path& path) = 0;
  /// With all missing parents.
  virtual Status MakeDirectory(const std::filesystem::path& path) = 0;
  virtual Status SyncDirectory(const std::filesystem::path& path) = 0;
  /// Who may do what with a file. Touches no contents and no names, so that it can be done at
  /// once on the operating system's own file.
  virtual Status SetPermissions(const std::filesystem::path& path,
                                std::filesystem::perms permissions);
};

/// The operating system's own files.
FileSystem& NativeFileSystem();

/// Who may read a new file: whoever the system's defaults say, or its owner alone.
enum class Readers { kByDefault, kOwner };

/// The file appears whole or not at all: temporary beside it, flush, rename, flush of the
/// directory. The temporary is this call's own, so that of several processes that replace one
/// file the last one wins; it is removed on failure. A file that is there keeps its permissions,
/// and where `path` is a symbolic link, the file it leads to is the one replaced. Refuses where
/// `path` is a directory, a pipe or a device.
Status ReplaceFile(FileSystem& files, const std::filesystem::path& path, std::string_view bytes,
                   Readers readers_of_new_file = Readers::kByDefault);

/// No file that is read whole is larger: the greatest one of a store is a journal of some dozen
/// megabytes.
inline constexpr int64_t kLargestReadFile = int64_t{1} << 30;

/// The whole file; fails where it is missing, is no file or has more than `limit` bytes. What
/// another process adds meanwhile is not read.
Result<std::string> ReadFile(const std::filesystem::path& path, int64_t limit = kLargestReadFile);

/// A file mapped for reading. The mapping ends with the object. A part that is gone from the disk
/// reads as zeros: ask IsWhole after reading what must be right.
class MappedFile {
 public:
  static Result<MappedFile> Open(const std::filesystem::path& path);
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  ~MappedFile();

  [[nodiscard]] std::string_view Bytes() const { return {data_, size_}; }
  /// False once a page has been read that was no longer on the disk, and while the file is
  /// shorter than it was when it was mapped. One that was replaced or removed stays whole.
  [[nodiscard]] bool IsWhole() const;
  /// Gives back the memory of what has been read; reading it again brings it in again.
  void ReleaseMemory() const;

 private:
  MappedFile(std::filesystem::path path, uint64_t device, uint64_t number)
      : path_(std::move(path)), device_(device), number_(number) {}

  std::filesystem::path path_;
  uint64_t device_;
  uint64_t number_;  // of the file on its device
  const char* data_ = nullptr;
  size_t size_ = 0;
  GuardedRange guard_;
};

/// The path for messages, as UTF-8.
std::string PathText(const std::filesystem::path& path);

}  // namespace orin::base
