#include "settings/settings.h"

#include <functional>
#include <optional>

#include "base/profile_file.h"

namespace orin::settings {

using base::ProfileFile;

namespace {

namespace fs = std::filesystem;

using GroupWriter = std::function<void(ProfileFile&)>;

/// None where the setting names no file.
std::optional<fs::path> GroupFile(const Settings& settings, const SettingsPlaces& places) {
  if (settings.common.analysis_group_file.empty()) return std::nullopt;
  return NativeSetting(places, settings.common.analysis_group_file);
}

Settings ReadIniGroups(const ProfileFile& profile, const SettingsPlaces& places) {
  Settings settings;
  settings.bus = ReadBus(profile, places);
  settings.tax = ReadTax(profile);
  settings.menu_color = ReadMenuColor(profile);
  settings.menu_display = ReadMenuDisplay(profile);
  settings.chart_common_color = ReadChartCommonColor(profile);
  settings.stock_ranking = ReadStockRanking(profile);
  settings.chart_action = ReadChartAction(profile);
  settings.chart_display = ReadChartDisplay(profile);
  settings.orin = ReadOrin(profile);
  settings.common = ReadCommon(profile);
  settings.window = ReadWindow(profile);
  return settings;
}

/// The file's profile; an empty one, and a problem, where it cannot be read.
ProfileFile LoadOrReport(const fs::path& path, std::vector<std::string>& problems) {
  auto profile = ProfileFile::Load(path);
  if (profile) return std::move(*profile);
  problems.push_back(profile.error().message);
  return {};
}

/// The groups that stand in files of their own.
void ReadFurtherFiles(const SettingsPlaces& places, LoadedSettings& loaded) {
  Settings& settings = loaded.settings;
  settings.orin_simulation =
      ReadOrinSimulation(LoadOrReport(SimulationFileInUse(places), loaded.problems));
  const auto group_file = GroupFile(settings, places);
  settings.analysis_group =
      ReadAnalysisGroup(group_file ? LoadOrReport(*group_file, loaded.problems) : ProfileFile());
}

/// Adds the group's writer where the group differs.
template <typename Group>
void AddChanged(const Group& before, const Group& after, void (*write)(ProfileFile&, const Group&),
                std::vector<GroupWriter>& writers) {
  if (before == after) return;
  writers.emplace_back([&after, write](ProfileFile& profile) { write(profile, after); });
}

std::vector<GroupWriter> ChangedIniGroups(const Settings& before, const Settings& after) {
  std::vector<GroupWriter> writers;
  AddChanged(before.bus, after.bus, WriteBus, writers);
  AddChanged(before.tax, after.tax, WriteTax, writers);
  AddChanged(before.menu_color, after.menu_color, WriteMenuColor, writers);
  AddChanged(before.menu_display, after.menu_display, WriteMenuDisplay, writers);
  AddChanged(before.chart_common_color, after.chart_common_color, WriteChartCommonColor, writers);
  AddChanged(before.stock_ranking, after.stock_ranking, WriteStockRanking, writers);
  AddChanged(before.chart_action, after.chart_action, WriteChartAction, writers);
  AddChanged(before.chart_display, after.chart_display, WriteChartDisplay, writers);
  AddChanged(before.orin, after.orin, WriteOrin, writers);
  AddChanged(before.common, after.common, WriteCommon, writers);
  AddChanged(before.window, after.window, WriteWindow, writers);
  return writers;
}

/// Writes what `from` holds, with the changes, to `to`.
base::Status ChangeFile(base::FileSystem& files, const fs::path& from, const fs::path& to,
                        const std::vector<GroupWriter>& writers) {
  if (writers.empty()) return {};
  auto profile = ProfileFile::Load(from);
  if (!profile) return base::Forward(profile);
  for (const GroupWriter& write : writers) write(*profile);
  return profile->Save(files, to);
}

base::Status ChangeGroupFile(base::FileSystem& files, const SettingsPlaces& places,
                             const Settings& before, const Settings& after) {
  std::vector<GroupWriter> writers;
  AddChanged(before.analysis_group, after.analysis_group, WriteAnalysisGroup, writers);
  if (writers.empty()) return {};
  const auto path = GroupFile(after, places);
  if (!path) {
    return base::Fail(
        "設定「AnalysisGroupFile」が空なので、株価分析グループを保存するファイルがありません。");
  }
  return ChangeFile(files, *path, *path, writers);
}

}  // namespace

LoadedSettings LoadWhatIsReadable(const SettingsPlaces& places) {
  LoadedSettings loaded;
  loaded.settings = ReadIniGroups(LoadOrReport(places.settings_file, loaded.problems), places);
  ReadFurtherFiles(places, loaded);
  return loaded;
}

base::Result<Settings> LoadSettings(const SettingsPlaces& places) {
  const auto profile = ProfileFile::Load(places.settings_file);
  if (!profile) return base::Forward(profile);
  LoadedSettings loaded{ReadIniGroups(*profile, places), {}};
  ReadFurtherFiles(places, loaded);
  return std::move(loaded.settings);
}

base::Status SaveSettings(base::FileSystem& files, const SettingsPlaces& places,
                          const Settings& before, const Settings& after) {
  std::vector<GroupWriter> simulation;
  AddChanged(before.orin_simulation, after.orin_simulation, WriteOrinSimulation, simulation);
  const base::Status ini = ChangeFile(files, places.settings_file, places.settings_file,
                                      ChangedIniGroups(before, after));
  const base::Status sim =
      ChangeFile(files, SimulationFileInUse(places), SimulationFile(places), simulation);
  const base::Status group = ChangeGroupFile(files, places, before, after);
  if (!ini) return ini;
  return sim ? group : sim;
}

}  // namespace orin::settings
