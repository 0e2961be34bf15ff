#pragma once

#include "shell/program_state.h"
#include "shell/start_up.h"
#include "shell/start_up_problems.h"

namespace orin::shell {

/// What the stages of a start share.
struct StartUpRun {
  ProgramState& state;
  StartUpScreen& screen;
  StartUpProblems problems{state, screen.Questions()};
};

/// Claims both run markers and reads all settings.
void LoadSettingsAndClaim(StartUpRun& run, base::FileSystem& files);

/// orin.sys and everything beside it, shown in one warning where there are problems. False: there
/// is no store.
bool LoadSystemInformation(StartUpRun& run);
/// The same for a start without settings file: where there is no orin.sys, offers to make a
/// market before anything else is asked.
bool LoadSystemInformationFirst(StartUpRun& run);

void LoadTrades(StartUpRun& run);
/// Where a run marker is of another instance: asks, and recovers where the user says that there
/// is none.
void CheckMultipleStart(StartUpRun& run);

// The stages behind the question, each for a store that is open.
void ChooseInitialStock(StartUpRun& run);
void LoadRankings(StartUpRun& run);
/// The intraday files that are there and the credit files that the master's header names: reads
/// their dates, which charts and conditions find them by.
void LoadPriceCompanions(StartUpRun& run);
/// Where a RAM disk is configured, copies the store to it and reads it from there.
void UseRamDisk(StartUpRun& run);

}  // namespace orin::shell
