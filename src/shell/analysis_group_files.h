#pragma once

#include <filesystem>
#include <vector>

#include "base/result.h"
#include "settings/analysis_group.h"

namespace orin::shell {

/// The analysis files of a group in entry order. A relative path begins at the program directory
/// or, where there is no such file, at the group file's directory.
struct AnalysisGroupFiles {
  std::vector<std::filesystem::path> all;  // one an entry, empty for an entry without a file
  std::vector<std::filesystem::path> ticked;
};

/// Of a group at hand, whose ticked entries may be none.
AnalysisGroupFiles FilesOfGroup(const settings::AnalysisGroup& group,
                                const std::filesystem::path& group_file,
                                const std::filesystem::path& program_directory);
/// Fails where the group file cannot be read or none of its entries is ticked.
base::Result<AnalysisGroupFiles> FilesOfGroup(const std::filesystem::path& group_file,
                                              const std::filesystem::path& program_directory);

}  // namespace orin::shell
