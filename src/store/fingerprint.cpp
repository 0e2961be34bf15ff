#include "store/fingerprint.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <vector>

#include "store/file_names.h"
#include "store/master_format.h"

namespace orin::store {

namespace {

namespace fs = std::filesystem;

// A tick takes four milliseconds on most systems, ten on some.
constexpr std::chrono::milliseconds kLongestTick{20};
constexpr std::chrono::milliseconds kPause{1};

using FileTime = std::pair<int64_t, int64_t>;  // seconds, nanoseconds

FileTime TimeOf(const timespec& time) { return {time.tv_sec, time.tv_nsec}; }

/// The clock that the times of files are taken from.
FileTime Now() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return TimeOf(now);
}

struct Look {
  std::vector<std::string> files;
  FileTime newest;

  void Add(const fs::path& path) {
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0) return;
    // The time of the last write can be set at will; that of the last change cannot.
    newest = std::max(newest, TimeOf(found.st_ctim));
    std::string text = path.filename().string();
    for (const int64_t number :
         {static_cast<int64_t>(found.st_ino), static_cast<int64_t>(found.st_size),
          static_cast<int64_t>(found.st_mtim.tv_sec), static_cast<int64_t>(found.st_mtim.tv_nsec),
          static_cast<int64_t>(found.st_ctim.tv_sec),
          static_cast<int64_t>(found.st_ctim.tv_nsec)}) {
      text += " " + std::to_string(number);
    }
    files.push_back(std::move(text));
  }
};

/// A write shows its time before its bytes: a reader in between has the new time and the old
/// header.
std::string HeaderOf(const StoreLocation& location) {
  std::array<char, kMasterRecordLength> bytes{};
  std::ifstream file(PathOf(location, {FileKind::kMaster, 0}), std::ios::binary);
  file.read(bytes.data(), bytes.size());
  return {bytes.data(), static_cast<size_t>(file.gcount())};
}

bool Counts(const StoreFile& file) {
  return file.kind != FileKind::kTrendLines && file.kind != FileKind::kNewestRanking;
}

Look LookAt(const StoreLocation& location) {
  Look look;
  for (const fs::path& directory :
       std::set<fs::path>{location.system_directory, location.data_directory}) {
    std::error_code failure;
    for (fs::directory_iterator entry(directory, failure), end; !failure && entry != end;
         entry.increment(failure)) {
      const auto file = ParseFileName(entry->path().filename().string());
      if (file && Counts(*file)) look.Add(entry->path());
    }
  }
  std::ranges::sort(look.files);
  look.files.push_back(HeaderOf(location));
  return look;
}

std::string TextOf(const Look& look) {
  std::string text;
  for (const std::string& file : look.files) text += file + "\n";
  return text;
}

}  // namespace

std::string FingerprintOf(const StoreLocation& location) { return TextOf(LookAt(location)); }

std::string SettledFingerprintOf(const StoreLocation& location) {
  const auto deadline = std::chrono::steady_clock::now() + kLongestTick;
  for (;;) {
    const Look look = LookAt(location);
    // Past the deadline the clock has been set back, or the files are being changed right now.
    if (look.newest < Now() || std::chrono::steady_clock::now() >= deadline) return TextOf(look);
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace orin::store
