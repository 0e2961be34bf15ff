#include <array>
#include <filesystem>
#include <set>
#include <string>

#include "base/paths.h"
#include "base/temporary_file.h"
#include "shell/start_up_stages.h"

namespace orin::shell {

namespace {

constexpr const char* kStage = "複数起動、異常状態チェック";
constexpr const char* kQuestion =
    "ミルテが複数起動されてるか、または、ミルテの異常状態です。\n"
    "ミルテは複数起動されていますか？\n"
    "はい　：そのままミルテを使用します。\n"
    "いいえ：異常状態を回復します。";

constexpr std::array kListFiles = {"orin.swk", "orin.cwk", "orin.per", "orin.ser",
                                   "orin.com", "orin.fee", "orin.ana", kAddressFile};

/// What a killed instance was about to give its name. The store's own are removed as it is opened.
std::vector<std::filesystem::path> Replaceable(const ProgramState& state) {
  const settings::SettingsPlaces& places = state.places;
  const settings::BusSettings& bus = state.settings.bus;
  std::vector<std::filesystem::path> paths = {
      places.settings_file,
      places.program_directory / "orinsim.ini",
      places.settings_file.parent_path() / "orinsim.ini",
      places.program_directory / "orinerr.txt",
      settings::NativeSetting(places, state.settings.common.analysis_group_file),
      settings::NativeSetting(places, bus.trade_journal_file),
  };
  const std::filesystem::path system_directory = state.StoreLocation().system_directory;
  for (const char* name : kListFiles) paths.push_back(base::NativePath(name, system_directory));
  return paths;
}

void RemoveTemporaries(StartUpRun& run) {
  base::FileSystem& files = *run.state.files;
  std::set<std::filesystem::path> directories;
  for (std::filesystem::path path : Replaceable(run.state)) {
    directories.insert(path.parent_path());
    // The name that earlier versions gave theirs.
    path += ".tmp";
    run.problems.AddFailure(StartUpStep::kMultipleStart, files.Remove(path));
  }
  for (const std::filesystem::path& directory : directories) {
    run.problems.AddFailure(StartUpStep::kMultipleStart,
                            base::RemoveLeftTemporaries(files, directory));
  }
}

/// What a killed writer left is finished or taken back, unless a live one holds the store.
bool RecoverOpenStore(StartUpRun& run) {
  const store::OpenOptions options = {store::Access::kWrite, {}};
  const auto opened = store::StockStore::Open(run.state.StoreLocation(), options, *run.state.files);
  run.problems.AddFailure(StartUpStep::kMultipleStart, opened);
  if (!opened) return false;
  for (const std::string& problem : opened->Problems()) {
    run.problems.Add(StartUpStep::kMultipleStart, problem);
  }
  return true;
}

void Recover(StartUpRun& run) {
  ProgramState& state = run.state;
  for (RunMarker* marker : {&state.program_marker, &state.user_marker}) {
    if (marker->IsOwn()) continue;
    run.problems.AddFailure(StartUpStep::kMultipleStart, marker->Reset(*state.files));
  }
  RemoveTemporaries(run);
  if (state.store && RecoverOpenStore(run)) LoadSystemInformation(run);
  run.problems.Show();
}

}  // namespace

void CheckMultipleStart(StartUpRun& run) {
  const ProgramState& state = run.state;
  if (!state.program_marker.IsOfAnother() && !state.user_marker.IsOfAnother()) return;
  if (!run.screen.Questions().AskYesNo(kQuestion, base::StageCaption(kStage))) Recover(run);
}

}  // namespace orin::shell
