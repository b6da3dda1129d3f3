// Compiled for AVX2; nothing here may run before the machine was asked whether it has it.
#include "base/kernels_impl.h"
#include "base/kernels_levels.h"
#include "base/vector_avx2.h"

namespace pagescan::internal {

constinit const Kernels kAvx2Kernels = kernelsOver<Avx2>();

}  // namespace pagescan::internal
