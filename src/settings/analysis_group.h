#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "base/file_system.h"
#include "base/profile_file.h"

namespace orin::settings {

/// One of the conditions of a group file.
struct AnalysisGroupEntry {
  std::string title;
  std::string file;    // path setting of its analysis file; empty: no condition here
  bool check = false;  // a run takes it

  bool operator==(const AnalysisGroupEntry&) const = default;
};

/// A column of the user's in the tables of results.
struct AnalysisGroupColumn {
  std::string title;       // empty: the expression stands in its place
  std::string expression;  // empty: no column here

  bool operator==(const AnalysisGroupColumn&) const = default;
};

/// A group file, by default orin.chk: the conditions of a screening run and which are ticked.
struct AnalysisGroup {
  static constexpr size_t kEntries = 7;
  static constexpr size_t kColumns = 5;

  std::array<AnalysisGroupEntry, kEntries> entries;
  std::array<AnalysisGroupColumn, kColumns> columns;

  bool operator==(const AnalysisGroup&) const = default;
};

/// Fails where the file is missing or cannot be read.
base::Result<AnalysisGroup> LoadAnalysisGroup(const std::filesystem::path& path);
/// Into the file as it then stands, so that what else it holds stays; a missing one is made.
base::Status SaveAnalysisGroup(base::FileSystem& files, const std::filesystem::path& path,
                               const AnalysisGroup& group);
AnalysisGroup ReadAnalysisGroup(const base::ProfileFile& profile);
void WriteAnalysisGroup(base::ProfileFile& profile, const AnalysisGroup& group);

}  // namespace orin::settings
