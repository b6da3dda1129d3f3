// The versions of the kernels that kernels.cpp chooses from. All but the portable one exist on
// x86-64 alone.
#ifndef PAGESCAN_BASE_KERNELS_LEVELS_H
#define PAGESCAN_BASE_KERNELS_LEVELS_H

#include "base/kernels.h"

namespace pagescan::internal {

extern const Kernels kPortableKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;

// The kernels that gain from vectors wider still.
struct SearchKernels {
  decltype(Kernels::findText) findText;
  decltype(Kernels::findRegion) findRegion;
  decltype(Kernels::findTag) findTag;
  decltype(Kernels::findMark) findMark;
  decltype(Kernels::markTags) markTags;
  decltype(Kernels::findStyleMark) findStyleMark;
  decltype(Kernels::urlBytes) urlBytes;
};

extern const SearchKernels kAvx512Searches;

}  // namespace pagescan::internal

#endif
