#pragma once

#include <filesystem>
#include <vector>

#include "base/result.h"
#include "base/table.h"

namespace orin::store {

/// A system file (orin.sys, orin.ind, orin.add or orin.del, told by the name) as a table, a row a
/// record, as it stands in the file whether it agrees with the others or not. orin.sys has its
/// header in a table before that of its stocks.
/// Fails for a file of another name ("…はシステムファイルではありません。") and where it cannot be
/// read.
base::Result<std::vector<base::Table>> ListSystemFile(const std::filesystem::path& path);

}  // namespace orin::store
