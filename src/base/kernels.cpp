#include "base/kernels.h"

#include "base/kernels_levels.h"

namespace pagescan {

constinit const Kernels* activeKernels = &kSse2Kernels;

bool useKernels(KernelLevel level) {
  if (level == KernelLevel::baseline) {
    activeKernels = &kSse2Kernels;
    return true;
  }
  __builtin_cpu_init();
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("bmi")) return false;
  activeKernels = &kAvx2Kernels;
  return true;
}

namespace {

[[maybe_unused]] const bool chosenAtLoad = useKernels(KernelLevel::avx2);

}  // namespace
}  // namespace pagescan
