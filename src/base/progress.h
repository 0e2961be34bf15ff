#pragma once

#include <cstdint>
#include <string_view>

namespace orin::base {

/// What a long job talks to. The job calls Report often (at least every 100 ms of work).
class Progress {
 public:
  Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  virtual ~Progress() = default;

  /// `stage` is the caption text of the step under way, `done` of `total` its units (total 0:
  /// unknown). Returns false when the job is to stop; what it has committed stays.
  [[nodiscard]] virtual bool Report(std::string_view stage, int64_t done, int64_t total) = 0;
  /// How many a search has found so far, before the Report that follows.
  virtual void Found(int64_t /*count*/) {}
};

/// For jobs nobody watches.
class SilentProgress final : public Progress {
 public:
  [[nodiscard]] bool Report(std::string_view, int64_t, int64_t) override { return true; }
};

}  // namespace orin::base
