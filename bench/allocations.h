// What a piece of code takes from the heap: by malloc, calloc, realloc and operator new, the
// library's calls and any peer's. Linking this replaces malloc and its like in the whole program.
#ifndef PAGESCAN_BENCH_ALLOCATIONS_H
#define PAGESCAN_BENCH_ALLOCATIONS_H

#include <cstddef>

namespace pagescan::bench {

// Bytes are those that the allocator set aside, which are a few more than were asked for.
struct Allocations {
  std::size_t count = 0;  // blocks taken, moved ones included
  std::size_t bytes = 0;  // in these
  std::size_t live = 0;   // bytes not given back
  std::size_t peak = 0;   // the most that were live at once
};

// Counts from here on, on every thread, until its death; one at a time.
class AllocationCount {
 public:
  AllocationCount();
  AllocationCount(const AllocationCount&) = delete;
  AllocationCount& operator=(const AllocationCount&) = delete;
  ~AllocationCount();

  Allocations soFar() const;
};

}  // namespace pagescan::bench

#endif
