#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "shell/program_state.h"

namespace orin::shell {

/// The steps of a start, and the shutdown, by the numbers they have in the error log.
enum class StartUpStep : int32_t {
  kProgramMarker = 20,
  kSettings = 30,
  kUserMarker = 40,
  kSystemFiles = 60,
  kTrades = 80,
  kMultipleStart = 90,
  kInitialStock = 100,
  kRankings = 110,
  kPriceCompanions = 120,
  kRamDisk = 130,
  kShutDown = 200,
};

/// Writes the sentence to the error log; a log that cannot be written is gone without.
void LogProblem(const ProgramState& state, StartUpStep step, const std::string& sentence);

/// Collects what a start can be gone without, so that the user gets one warning for many
/// sentences.
class StartUpProblems {
 public:
  /// The most sentences of one warning.
  static constexpr size_t kMostLines = 10;

  StartUpProblems(ProgramState& state, base::Messages& messages)
      : state_(state), messages_(messages) {}

  /// Logs the sentence, and keeps it for the next warning. One that the user has been told, also by
  /// an earlier start-up stage or LoadStore, is passed over.
  void Add(StartUpStep step, const std::string& sentence);
  void AddAll(StartUpStep step, const std::vector<std::string>& sentences);
  /// Adds the failure's sentence; nothing for success.
  template <typename T>
  void AddFailure(StartUpStep step, const base::Result<T>& result) {
    if (!result) Add(step, result.error().message);
  }
  /// Shows what was added since the last time, a line each, as one warning; nothing where there is
  /// nothing. `consequence` is a last line.
  void Show(std::string_view consequence = {});

 private:
  ProgramState& state_;
  base::Messages& messages_;
  std::vector<std::string> untold_;
};

}  // namespace orin::shell
