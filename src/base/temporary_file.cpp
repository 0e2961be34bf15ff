#include "base/temporary_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

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

/// Seldom the same twice; CreateNew tells where it is.
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

/// One that may not be asked is alive. What has this process's number is of an earlier one.
bool IsGone(pid_t process) {
  return process == getpid() || (kill(process, 0) != 0 && errno == ESRCH);
}

}  // namespace

Result<TemporaryFile> CreateTemporary(FileSystem& files, const fs::path& path) {
  const std::string prefix = std::string(kMark) + std::to_string(getpid()) + "-";
  for (int i = 0; i < kMostTries; ++i) {
    fs::path temporary = path;
    temporary += prefix + std::to_string(SomeNumber()) + std::string(kSuffix);
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
    if (maker && IsGone(*maker)) left.push_back(entry->path());
  }
  for (const fs::path& path : left) {
    if (const Status removed = files.Remove(path); !removed) return removed;
  }
  return {};
}

}  // namespace orin::base
