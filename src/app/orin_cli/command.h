#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "settings/settings.h"

namespace orin::app {

// Exit statuses of every command.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;  // or an expression that cannot be compiled

/// Where a command finds the program's files; filled in before the command runs.
struct Session {
  settings::SettingsPlaces places;
  /// Why orinsim.ini could not be copied to the program directory, for commands that show or use
  /// its settings; they are read where they are.
  std::optional<std::string> simulation_problem;
  /// Those of `eval`, `series`, `signals` and `explain`, in the order of the command line.
  std::vector<std::string> expressions;
  /// The chosen command; returns the exit status.
  std::function<int()> run;
};

// Each command adds itself, with its options and its help, to the program.
void AddInitCommand(CLI::App& app, Session& session);
void AddUpdateCsvCommand(CLI::App& app, Session& session);
void AddMasterCommand(CLI::App& app, Session& session);
void AddBarsCommand(CLI::App& app, Session& session);
void AddEvalCommand(CLI::App& app, Session& session);
void AddSeriesCommand(CLI::App& app, Session& session);
void AddExplainCommand(CLI::App& app, Session& session);
void AddItemsCommand(CLI::App& app, Session& session);
void AddSignalsCommand(CLI::App& app, Session& session);
void AddScreenCommand(CLI::App& app, Session& session);
void AddCheckCommand(CLI::App& app, Session& session);
void AddChecksumsCommand(CLI::App& app, Session& session);
void AddSplitsCommand(CLI::App& app, Session& session);
void AddSystemFileCommand(CLI::App& app, Session& session);
void AddCompanyCommand(CLI::App& app, Session& session);
void AddChartCommand(CLI::App& app, Session& session);
void AddSettingsCommand(CLI::App& app, Session& session);

/// Writes the sentence to standard error and gives the exit status of a failed job.
int Report(const base::Error& error);
/// A sentence to standard error, made printable.
void Tell(const std::string& sentence);

}  // namespace orin::app
