#include <cerrno>
#include <sys/mman.h>
#include <utility>

#include "base/file_descriptor.h"
#include "base/file_system.h"
#include "base/system_error.h"

namespace orin::base {

Result<MappedFile> MappedFile::Open(const std::filesystem::path& path) {
  const auto file = OpenRegularFile(path);
  if (!file) return Forward(file);
  // An empty range cannot be mapped.
  if (file->size == 0) return MappedFile(nullptr, 0);
  const auto size = static_cast<size_t>(file->size);
  void* data = mmap(nullptr, size, PROT_READ, MAP_SHARED, file->descriptor.Number(), 0);
  if (data == MAP_FAILED) return FailSystemCall(path, "を読み込めません", errno);
  return MappedFile(static_cast<const char*>(data), size);
}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  return *this;
}

MappedFile::~MappedFile() {
  if (data_ != nullptr) munmap(const_cast<char*>(data_), size_);
}

}  // namespace orin::base
