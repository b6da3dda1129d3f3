#include "base/kernels_impl.h"
#include "base/kernels_levels.h"
#include "base/vector_sse2.h"

namespace pagescan::internal {

constinit const Kernels kSse2Kernels = kernelsOver<Sse2>();

}  // namespace pagescan::internal
