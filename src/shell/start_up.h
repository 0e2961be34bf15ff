#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "base/messages.h"
#include "base/progress.h"
#include "base/result.h"
#include "shell/program_state.h"

namespace orin::shell {

/// What starting up shows and asks. The window program has windows for it, a test answers.
class StartUpScreen : public base::Progress {
 public:
  /// A status line on the logo, shown before its stage.
  virtual void ShowStatus(std::string_view status) = 0;
  virtual base::Messages& Questions() = 0;
  /// Lets the user correct the path settings. False: given up; true: `settings` has been changed
  /// and saved.
  virtual bool EditPaths(settings::Settings& settings) = 0;
  /// The first start, without a store: offers to make one where the settings say. False: declined
  /// or stopped.
  virtual bool OfferMarket(const ProgramState& state) = 0;
};

/// Brings the system up in its fixed order and gives the state, without a store where there is
/// none and the user wants none. What can be gone without is told through the screen and logged;
/// nothing here ends the program.
std::unique_ptr<ProgramState> StartUp(const settings::SettingsPlaces& places,
                                      base::FileSystem& files, StartUpScreen& screen);

/// Reads the settings files anew, after another part of the program has made them.
void ReadSettingsAnew(ProgramState& state);

/// The stage "システム情報を読み込み中です。" and those that follow from the store: reads the store
/// and its companions anew, for a start and after every change of the store. False where there is
/// no store that can be used; the state then has none, and the sentence has been shown.
bool LoadStore(ProgramState& state, StartUpScreen& screen);

/// Saves the settings that differ from those saved and removes this instance's run markers.
/// Fails with a sentence where something could not be written; the rest is done all the same.
base::Status ShutDown(ProgramState& state);

}  // namespace orin::shell
