#include <vector>

#include "kernels/level.h"

namespace orin::kernels {

namespace {

std::vector<Level> FindLevels() {
  std::vector<Level> levels;
#ifdef ORIN_X86_64
  // The features that tell the levels apart; older compilers do not know the levels by name.
  levels.push_back({"x86-64-v2", &v2::kKernels});
  if (__builtin_cpu_supports("avx2") == 0 || __builtin_cpu_supports("bmi2") == 0) return levels;
  levels.push_back({"x86-64-v3", &v3::kKernels});
  for (const bool has :
       {__builtin_cpu_supports("avx512f") != 0, __builtin_cpu_supports("avx512bw") != 0,
        __builtin_cpu_supports("avx512cd") != 0, __builtin_cpu_supports("avx512dq") != 0,
        __builtin_cpu_supports("avx512vl") != 0}) {
    if (!has) return levels;
  }
  levels.push_back({"x86-64-v4", &v4::kKernels});
#else
  levels.push_back({"plain", &plain::kKernels});
#endif
  return levels;
}

}  // namespace

std::span<const Level> Levels() {
  static const std::vector<Level> levels = FindLevels();
  return levels;
}

const Kernels& Best() {
  static const Kernels& best = *Levels().back().kernels;
  return best;
}

}  // namespace orin::kernels
