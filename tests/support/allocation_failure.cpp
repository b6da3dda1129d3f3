#include "support/allocation_failure.h"

#include <cerrno>

namespace {

thread_local bool isArmed = false;
thread_local bool hasFailed = false;
thread_local std::size_t left = 0;
thread_local std::ptrdiff_t blocks = 0;

bool failsNow() {
  if (!isArmed || left-- > 0) return false;
  isArmed = false;
  hasFailed = true;
  return true;
}

}  // namespace

extern "C" {

void* __real_malloc(std::size_t size);
void __real_free(void* memory);

void* __wrap_malloc(std::size_t size) {
  if (failsNow()) {
    errno = ENOMEM;
    return nullptr;
  }
  void* const memory = __real_malloc(size);
  if (memory != nullptr) ++blocks;
  return memory;
}

void __wrap_free(void* memory) {
  if (memory != nullptr) --blocks;
  __real_free(memory);
}
}

namespace pagescan::tests {

FailingAllocation::FailingAllocation(std::size_t succeeding) {
  left = succeeding;
  hasFailed = false;
  isArmed = true;
}

FailingAllocation::~FailingAllocation() {
  stop();
}

bool FailingAllocation::stop() {
  isArmed = false;
  return hasFailed;
}

std::ptrdiff_t blocksInUse() {
  return blocks;
}

}  // namespace pagescan::tests
