// From a code point to its pointers in an index.
//
// An index is an array by pointer. Its reverse is no second table of characters: it is the pointers
// in the order of the characters that they stand for, sorted at compile time, two bytes each.
#ifndef PAGESCAN_ENCODING_REVERSE_INDEX_H
#define PAGESCAN_ENCODING_REVERSE_INDEX_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "encoding/indexes.h"

namespace pagescan::internal {

// Plain arrays: compilers bound the calls that they evaluate.
template <std::size_t kCount>
struct SortedPointers {
  std::uint16_t pointers[kCount];
};

// Puts the pointers of `index` that stand for a character in the order of their characters, those
// of one character in their own order. A radix sort, which takes the fewest steps.
template <std::size_t kCount, typename Unit, std::size_t kSize>
constexpr SortedPointers<kCount> pointersByCodePoint(const Unit (&index)[kSize]) {
  constexpr unsigned kDigit = 9;  // bits; two digits hold all code points up to plane 2
  constexpr unsigned kMask = (1U << kDigit) - 1;
  SortedPointers<kCount> from{};
  SortedPointers<kCount> to{};
  for (std::size_t i = 0, count = 0; i < kSize - 1; ++i) {
    if (index[i] != kReplacementCharacter) from.pointers[count++] = static_cast<std::uint16_t>(i);
  }
  for (unsigned shift = 0; shift < 2 * kDigit; shift += kDigit) {
    unsigned starts[kMask + 2]{};
    for (const std::uint16_t pointer : from.pointers)
      ++starts[(index[pointer] >> shift & kMask) + 1];
    for (unsigned i = 1; i <= kMask; ++i) starts[i] += starts[i - 1];
    for (const std::uint16_t pointer : from.pointers) {
      to.pointers[starts[index[pointer] >> shift & kMask]++] = pointer;
    }
    from = to;
  }
  return from;
}

template <typename Unit, std::size_t kSize>
constexpr std::size_t countCharacters(const Unit (&index)[kSize]) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < kSize - 1; ++i) count += index[i] != kReplacementCharacter ? 1U : 0U;
  return count;
}

// The pointers of one character, in their own order; empty when the index does not have it.
struct Pointers {
  const std::uint16_t* begin;
  const std::uint16_t* end;
};

// codePointAt(pointer) is the character of a pointer.
template <std::size_t kCount, typename CodePointAt>
Pointers pointersOf(char32_t codePoint, const SortedPointers<kCount>& sorted,
                    const CodePointAt& codePointAt) {
  const std::uint16_t* const all = sorted.pointers;
  const auto* const begin = std::partition_point(
      all, all + kCount, [&](std::uint16_t pointer) { return codePointAt(pointer) < codePoint; });
  const auto* const end = std::partition_point(begin, all + kCount, [&](std::uint16_t pointer) {
    return codePointAt(pointer) == codePoint;
  });
  return {begin, end};
}

}  // namespace pagescan::internal

#endif
