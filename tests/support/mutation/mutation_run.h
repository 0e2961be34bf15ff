#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/mutation/store_image.h"

namespace orin::support {

/// A damaged store and one who used it.
struct Round {
  std::string damage;               // "data/orin001.dat: bit 3 of byte 17 flipped"
  std::string user;                 // "append a day, stopped at operation 4"
  std::vector<std::string> faults;  // none where the round holds
};

/// Damages a sound store, reads it, writes to it and looks at what became of it. A round holds
/// where
///  - every failure is a Japanese sentence,
///  - a store without findings reads as the sound one,
///  - the writer changes no bar but those it is asked to change, whether it succeeds, fails or is
///    stopped in the middle: neither those that a reader saw before nor those that lie in the
///    price files where the header does not lead any more.
class MutationRun {
 public:
  /// Works in a directory of this process, in memory where the system has /dev/shm. Throws where
  /// it cannot make a sound store there.
  explicit MutationRun(uint64_t seed);
  MutationRun(const MutationRun&) = delete;
  MutationRun& operator=(const MutationRun&) = delete;
  ~MutationRun();

  /// One reader and one writer, each on its own copy of the store. The same seed and number give
  /// the same damage and the same users.
  std::vector<Round> RunOne(uint64_t number);
  /// All readers and all writers, these to their end and stopped once in the middle.
  std::vector<Round> RunAll(uint64_t number);

 private:
  struct Sound;

  /// Of a round: from its number and the seed alone.
  [[nodiscard]] Random RandomOf(uint64_t number) const;

  uint64_t seed_;
  std::filesystem::path root_;
  std::vector<Sound> sound_;
};

}  // namespace orin::support
