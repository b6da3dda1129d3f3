#include "base/kernels.h"

#include "base/kernels_levels.h"

namespace pagescan::internal {

#if defined(__x86_64__)

constinit const Kernels* activeKernels = &kSse2Kernels;

namespace {

Kernels withSearches(const SearchKernels& searches) {
  Kernels kernels = kAvx2Kernels;
  kernels.findText = searches.findText;
  kernels.findRegion = searches.findRegion;
  kernels.findTag = searches.findTag;
  kernels.findMark = searches.findMark;
  kernels.markTags = searches.markTags;
  kernels.findStyleMark = searches.findStyleMark;
  kernels.urlBytes = searches.urlBytes;
  return kernels;
}

const Kernels kAvx512Kernels = withSearches(kAvx512Searches);

// GCOVR_EXCL_BR_START: a machine has a level or has not
bool hasAvx2() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi");
}

bool hasAvx512() {
  return hasAvx2() && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi");
}

// The kernels of a level that this machine has, or null.
const Kernels* kernelsOf(KernelLevel level) {
  __builtin_cpu_init();
  if (level == KernelLevel::avx512) return hasAvx512() ? &kAvx512Kernels : nullptr;
  if (level == KernelLevel::avx2) return hasAvx2() ? &kAvx2Kernels : nullptr;
  return level == KernelLevel::sse2 ? &kSse2Kernels : &kPortableKernels;
}
// GCOVR_EXCL_BR_STOP

}  // namespace

#else

constinit const Kernels* activeKernels = &kPortableKernels;

namespace {

const Kernels* kernelsOf(KernelLevel level) {
  return level == KernelLevel::portable ? &kPortableKernels : nullptr;
}

}  // namespace

#endif

bool useKernels(KernelLevel level) {
  const Kernels* kernels = kernelsOf(level);
  if (kernels) activeKernels = kernels;
  return kernels != nullptr;
}

namespace {

// What nothing better is found for keeps the level that is active at first.
[[maybe_unused]] const bool chosenAtLoad =
    useKernels(KernelLevel::avx512) || useKernels(KernelLevel::avx2);

}  // namespace
}  // namespace pagescan::internal
