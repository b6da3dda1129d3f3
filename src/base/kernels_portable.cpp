#include "base/kernels_impl.h"
#include "base/kernels_levels.h"
#include "base/vector_portable.h"

namespace pagescan::internal {

constinit const Kernels kPortableKernels = kernelsOver<Portable>();

}  // namespace pagescan::internal
