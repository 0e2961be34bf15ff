#include "store/store_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

#include "base/file_system.h"
#include "base/system_error.h"

namespace orin::store {

base::Result<StoreLock> StoreLock::Acquire(const std::filesystem::path& system_directory) {
  base::FileDescriptor directory =
      base::FileDescriptor::Open(system_directory, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (!directory.IsOpen()) return base::FailSystemCall(system_directory, "を開けません", errno);
  // A lock file would outlive a killed program and would have to be removed by hand.
  const int locked =
      base::RetryInterrupted([&] { return flock(directory.Number(), LOCK_EX | LOCK_NB); });
  if (locked == 0) return StoreLock(std::move(directory));
  if (errno != EWOULDBLOCK) {
    return base::FailSystemCall(system_directory, "を占有できません", errno);
  }
  return base::Fail("他の処理が株価データを更新中です（" + base::PathText(system_directory) +
                    "）。終了してから実行してください。");
}

}  // namespace orin::store
