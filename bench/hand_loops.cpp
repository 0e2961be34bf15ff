#include "hand_loops.h"

#include "kernels/kernels.h"

namespace orin::bench {

const HandLoops& BestHandLoops() {
#ifdef ORIN_X86_64
  const std::string_view level = kernels::Levels().back().name;
  if (level == "x86-64-v4") return v4::kHandLoops;
  if (level == "x86-64-v3") return v3::kHandLoops;
  return v2::kHandLoops;
#else
  return plain::kHandLoops;
#endif
}

}  // namespace orin::bench
