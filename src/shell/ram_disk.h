#pragma once

#include <filesystem>
#include <string_view>

#include "base/file_system.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/store_location.h"

namespace orin::shell {

/// The stage of copying, for the logo and for Progress.
inline constexpr std::string_view kRamDiskStatus = "ＲＡＭディスクにファイルをコピー中です。";

enum class RamDiskCopy { kWhole, kStopped };

/// Makes `directory` a copy of the store: its system and price files, both in this one directory.
/// Each file appears whole; files of the same size and time are taken for copied already, and
/// store files that the store does not have are removed. The file orin.ram marks the directory as
/// a copy. Progress counts megabytes.
///
/// Fails, and the copy must not be used, for a full disk; where the directory above is missing;
/// where the directory belongs to the store itself or holds store files that no copy has left
/// there; and while a writer has the store, which waits for its turn as long as the copy takes.
base::Result<RamDiskCopy> CopyToRamDisk(const store::StoreLocation& store,
                                        const std::filesystem::path& directory,
                                        base::FileSystem& files, base::Progress& progress);

}  // namespace orin::shell
