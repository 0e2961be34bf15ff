#pragma once

#include <filesystem>
#include <string>

#include "base/result.h"

namespace orin::store {

/// A system file (orin.sys, orin.ind, orin.add or orin.del, told by the name) as CSV text with a
/// heading, a line a record, as it stands in the file whether it agrees with the others or not.
/// Fails for a file of another name ("…はシステムファイルではありません。") and where it cannot be
/// read.
base::Result<std::string> ListSystemFile(const std::filesystem::path& path);

}  // namespace orin::store
