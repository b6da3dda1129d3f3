// Counts what a piece of code takes from the heap through operator new.
//
// Linking this replaces operator new and delete of the whole program by versions over malloc and
// free, which the sanitizers watch all the same.
#ifndef PAGESCAN_TESTS_SUPPORT_ALLOCATION_COUNT_H
#define PAGESCAN_TESTS_SUPPORT_ALLOCATION_COUNT_H

#include <cstddef>

namespace pagescan::tests {

// The allocations of the calling thread since the object was made.
class AllocationCount {
 public:
  AllocationCount();
  std::size_t soFar() const;

 private:
  std::size_t before_;
};

// How many allocations the calling thread makes in `action`.
template <typename Action>
std::size_t allocationsOf(const Action& action) {
  const AllocationCount count;
  action();
  return count.soFar();
}

}  // namespace pagescan::tests

#endif
