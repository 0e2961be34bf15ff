#include "base/temporary_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "base/file_descriptor.h"
#include "base/system_error.h"

namespace orin::base {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMark = ".orin-";
constexpr std::string_view kSuffix = ".tmp";
constexpr int kMostTries = 100;

/// The whole text as a number of process or file.
std::optional<pid_t> ParseNumber(std::string_view text) {
  pid_t number = 0;
  const char* end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end || number <= 0) return std::nullopt;
  return number;
}

/// Rarely the same twice. CreateNew refuses a name that is taken.
int64_t SomeNumber() {
  constexpr int64_t kNanosecondsKept = 1'000'000'000;
  return std::chrono::steady_clock::now().time_since_epoch().count() % kNanosecondsKept + 1;
}

/// The process that made the temporary; nullopt for the name of any other file.
std::optional<pid_t> MakerOf(std::string_view name) {
  const size_t mark = name.rfind(kMark);
  if (mark == 0 || mark == std::string_view::npos || !name.ends_with(kSuffix)) return std::nullopt;
  const std::string_view numbers =
      name.substr(0, name.size() - kSuffix.size()).substr(mark + kMark.size());
  const size_t dash = numbers.find('-');
  if (dash == std::string_view::npos || !ParseNumber(numbers.substr(dash + 1))) {
    return std::nullopt;
  }
  return ParseNumber(numbers.substr(0, dash));
}

/// A process that this one may not ask about is alive. This process has left nothing: what has its
/// number is an earlier one's.
bool IsGone(pid_t process) {
  return process == getpid() || (kill(process, 0) != 0 && errno == ESRCH);
}

/// The file, locked, where nobody else has locked it. Numbers of processes differ between
/// containers and between machines that share a directory; locks do not.
std::optional<FileDescriptor> LockIfUnused(const fs::path& path) {
  for (const int access : {O_RDWR, O_RDONLY}) {
    FileDescriptor file = FileDescriptor::Open(path, access | O_NOFOLLOW | O_NONBLOCK);
    if (!file.IsOpen()) continue;
    const int locked = RetryInterrupted([&] { return flock(file.Number(), LOCK_EX | LOCK_NB); });
    if (locked == 0) return file;
  }
  return std::nullopt;
}

bool IsRegularFile(const fs::directory_entry& entry) {
  std::error_code failure;
  return entry.symlink_status(failure).type() == fs::file_type::regular;
}

/// The beginning of the name that leaves room for the ending, cut between characters.
std::string_view CutToFit(std::string_view name, size_t ending) {
  constexpr size_t kLongestName = 255;
  constexpr size_t kLongestRest = 3;  // bytes of a character behind its first
  const size_t room = kLongestName - ending;
  if (name.size() <= room) return name;
  size_t cut = room;
  const auto is_rest = [&name](size_t at) { return (name[at] & 0xC0) == 0x80; };
  while (room - cut < kLongestRest && is_rest(cut)) --cut;
  return name.substr(0, is_rest(cut) ? room : cut);
}

}  // namespace

Result<TemporaryFile> CreateTemporary(FileSystem& files, const fs::path& path) {
  const std::string prefix = std::string(kMark) + std::to_string(getpid()) + "-";
  for (int i = 0; i < kMostTries; ++i) {
    const std::string ending = prefix + std::to_string(SomeNumber()) + std::string(kSuffix);
    const std::string name = path.filename().string();
    fs::path temporary = path;
    temporary.replace_filename(std::string(CutToFit(name, ending.size())) + ending);
    auto file = files.CreateNew(temporary);
    if (!file) return Forward(file);
    if (*file) return TemporaryFile{std::move(temporary), std::move(*file)};
  }
  return FailSystemCall(path, "に書き込めません", EEXIST);
}

Status RemoveLeftTemporaries(FileSystem& files, const fs::path& directory) {
  std::vector<fs::path> left;
  std::error_code failure;
  fs::directory_iterator entry(directory.empty() ? "." : directory, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    const auto maker = MakerOf(PathText(entry->path().filename()));
    if (maker && IsGone(*maker) && IsRegularFile(*entry)) left.push_back(entry->path());
  }
  Status status;
  for (const fs::path& path : left) {
    const auto lock = LockIfUnused(path);
    if (!lock) continue;
    const Status removed = files.Remove(path);
    if (status && !removed) status = removed;
  }
  return status;
}

}  // namespace orin::base
