#pragma once

#include <cstdio>

namespace orin::fuzz {

/// Stops the run as a crash where a rule of the code under test does not hold.
inline void Require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  __builtin_trap();
}

}  // namespace orin::fuzz
