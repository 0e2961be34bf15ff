#pragma once

#include <cstdint>
#include <filesystem>

#include "base/file_system.h"
#include "base/result.h"

namespace orin::shell {

/// A file of one 16-bit integer, record 1, that tells whether an instance of the program is
/// running: 65535 in use; 0, or no such file, not in use. Any other number counts as in use, as it
/// is not 0; a file too short for the number is what a start killed half-way has left and counts
/// as not in use.
class RunMarker {
 public:
  RunMarker() = default;
  explicit RunMarker(std::filesystem::path path) : path_(std::move(path)) {}

  /// Writes 65535 where the marker is not in use and remembers that this instance has set it;
  /// otherwise remembers that another one has. Fails where the file cannot be read or written; the
  /// marker is then neither.
  base::Status Claim(base::FileSystem& files);
  /// Makes the marker this instance's own whoever has set it.
  base::Status Reset(base::FileSystem& files);
  /// Deletes the file where this instance has set it.
  base::Status Release(base::FileSystem& files);

  [[nodiscard]] bool IsOwn() const { return holder_ == Holder::kThisInstance; }
  /// Found in use: another instance is running, or was killed.
  [[nodiscard]] bool IsOfAnother() const { return holder_ == Holder::kAnother; }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  enum class Holder : uint8_t { kUnknown, kThisInstance, kAnother };

  std::filesystem::path path_;
  Holder holder_ = Holder::kUnknown;
};

}  // namespace orin::shell
