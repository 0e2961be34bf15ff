#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "base/profile_file.h"

namespace orin::shell {

/// One of the conditions of a group file.
struct AnalysisGroupEntry {
  std::string title;
  std::string file;    // path setting of its analysis file; empty: no condition here
  bool check = false;  // a run takes it

  bool operator==(const AnalysisGroupEntry&) const = default;
};

/// A group file, by default orin.chk: the conditions of a screening run and which are ticked.
struct AnalysisGroup {
  static constexpr size_t kEntries = 7;

  std::array<AnalysisGroupEntry, kEntries> entries;

  bool operator==(const AnalysisGroup&) const = default;
};

/// Fails where the file is missing or cannot be read.
base::Result<AnalysisGroup> LoadAnalysisGroup(const std::filesystem::path& path);
AnalysisGroup ReadAnalysisGroup(const base::ProfileFile& profile);
void WriteAnalysisGroup(base::ProfileFile& profile, const AnalysisGroup& group);

}  // namespace orin::shell
