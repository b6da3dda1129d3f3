// Makes allocations fail, and counts the blocks that are in use.
//
// For a program that is linked with --wrap=malloc and --wrap=free: what its own objects and static
// libraries take and free comes here, operator new (allocation_count.h) included. What the shared
// system libraries take for themselves does not.
#ifndef PAGESCAN_TESTS_SUPPORT_ALLOCATION_FAILURE_H
#define PAGESCAN_TESTS_SUPPORT_ALLOCATION_FAILURE_H

#include <cstddef>

namespace pagescan::tests {

// Makes one allocation of the calling thread fail: the one before which `succeeding` others are
// made from now on. One object at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t succeeding);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  // Lets every further allocation succeed; returns whether one has failed.
  bool stop();
};

// The blocks that the calling thread has taken, less those that it has freed.
std::ptrdiff_t blocksInUse();

}  // namespace pagescan::tests

#endif
