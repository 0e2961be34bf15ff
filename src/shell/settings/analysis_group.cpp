#include "shell/settings/analysis_group.h"

#include "shell/settings/key_table.h"

namespace orin::shell {

namespace {

/// A section holds one member of all entries; the key ends in the entry's number from 1.
struct SectionRow {
  std::string_view section;
  std::string_view key_stem;
  std::string AnalysisGroupEntry::*member;
};

constexpr std::array kRows = {
    SectionRow{"Title", "checktitle", &AnalysisGroupEntry::title},
    SectionRow{"File", "checkfile", &AnalysisGroupEntry::file},
    SectionRow{"Check", "check", &AnalysisGroupEntry::check},
};

std::string KeyOf(const SectionRow& row, size_t position) {
  return std::string(row.key_stem) + std::to_string(position + 1);
}

}  // namespace

bool AnalysisGroupEntry::IsTicked() const { return shell::IsTicked(check); }

base::Result<AnalysisGroup> LoadAnalysisGroup(const std::filesystem::path& path) {
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  return ReadAnalysisGroup(base::ProfileFile::Parse(*bytes));
}

AnalysisGroup ReadAnalysisGroup(const base::ProfileFile& profile) {
  AnalysisGroup group;
  for (const SectionRow& row : kRows) {
    for (size_t i = 0; i < group.entries.size(); ++i) {
      std::string& value = group.entries[i].*row.member;
      value = profile.Get(row.section, KeyOf(row, i), value);
    }
  }
  return group;
}

void WriteAnalysisGroup(base::ProfileFile& profile, const AnalysisGroup& group) {
  for (const SectionRow& row : kRows) {
    for (size_t i = 0; i < group.entries.size(); ++i) {
      AnalysisGroupEntry entry = group.entries[i];
      entry.check = TextOf(entry.IsTicked());
      profile.Set(row.section, KeyOf(row, i), entry.*row.member);
    }
  }
}

}  // namespace orin::shell
