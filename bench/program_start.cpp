#include "program_start.h"

#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace orin::bench {

namespace fs = std::filesystem;

namespace {

/// A program beside this one, on a market.
std::string ProgramCall(const char* program, const fs::path& market) {
  std::error_code failure;
  const fs::path own = fs::read_symlink("/proc/self/exe", failure);
  return "'" + (own.parent_path() / program).string() + "' '" + market.string() + "'";
}

}  // namespace

fs::path WindowProgram() {
  std::error_code failure;
  const fs::path own = fs::read_symlink("/proc/self/exe", failure);
  const fs::path program = own.parent_path().parent_path() / "src" / "app" / "orin";
  return fs::exists(program, failure) ? program : fs::path();
}

bool StartAndClose(const fs::path& program, const fs::path& market) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  std::string name = program.string();
  std::string home = market.string();
  std::string home_option = "--home";
  std::string close_option = "--close-when-ready";
  char* arguments[] = {name.data(), home_option.data(), home.data(), close_option.data(), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, name.c_str(), nullptr, nullptr, arguments, environ) != 0) return false;
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::optional<WindowRun> RunConditionsInWindow(const fs::path& market) {
  FILE* output = popen(ProgramCall("orin-bench-window", market).c_str(), "r");
  if (output == nullptr) return std::nullopt;
  WindowRun run;
  const bool is_read =
      std::fscanf(output, "%lf %lf %lf", &run.longest_gap, &run.whole, &run.longest_key) == 3;
  const bool has_ended = pclose(output) == 0;
  return is_read && has_ended ? std::optional(run) : std::nullopt;
}

std::string MeasureCharts(const fs::path& market) {
  FILE* output = popen(ProgramCall("orin-bench-chart", market).c_str(), "r");
  if (output == nullptr) return {};
  std::string lines;
  char line[256];
  while (std::fgets(line, sizeof line, output) != nullptr) lines += line;
  return pclose(output) == 0 ? lines : std::string();
}

}  // namespace orin::bench
