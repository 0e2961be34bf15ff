#include "shell/start_up.h"

#include <utility>

#include "shell/start_up_stages.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

constexpr const char* kHelpFile = "Help\\orinhelp.hlp";
constexpr const char* kDefaultsUsed =
    "設定は既定値を使います。読めないファイルには、終了するときも書き込みません。";

void LoadFromStore(StartUpRun& run) {
  ChooseInitialStock(run);
  LoadRankings(run);
  LoadPriceCompanions(run);
  UseRamDisk(run);
}

void AdoptSimulation(StartUpRun& run, bool can_write) {
  const auto adopted = settings::AdoptSimulationFile(*run.state.files, run.state.places);
  // In a program directory that cannot be written every start would say so again, though the
  // settings stay in use where they are. A change that cannot be saved is told then.
  if (can_write) run.problems.AddFailure(StartUpStep::kSettings, adopted);
  if (adopted && *adopted) run.screen.Questions().Inform(**adopted);
}

}  // namespace

void LoadSettingsAndClaim(StartUpRun& run, base::FileSystem& files) {
  ProgramState& state = run.state;
  state.has_help_file = store::Exists(settings::NativeSetting(state.places, kHelpFile));
  // A first start finds neither; what cannot be made, the markers will tell.
  for (const auto& directory :
       {state.places.program_directory, state.places.settings_file.parent_path()}) {
    if (!store::Exists(directory)) static_cast<void>(files.MakeDirectory(directory));
  }
  state.program_marker = RunMarker(state.places.program_directory / "orin.act");
  const auto claimed = state.program_marker.Claim(files);
  run.problems.AddFailure(StartUpStep::kProgramMarker, claimed);
  AdoptSimulation(run, claimed.has_value());
  settings::LoadedSettings loaded = settings::LoadWhatIsReadable(state.places);
  state.are_settings_readable = base::ProfileFile::Load(state.places.settings_file).has_value();
  state.settings = std::move(loaded.settings);
  state.saved_settings = state.settings;
  state.user_marker = RunMarker(state.places.settings_file.parent_path() / "orinuser.act");
  run.problems.AddFailure(StartUpStep::kUserMarker, state.user_marker.Claim(files));
  run.problems.Show();
  if (loaded.problems.empty()) return;
  run.problems.AddAll(StartUpStep::kSettings, loaded.problems);
  run.problems.Show(kDefaultsUsed);
}

std::unique_ptr<ProgramState> StartUp(const settings::SettingsPlaces& places,
                                      base::FileSystem& files, StartUpScreen& screen) {
  auto state = std::make_unique<ProgramState>();
  state->places = places;
  state->files = &files;
  state->error_log = ErrorLog(places.program_directory / "orinerr.txt", files);
  StartUpRun run{*state, screen};
  const bool is_first_start = !store::Exists(places.settings_file);
  LoadSettingsAndClaim(run, files);
  is_first_start ? LoadSystemInformationFirst(run) : LoadSystemInformation(run);
  LoadTrades(run);
  CheckMultipleStart(run);
  if (state->store) LoadFromStore(run);
  return state;
}

void ReadSettingsAnew(ProgramState& state) {
  state.settings = settings::LoadWhatIsReadable(state.places).settings;
  state.saved_settings = state.settings;
}

bool LoadStore(ProgramState& state, StartUpScreen& screen) {
  StartUpRun run{state, screen};
  if (!LoadSystemInformation(run)) return false;
  LoadFromStore(run);
  return true;
}

namespace {

base::Status SaveChangedSettings(ProgramState& state) {
  if (!state.are_settings_readable || state.settings == state.saved_settings) return {};
  base::Status saved =
      settings::SaveSettings(*state.files, state.places, state.saved_settings, state.settings);
  if (saved) state.saved_settings = state.settings;
  return saved;
}

}  // namespace

base::Status ShutDown(ProgramState& state) {
  base::Status first;
  for (const base::Status& status :
       {SaveChangedSettings(state), state.program_marker.Release(*state.files),
        state.user_marker.Release(*state.files)}) {
    if (status) continue;
    LogProblem(state, StartUpStep::kShutDown, status.error().message);
    if (first) first = status;
  }
  return first;
}

}  // namespace orin::shell
