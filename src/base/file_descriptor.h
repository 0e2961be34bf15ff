#pragma once

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <sys/types.h>

#include "base/result.h"

namespace orin::base {

/// Repeats a system call (-1 on failure) that a signal broke off.
template <typename Call>
auto RetryInterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

/// An open file of the operating system, closed with the object.
class FileDescriptor {
 public:
  /// Not open on failure; errno says why. `mode` is that of a file made by O_CREAT.
  static FileDescriptor Open(const std::filesystem::path& path, int flags, mode_t mode = 0);
  /// Closes `number`, which the system has given to the caller; not open below 0.
  static FileDescriptor Own(int number) { return FileDescriptor(number); }
  FileDescriptor(FileDescriptor&& other) noexcept;
  FileDescriptor& operator=(FileDescriptor&&) = delete;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor();

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Number() const { return number_; }

 private:
  explicit FileDescriptor(int number) : number_(number) {}

  int number_;
};

struct OpenedFile {
  FileDescriptor descriptor;
  int64_t size;  // bytes at the time of opening
  uint64_t device;
  uint64_t number;  // of the file on its device
};

/// A file for reading; fails where it is missing or is a directory, a pipe or a device.
Result<OpenedFile> OpenRegularFile(const std::filesystem::path& path);

}  // namespace orin::base
