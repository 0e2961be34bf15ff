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
  std::error_code failure;
  const fs::path own = fs::read_symlink("/proc/self/exe", failure);
  const std::string command =
      "'" + (own.parent_path() / "orin-bench-window").string() + "' '" + market.string() + "'";
  FILE* output = popen(command.c_str(), "r");
  if (output == nullptr) return std::nullopt;
  WindowRun run;
  const bool is_read =
      std::fscanf(output, "%lf %lf %lf", &run.longest_gap, &run.whole, &run.longest_key) == 3;
  const bool has_ended = pclose(output) == 0;
  return is_read && has_ended ? std::optional(run) : std::nullopt;
}

}  // namespace orin::bench
