#pragma once

#include <cstddef>

namespace orin::base {

/// Keeps the program alive where a page of a mapped file is gone from the disk: another program
/// has made the file shorter, or the disk fails. The page then reads as zeros, and the mapping
/// knows that it has lost it. Signals for any other address go where they went before.
class GuardedRange {
 public:
  GuardedRange() = default;
  /// Of the mapping of `size` bytes at `data`. Not guarded where kMost ranges are already.
  GuardedRange(const void* data, size_t size);
  GuardedRange(GuardedRange&& other) noexcept;
  GuardedRange& operator=(GuardedRange&& other) noexcept;
  GuardedRange(const GuardedRange&) = delete;
  GuardedRange& operator=(const GuardedRange&) = delete;
  /// To be destroyed before the memory is given back.
  ~GuardedRange();

  [[nodiscard]] bool IsGuarded() const { return entry_ != kNoEntry; }
  /// Whether a page has been read that was no longer there.
  [[nodiscard]] bool HasLostPage() const;

  /// Two stores at once, each with all price and credit files that can be.
  static constexpr size_t kMost = 4096;

 private:
  static constexpr size_t kNoEntry = kMost;

  size_t entry_ = kNoEntry;
};

}  // namespace orin::base
