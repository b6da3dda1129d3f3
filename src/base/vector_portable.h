// A vector of eight bytes in one 64-bit word, as kernels_impl.h describes vectors: for machines
// that have no vectors of which we know. Bytes lie in the word as on little-endian machines: the
// first byte in the lowest bits.
#ifndef PAGESCAN_BASE_VECTOR_PORTABLE_H
#define PAGESCAN_BASE_VECTOR_PORTABLE_H

#include <cstddef>
#include <cstdint>

#include "base/words.h"

namespace pagescan::internal {
namespace {

struct Portable {
  using Short = Portable;
  using Type = std::uint64_t;
  using Mask = std::uint32_t;
  static constexpr std::size_t kWidth = 8;

  static Type load(const char* at) { return loadWord<Type>(at); }
  static void store(char* at, Type v) { storeWord(at, v); }
  static Type fill(char c) { return kOnes * static_cast<unsigned char>(c); }
  static Type equal(Type a, Type b) {
    const Type differences = a ^ b;
    // The top bit of each byte that is not 0.
    const Type unlike = ((differences & ~kTops) + ~kTops) | differences;
    return wholeBytes(~unlike & kTops);
  }
  static Type either(Type a, Type b) { return a | b; }
  static Type both(Type a, Type b) { return a & b; }
  static Type differ(Type a, Type b) { return a ^ b; }
  static Type less(Type a, Type b) {
    // With the top bits turned, signed order is unsigned order.
    const Type x = a ^ kTops;
    const Type y = b ^ kTops;
    const Type notLessBelowTop = (x | kTops) - (y & ~kTops);
    return wholeBytes(((~x & y) | (~(x ^ y) & ~notLessBelowTop)) & kTops);
  }
  static Type without(Type a, Type b) { return a & ~b; }
  static Type minus(Type a, Type b) { return ((a | kTops) - (b & ~kTops)) ^ ((a ^ ~b) & kTops); }
  static std::size_t sum(Type v) {
    constexpr Type kEvenBytes = 0x00ff00ff00ff00ff;
    const Type pairs = (v & kEvenBytes) + ((v >> 8U) & kEvenBytes);
    return static_cast<std::size_t>((pairs * 0x0001000100010001) >> 48U);
  }
  static Mask mask(Type v) {
    // Moves the top bit of byte i to bit 56 + i.
    return static_cast<Mask>(((v & kTops) * 0x0002040810204081) >> 56U);
  }

 private:
  static constexpr Type kOnes = 0x0101010101010101;
  static constexpr Type kTops = kOnes * 0x80;

  // All bits of each byte whose top bit is set; no other bit may be.
  static Type wholeBytes(Type tops) { return (tops >> 7U) * 0xff; }
};

}  // namespace
}  // namespace pagescan::internal

#endif
