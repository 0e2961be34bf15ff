#include "app/orin_cli/terminal_progress.h"

#include <algorithm>
#include <csignal>
#include <iostream>
#include <unistd.h>

#include "base/text.h"

namespace orin::app {

namespace {

// A signal handler can reach nothing but such a flag.
volatile std::sig_atomic_t stop_asked = 0;

void AskToStop(int signal) {
  if (stop_asked != 0) std::signal(signal, SIG_DFL);
  stop_asked = 1;
}

constexpr int kBarWidth = 30;
constexpr std::chrono::milliseconds kBetweenDrawings{100};

}  // namespace

TerminalProgress::TerminalProgress() : terminal_(isatty(STDERR_FILENO) != 0) {
  std::signal(SIGINT, AskToStop);
}

TerminalProgress::~TerminalProgress() {
  if (drawn_) std::cerr << "\r\x1b[K" << std::flush;
}

bool TerminalProgress::Report(std::string_view stage, int64_t done, int64_t total) {
  const auto now = std::chrono::steady_clock::now();
  if (terminal_ && (!drawn_ || now - last_drawn_ >= kBetweenDrawings)) {
    last_drawn_ = now;
    Draw(stage, done, total);
  }
  return stop_asked == 0;
}

void TerminalProgress::Draw(std::string_view stage, int64_t done, int64_t total) {
  drawn_ = true;
  std::cerr << "\r\x1b[K" << base::PrintableLine(stage);
  if (total > 0) {
    const auto filled = static_cast<int>(std::min(done, total) * kBarWidth / total);
    std::cerr << " [" << std::string(static_cast<size_t>(filled), '#')
              << std::string(static_cast<size_t>(kBarWidth - filled), '.') << "] " << done << "/"
              << total;
  }
  std::cerr << std::flush;
}

}  // namespace orin::app
