#include "shell/settings/analysis_group.h"

#include "base/file_system.h"
#include "shell/settings/setting_tables.h"

namespace orin::shell {

namespace {

KeyHeading<AnalysisGroup> EntryRows(size_t i) {
  const std::string number = std::to_string(i + 1);
  return {"条件" + number,
          {{"checktitle" + number, [i](auto& g) -> auto& {return g.entries[i].title;
}
, "", Text(), "題名", "株価分析の画面に表示する条件の題名です。", "Title"
}  // namespace
, {"checkfile" + number, [i](auto& g) -> auto& {return g.entries[i].file;
}  // namespace orin::shell
, "", File(), "分析ファイル", "条件を書いた分析ファイルです。空ならこの条件はありません。", "File"
}
, {
  "check" + number, [i](auto& g) -> auto& { return g.entries[i].check; }
  , "0", Check(), "この条件で分析する", "オンの条件を株価分析で順に実行します。", "Check"
}
}
}
;
}

KeyTable<AnalysisGroup> MakeTable() {
  KeyPage<AnalysisGroup> page{"株価分析グループ", {}};
  for (size_t i = 0; i < AnalysisGroup::kEntries; ++i) page.headings.push_back(EntryRows(i));
  return {"orin.chk", "Title", {std::move(page)}};
}

}  // namespace

const KeyTable<AnalysisGroup>& AnalysisGroupTable() {
  static const KeyTable<AnalysisGroup> table = MakeTable();
  return table;
}

base::Result<AnalysisGroup> LoadAnalysisGroup(const std::filesystem::path& path) {
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  return ReadAnalysisGroup(base::ProfileFile::Parse(*bytes));
}

AnalysisGroup ReadAnalysisGroup(const base::ProfileFile& profile) {
  return ReadGroup(profile, AnalysisGroupTable());
}

void WriteAnalysisGroup(base::ProfileFile& profile, const AnalysisGroup& group) {
  WriteGroup(profile, AnalysisGroupTable(), group);
}

}  // namespace orin::shell
