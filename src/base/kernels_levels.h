// The versions of the kernels that kernels.cpp chooses from.
#ifndef PAGESCAN_BASE_KERNELS_LEVELS_H
#define PAGESCAN_BASE_KERNELS_LEVELS_H

#include "base/kernels.h"

namespace pagescan {

extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;

}  // namespace pagescan

#endif
