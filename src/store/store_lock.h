#pragma once

#include <filesystem>
#include <memory>

#include "base/file_descriptor.h"
#include "base/result.h"

namespace orin::store {

/// The right to change the store, one process at a time. It is a lock of the operating system on
/// the system directory itself: it leaves no file behind and ends with the process.
class StoreLock {
 public:
  /// Holds nothing.
  StoreLock() = default;
  /// Does not wait; fails with a sentence for the user where another process has the lock.
  static base::Result<StoreLock> Acquire(const std::filesystem::path& system_directory);

 private:
  explicit StoreLock(base::FileDescriptor directory)
      : directory_(std::make_unique<base::FileDescriptor>(std::move(directory))) {}

  std::unique_ptr<base::FileDescriptor> directory_;  // closing it gives the lock back
};

}  // namespace orin::store
