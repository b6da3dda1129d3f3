// The vector for code that is inlined where it is used: one that every machine of the kind has that
// the compiler works for. For texts of some dozens of bytes, where a call of a kernel would cost as
// much as its work.
#ifndef PAGESCAN_BASE_NEAR_VECTOR_H
#define PAGESCAN_BASE_NEAR_VECTOR_H

#if defined(__SSE2__)
#include "base/vector_sse2.h"
namespace pagescan::internal {
using NearVector = Sse2;
}
#else
#include "base/vector_portable.h"
namespace pagescan::internal {
using NearVector = Portable;
}
#endif

#endif
