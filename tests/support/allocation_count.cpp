#include "support/allocation_count.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocations = 0;
thread_local std::size_t bytes = 0;
// Less than none on a thread that frees what another one took.
thread_local std::ptrdiff_t held = 0;
thread_local std::ptrdiff_t mostHeld = 0;

std::ptrdiff_t sizeOf(void* memory) {
  return static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
}

void* allocate(std::size_t size) {
  ++allocations;
  bytes += size;
  void* const memory = std::malloc(size == 0 ? 1 : size);
  held += sizeOf(memory);
  mostHeld = std::max(mostHeld, held);
  return memory;
}

void release(void* memory) noexcept {
  held -= sizeOf(memory);
  std::free(memory);
}

void* allocateOrThrow(std::size_t size) {
  void* const memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete[](void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}

namespace pagescan::tests {

AllocationCount::AllocationCount() : before_(allocations), bytesBefore_(bytes), heldBefore_(held) {
  mostHeld = held;
}

std::size_t AllocationCount::soFar() const {
  return allocations - before_;
}

std::size_t AllocationCount::bytesSoFar() const {
  return bytes - bytesBefore_;
}

std::size_t AllocationCount::peakSoFar() const {
  return static_cast<std::size_t>(mostHeld - heldBefore_);
}

}  // namespace pagescan::tests
