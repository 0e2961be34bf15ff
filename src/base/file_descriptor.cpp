#include "base/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "base/system_error.h"

namespace orin::base {

FileDescriptor FileDescriptor::Open(const std::filesystem::path& path, int flags, mode_t mode) {
  return FileDescriptor(
      RetryInterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); }));
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : number_(std::exchange(other.number_, -1)) {}

FileDescriptor::~FileDescriptor() {
  // Nothing to report: whoever needs the bytes on the disk has flushed them before.
  if (number_ >= 0) close(number_);
}

Result<OpenedFile> OpenRegularFile(const std::filesystem::path& path) {
  // Without O_NONBLOCK, opening a pipe would wait for a writer.
  FileDescriptor descriptor = FileDescriptor::Open(path, O_RDONLY | O_NONBLOCK);
  if (!descriptor.IsOpen()) return FailSystemCall(path, "を開けません", errno);
  struct stat about = {};
  if (fstat(descriptor.Number(), &about) != 0) return FailSystemCall(path, "を開けません", errno);
  if (S_ISDIR(about.st_mode)) return FailSystemCall(path, "を開けません", EISDIR);
  if (!S_ISREG(about.st_mode)) {
    return Fail("「" + path.string() + "」は通常のファイルではありません。");
  }
  return OpenedFile{std::move(descriptor), about.st_size, about.st_dev, about.st_ino};
}

}  // namespace orin::base
