// The inner loops that pay for wide vectors, and the one place that chooses between their versions.
//
// Every kernel is written once, over a vector type (kernels_impl.h), and compiled for the baseline
// (SSE2, which every x86-64 machine has) and for AVX2. The choice is made when the library is
// loaded; before that the baseline serves. Ranges are [begin, end); nothing outside is read.
#ifndef PAGESCAN_BASE_KERNELS_H
#define PAGESCAN_BASE_KERNELS_H

#include <cstddef>
#include <cstdint>

namespace pagescan {

// A byte b fits when (b | fold) == value: `fold` is 0x20 for a letter of either case, else 0.
struct ByteProbe {
  char value;
  char fold;

  constexpr bool fits(char byte) const { return static_cast<char>(byte | fold) == value; }
};

// Two bytes at a distance: a filter for texts that begin with the one and hold the other.
struct PairProbe {
  ByteProbe first;
  ByteProbe second;
  std::size_t distance;
};

// Pairs of neighbouring bytes as isUtf8 judges them.
struct PairCount {
  std::size_t good;  // a lead byte and a continuation byte
  std::size_t bad;   // a lead byte and anything else; an ASCII byte and a continuation byte
};

struct Kernels {
  // The first p with *p fitting probe.first and p[probe.distance] fitting probe.second, or `end`.
  // `end` bounds p alone: the `probe.distance` bytes behind it must be readable.
  const char* (*findPair)(const char* begin, const char* end, const PairProbe& probe);

  // The XOR of `count` 64-bit little-endian words at any alignment.
  std::uint64_t (*xorWords)(const char* words, std::size_t count);

  // The pairs of a range of at least one byte. May stop once more than `mostBad` are bad.
  PairCount (*countUtf8Pairs)(const char* begin, const char* end, std::size_t mostBad);

  // Copies bytes up to the first one of 128 or above and returns its place, or `end`. `out` has
  // room for the whole range; what stands there behind the copied bytes is unspecified.
  const char* (*copyAscii)(const char* begin, const char* end, char* out);
};

extern const Kernels* activeKernels;

inline const Kernels& kernels() {
  return *activeKernels;
}

enum class KernelLevel { baseline, avx2 };

// Makes `level` the active one and returns true, or false on a machine without it. Not for use
// while other threads are in the library: it is the switch for tests and benchmarks.
bool useKernels(KernelLevel level);

}  // namespace pagescan

#endif
