#pragma once

#include <filesystem>
#include <memory>

#include "base/file_system.h"
#include "base/result.h"

namespace orin::base {

/// A file in the making that nobody else writes to.
struct TemporaryFile {
  std::filesystem::path path;
  std::unique_ptr<WritableFile> file;
};

/// A new file beside `path`, named NAME.orin-PROCESS-NUMBER.tmp after it and this process. A name
/// that is taken is never opened: it may belong to a process of the same number on another
/// machine.
Result<TemporaryFile> CreateTemporary(FileSystem& files, const std::filesystem::path& path);

/// Removes the temporaries that processes which are gone have left in the directory; to be called
/// while none of this process is in the making. Success where there is no such directory.
Status RemoveLeftTemporaries(FileSystem& files, const std::filesystem::path& directory);

}  // namespace orin::base
