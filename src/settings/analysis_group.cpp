#include "settings/analysis_group.h"

#include "base/profile_file.h"
#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr std::string_view kColumnSection = "Column";

KeyHeading<AnalysisGroup> EntryRows(size_t i) {
  using Entry = AnalysisGroupEntry;
  const std::string number = std::to_string(i + 1);
  return {"条件" + number,
          {{"checktitle" + number, Numbered(&AnalysisGroup::entries, i, &Entry::title), "", Text(),
            "題名", "株価分析の画面に表示する条件の題名です。", "Title"},
           {"checkfile" + number, Numbered(&AnalysisGroup::entries, i, &Entry::file), "", File(),
            "分析ファイル", "条件を書いた分析ファイルです。空ならこの条件はありません。", "File"},
           {"check" + number, Numbered(&AnalysisGroup::entries, i, &Entry::check), "0", Check(),
            "この条件で分析する", "オンの条件を株価分析で順に実行します。", "Check"}}};
}

KeyHeading<AnalysisGroup> ColumnRows() {
  using Column = AnalysisGroupColumn;
  KeyHeading<AnalysisGroup> heading{"結果の列", {}};
  for (size_t i = 0; i < AnalysisGroup::kColumns; ++i) {
    const std::string number = std::to_string(i + 1);
    heading.rows.push_back(
        {"columntitle" + number, Numbered(&AnalysisGroup::columns, i, &Column::title), "", Text(),
         "列" + number + "の見出し",
         "分析結果の表に加える列の見出しです。空なら式を見出しにします。", kColumnSection});
    heading.rows.push_back({"column" + number,
                            Numbered(&AnalysisGroup::columns, i, &Column::expression), "",
                            Expression(), "列" + number + "の式",
                            "分析結果の表に加える列の式です。条件なら、成り立つ銘柄に○がつきます。"
                            "空なら列はありません。",
                            kColumnSection});
  }
  return heading;
}

KeyTable<AnalysisGroup> MakeGroupTable() {
  KeyPage<AnalysisGroup> page{"株価分析グループ", {}};
  for (size_t i = 0; i < AnalysisGroup::kEntries; ++i) page.headings.push_back(EntryRows(i));
  page.headings.push_back(ColumnRows());
  return {"orin.chk", "Title", {std::move(page)}};
}

}  // namespace

const KeyTable<AnalysisGroup>& AnalysisGroupTable() {
  static const KeyTable<AnalysisGroup> table = MakeGroupTable();
  return table;
}

base::Result<AnalysisGroup> LoadAnalysisGroup(const std::filesystem::path& path) {
  const auto bytes = base::ReadFile(path, base::kLargestProfile);
  if (!bytes) return base::Forward(bytes);
  return ReadAnalysisGroup(base::ProfileFile::Parse(*bytes));
}

base::Status SaveAnalysisGroup(base::FileSystem& files, const std::filesystem::path& path,
                               const AnalysisGroup& group) {
  auto profile = base::ProfileFile::Load(path);
  if (!profile) return base::Forward(profile);
  WriteAnalysisGroup(*profile, group);
  return profile->Save(files, path);
}

AnalysisGroup ReadAnalysisGroup(const base::ProfileFile& profile) {
  return ReadGroup(profile, AnalysisGroupTable());
}

void WriteAnalysisGroup(base::ProfileFile& profile, const AnalysisGroup& group) {
  WriteGroup(profile, AnalysisGroupTable(), group);
}

}  // namespace orin::settings
