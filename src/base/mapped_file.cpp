#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <utility>

#include "base/file_descriptor.h"
#include "base/file_system.h"
#include "base/system_error.h"

namespace orin::base {

Result<MappedFile> MappedFile::Open(const std::filesystem::path& path) {
  const auto file = OpenRegularFile(path);
  if (!file) return Forward(file);
  MappedFile mapped(path, file->device, file->number);
  // An empty range cannot be mapped.
  if (file->size == 0) return mapped;
  const auto size = static_cast<size_t>(file->size);
  void* data = mmap(nullptr, size, PROT_READ, MAP_SHARED, file->descriptor.Number(), 0);
  if (data == MAP_FAILED) return FailSystemCall(path, "を読み込めません", errno);
  mapped.data_ = static_cast<const char*>(data);
  mapped.size_ = size;
  mapped.guard_ = GuardedRange(data, size);
  // Without a guard, a file cut short would end the program.
  if (!mapped.guard_.IsGuarded()) return FailSystemCall(path, "を読み込めません", EMFILE);
  return mapped;
}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : path_(std::move(other.path_)),
      device_(other.device_),
      number_(other.number_),
      data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      guard_(std::move(other.guard_)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  std::swap(path_, other.path_);
  std::swap(device_, other.device_);
  std::swap(number_, other.number_);
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  std::swap(guard_, other.guard_);
  return *this;
}

MappedFile::~MappedFile() {
  guard_ = GuardedRange();
  if (data_ != nullptr) munmap(const_cast<char*>(data_), size_);
}

bool MappedFile::IsWhole() const {
  if (guard_.HasLostPage()) return false;
  struct stat now = {};
  if (stat(path_.c_str(), &now) != 0) return true;
  const bool is_same = now.st_dev == device_ && now.st_ino == number_;
  return !is_same || now.st_size >= static_cast<int64_t>(size_);
}

void MappedFile::ReleaseMemory() const {
  if (data_ != nullptr) madvise(const_cast<char*>(data_), size_, MADV_DONTNEED);
}

}  // namespace orin::base
