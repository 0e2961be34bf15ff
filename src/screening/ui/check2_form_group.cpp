#include <algorithm>
#include <utility>

#include "screening/ui/check2_form.h"

// What the screening window changes of the group.

namespace orin::screening {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFileFilter = "株価分析ファイル|*.txt|";
constexpr const char* kGroupFilter = "株価分析グループファイル|*.chk|";

/// As a path setting: relative to the program directory where it lies in it.
std::string SettingOf(const fs::path& file, const fs::path& program_directory) {
  const fs::path relative = file.lexically_relative(program_directory);
  const bool is_inside = !relative.empty() && *relative.begin() != "..";
  std::string text = (is_inside ? relative : file).string();
  if (is_inside) std::ranges::replace(text, '/', '\\');
  return text;
}

}  // namespace

void check2_Form::Change(const std::function<void(settings::AnalysisGroup&)>& change) {
  settings::Settings changed = state_.settings;
  change(changed.analysis_group);
  Save(changed);
  ShowGroup();
}

void check2_Form::mnu_group_Click() {
  const auto file = messages_.ChooseFile(
      {.caption = "株価分析グループファイル", .filter = kGroupFilter, .start = GroupFile()});
  if (!file) return;
  const auto group = settings::LoadAnalysisGroup(*file);
  if (!group) {
    messages_.Warn(group.error().message);
    return;
  }
  settings::Settings changed = state_.settings;
  changed.common.analysis_group_file = SettingOf(*file, state_.places.program_directory);
  changed.analysis_group = *group;
  Save(changed);
  ShowGroup();
}

void check2_Form::mnu_savegroup_Click() {
  const auto file = messages_.ChooseFile({.caption = "株価分析グループファイル",
                                          .filter = kGroupFilter,
                                          .start = GroupFile(),
                                          .choice = base::FileChoice::kSave});
  if (!file) return;
  const auto written =
      settings::SaveAnalysisGroup(*state_.files, *file, state_.settings.analysis_group);
  if (!written) {
    messages_.Warn(written.error().message);
    return;
  }
  settings::Settings changed = state_.settings;
  changed.common.analysis_group_file = SettingOf(*file, state_.places.program_directory);
  Save(changed);
  ShowGroup();
}

void check2_Form::mnu_pick_Click() {
  const fs::path current = CurrentFile();
  const auto file =
      messages_.ChooseFile({.caption = "株価分析ファイルを指定する",
                            .filter = kFileFilter,
                            .start = current.empty() ? GroupFile().parent_path() : current});
  if (!file) return;
  const auto analysis = ReadAnalysisFile(*file);
  if (!analysis) {
    messages_.Warn(analysis.error().message);
    return;
  }
  Change([&](settings::AnalysisGroup& group) {
    group.entries.at(list_->CurrentEntry()) = {
        analysis->title, SettingOf(*file, state_.places.program_directory), true};
  });
}

void check2_Form::mnu_new_Click() { surroundings_.edit({}); }

void check2_Form::mnu_edit_Click() {
  const fs::path file = CurrentFile();
  if (file.empty()) {
    mnu_pick_Click();
  } else {
    surroundings_.edit(file);
  }
}

void check2_Form::mnu_remove_Click() {
  Change([this](settings::AnalysisGroup& group) { group.entries.at(list_->CurrentEntry()) = {}; });
}

void check2_Form::MoveEntry(int step) {
  const auto place = static_cast<int>(list_->CurrentEntry());
  const int other = place + step;
  if (other < 0 || other >= static_cast<int>(settings::AnalysisGroup::kEntries)) return;
  Change([&](settings::AnalysisGroup& group) {
    std::swap(group.entries.at(static_cast<size_t>(place)),
              group.entries.at(static_cast<size_t>(other)));
  });
  list_->SelectEntry(static_cast<size_t>(other));
}

void check2_Form::mnu_up_Click() { MoveEntry(-1); }

void check2_Form::mnu_down_Click() { MoveEntry(1); }

void check2_Form::TakeSaved(const fs::path& file) {
  const auto files = Files().all;
  const bool is_in_group = std::ranges::find(files, file) != files.end();
  const auto& entries = state_.settings.analysis_group.entries;
  if (is_in_group || !entries.at(list_->CurrentEntry()).file.empty()) {
    ShowGroup();
    return;
  }
  const auto analysis = ReadAnalysisFile(file);
  Change([&](settings::AnalysisGroup& group) {
    group.entries.at(list_->CurrentEntry()) = {
        analysis ? analysis->title : "", SettingOf(file, state_.places.program_directory), true};
  });
}

}  // namespace orin::screening
