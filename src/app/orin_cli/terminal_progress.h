#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/progress.h"

namespace orin::app {

/// A bar on standard error where that is a terminal; SIGINT asks the job to stop, a second one
/// ends the program at once.
class TerminalProgress final : public base::Progress {
 public:
  TerminalProgress();
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;
  ~TerminalProgress() override;

  [[nodiscard]] bool Report(std::string_view stage, int64_t done, int64_t total) override;

 private:
  void Draw(std::string_view stage, int64_t done, int64_t total);

  bool terminal_;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point last_drawn_;
};

}  // namespace orin::app
