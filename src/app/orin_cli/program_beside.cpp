#include "app/orin_cli/program_beside.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "app/exit_status.h"
#include "base/file_descriptor.h"
#include "base/file_system.h"
#include "base/system_error.h"

namespace orin::app {

namespace fs = std::filesystem;
using base::FileDescriptor;
using base::RetryInterrupted;

namespace {

/// Two ends of a connection, closed in programs started from here.
struct Channel {
  FileDescriptor ours;
  FileDescriptor theirs;
};

/// Not open on failure; errno says why.
Channel MakeChannel() {
  std::array<int, 2> ends = {-1, -1};
  static_cast<void>(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()));
  return {FileDescriptor::Own(ends[0]), FileDescriptor::Own(ends[1])};
}

/// A program that no longer reads is asked for its reasons when it has ended.
void Send(const FileDescriptor& to, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = RetryInterrupted(
        [&] { return send(to.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL); });
    if (sent <= 0) break;
    bytes.remove_prefix(static_cast<size_t>(sent));
  }
  shutdown(to.Number(), SHUT_WR);
}

std::string Receive(const FileDescriptor& from) {
  std::string text;
  std::array<char, 4096> part;
  for (;;) {
    const ssize_t got =
        RetryInterrupted([&] { return read(from.Number(), part.data(), part.size()); });
    if (got <= 0) return text;
    text.append(part.data(), static_cast<size_t>(got));
  }
}

/// Its standard input and error are the ends given. The errno value of a failure, else 0.
int Spawn(const fs::path& program, const std::vector<std::string>& arguments, int input, int error,
          pid_t& child) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) {
    // The call takes them as not constant and leaves them as they are.
    pointers.push_back(const_cast<char*>(argument.c_str()));
  }
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  if (const int failure = posix_spawn_file_actions_init(&actions); failure != 0) return failure;
  int failure = posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  if (failure == 0) failure = posix_spawn_file_actions_adddup2(&actions, error, STDERR_FILENO);
  if (failure == 0) {
    failure = posix_spawn(&child, program.c_str(), &actions, nullptr, pointers.data(), environ);
  }
  posix_spawn_file_actions_destroy(&actions);
  return failure;
}

/// A program on its way, and our ends of its standard input and error.
struct Started {
  pid_t number;
  FileDescriptor input;
  FileDescriptor error;
};

base::Result<Started> Start(const fs::path& program, const std::vector<std::string>& arguments) {
  Channel input = MakeChannel();
  Channel error = MakeChannel();
  pid_t number = 0;
  const int failure =
      input.theirs.IsOpen() && error.theirs.IsOpen()
          ? Spawn(program, arguments, input.theirs.Number(), error.theirs.Number(), number)
          : errno;
  if (failure != 0) return base::FailSystemCall(program, "を起動できません", failure);
  // From here on the program alone holds its ends, so that they close when it ends.
  return Started{number, std::move(input.ours), std::move(error.ours)};
}

base::Status OutcomeOf(const std::string& program, int status, std::string told) {
  if (WIFSIGNALED(status)) {
    const std::string signal = std::to_string(WTERMSIG(status));
    return base::Fail(program + "が途中で止められました（シグナル" + signal + "）。");
  }
  if (WEXITSTATUS(status) == kDone) return {};
  while (told.ends_with('\n')) told.pop_back();
  // With any other status it has not come to telling a sentence of its own.
  if (WEXITSTATUS(status) == kFailed && !told.empty()) return base::Fail(std::move(told));
  const std::string number = std::to_string(WEXITSTATUS(status));
  return base::Fail(program + "が動きません（終了状態" + number + "）。");
}

}  // namespace

base::Status RunProgramBeside(const std::string& what, const std::string& name,
                              std::vector<std::string> arguments, std::string_view input) {
  std::error_code unreadable;
  const fs::path own = fs::read_symlink("/proc/self/exe", unreadable);
  const fs::path path = own.parent_path() / name;
  const std::string program = what + "「" + base::PathText(path) + "」";
  if (unreadable || !fs::exists(path, unreadable)) {
    return base::Fail(program + "が見つかりません。");
  }
  arguments.insert(arguments.begin(), name);
  const auto started = Start(path, arguments);
  if (!started) return base::Forward(started);
  Send(started->input, input);
  std::string told = Receive(started->error);
  int status = 0;
  if (RetryInterrupted([&] { return waitpid(started->number, &status, 0); }) == -1) {
    return base::FailSystemCall(path, "の終わりを待てません", errno);
  }
  return OutcomeOf(program, status, std::move(told));
}

}  // namespace orin::app
