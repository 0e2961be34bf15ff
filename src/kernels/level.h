#pragma once

#include "kernels/kernels.h"

namespace orin::kernels {

// The levels of the x86-64 instruction set, and what any processor has.
namespace v2 {
extern const Kernels kKernels;
}
namespace v3 {
extern const Kernels kKernels;
}
namespace v4 {
extern const Kernels kKernels;
}
namespace plain {
extern const Kernels kKernels;
}

}  // namespace orin::kernels
