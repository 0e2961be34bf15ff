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
/// machine. Where the temporary's name would be too long, it has the beginning of NAME.
Result<TemporaryFile> CreateTemporary(FileSystem& files, const std::filesystem::path& path);

/// Removes the temporaries that processes which are gone have left in the directory, but never one
/// that is still open. Fails with the first one that cannot be removed, after it has tried them
/// all. Success where there is no such directory.
Status RemoveLeftTemporaries(FileSystem& files, const std::filesystem::path& directory);

}  // namespace orin::base
