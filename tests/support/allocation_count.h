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
  std::size_t bytesSoFar() const;

  // The most bytes that were held at once, beyond those held when the object was made. Counts the
  // blocks as the allocator makes them. Only of the object that was made last.
  std::size_t peakSoFar() const;

 private:
  std::size_t before_;
  std::size_t bytesBefore_;
  std::ptrdiff_t heldBefore_;
};

// How many allocations the calling thread makes in `action`.
template <typename Action>
std::size_t allocationsOf(const Action& action) {
  const AllocationCount count;
  action();
  return count.soFar();
}

// How many bytes it takes, what it gives back not taken off.
template <typename Action>
std::size_t bytesTakenBy(const Action& action) {
  const AllocationCount count;
  action();
  return count.bytesSoFar();
}

}  // namespace pagescan::tests

#endif
