#include "shell/analysis_group_files.h"

#include <system_error>

#include "base/file_system.h"
#include "base/paths.h"
#include "settings/analysis_group.h"

namespace orin::shell {

namespace fs = std::filesystem;

namespace {

fs::path FileOfEntry(const settings::AnalysisGroupEntry& entry, const fs::path& group_file,
                     const fs::path& program_directory) {
  if (entry.file.empty()) return {};
  fs::path file = base::NativePath(entry.file, program_directory);
  std::error_code failure;
  if (fs::exists(file, failure)) return file;
  fs::path beside = base::NativePath(entry.file, group_file.parent_path());
  return fs::exists(beside, failure) ? beside : file;
}

}  // namespace

AnalysisGroupFiles FilesOfGroup(const settings::AnalysisGroup& group, const fs::path& group_file,
                                const fs::path& program_directory) {
  AnalysisGroupFiles files;
  for (const settings::AnalysisGroupEntry& entry : group.entries) {
    files.all.push_back(FileOfEntry(entry, group_file, program_directory));
    if (entry.check && !entry.file.empty()) files.ticked.push_back(files.all.back());
  }
  return files;
}

base::Result<AnalysisGroupFiles> FilesOfGroup(const fs::path& group_file,
                                              const fs::path& program_directory) {
  const auto group = settings::LoadAnalysisGroup(group_file);
  if (!group) return base::Forward(group);
  AnalysisGroupFiles files = FilesOfGroup(*group, group_file, program_directory);
  if (files.ticked.empty()) {
    return base::Fail(base::PathText(group_file) + " に実行する分析ファイルがありません。");
  }
  return files;
}

}  // namespace orin::shell
