#include "allocations.h"

#include <malloc.h>

#include <algorithm>

// The C library's own versions, which ours call.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

// Only one thread runs while something is counted; blocks of before may be given back meanwhile.
bool isCounting = false;
pagescan::bench::Allocations counted;
std::ptrdiff_t live = 0;

void* taken(void* block) {
  if (isCounting && block != nullptr) {
    const std::size_t size = malloc_usable_size(block);
    ++counted.count;
    counted.bytes += size;
    live += static_cast<std::ptrdiff_t>(size);
    counted.peak =
        std::max(counted.peak, static_cast<std::size_t>(std::max(live, std::ptrdiff_t{0})));
  }
  return block;
}

void givenBack(void* block) {
  if (isCounting && block != nullptr) {
    live -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
  }
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  return taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
  return taken(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
  givenBack(block);
  return taken(__libc_realloc(block, size));
}

void free(void* block) {
  givenBack(block);
  __libc_free(block);
}
}

namespace pagescan::bench {

AllocationCount::AllocationCount() {
  counted = {};
  live = 0;
  isCounting = true;
}

AllocationCount::~AllocationCount() {
  isCounting = false;
}

Allocations AllocationCount::soFar() const {
  Allocations result = counted;
  result.live = static_cast<std::size_t>(std::max(live, std::ptrdiff_t{0}));
  return result;
}

}  // namespace pagescan::bench
