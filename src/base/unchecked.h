// Elements without the check of the index that the standard library's own [] makes in our builds.
#ifndef PAGESCAN_BASE_UNCHECKED_H
#define PAGESCAN_BASE_UNCHECKED_H

#include <cstddef>

namespace pagescan::internal {

// For the few places that every tag passes, where the index is known to be right.
template <class Sequence>
constexpr auto& unchecked(Sequence& sequence, std::size_t index) {
  return *(sequence.data() + index);
}

}  // namespace pagescan::internal

#endif
