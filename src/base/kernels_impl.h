// The kernels, written over a vector type that offers
//   Short                      a vector type of 16 bytes, for texts of some dozens of bytes
//   kWidth                     bytes in a vector; a Mask has one bit for each
//   load(p), store(p, v)       kWidth bytes at any alignment
//   fill(c)                    one byte repeated
//   equal, less                bytewise == and signed <, all bits of a byte set where it holds
//   either, both, differ       OR, AND, XOR
//   without(a, b)              the bits of a that b has not
//   minus(a, b)                bytewise difference
//   sum(v)                     of all bytes, unsigned
//   mask(v)                    the top bit of each byte
// Included by one source for each vector type, never elsewhere.
#ifndef PAGESCAN_BASE_KERNELS_IMPL_H
#define PAGESCAN_BASE_KERNELS_IMPL_H

#include <bit>
#include <cstring>

#include "base/byte_class.h"
#include "base/kernels.h"
#include "base/kernels_text_impl.h"
#include "base/search.h"

namespace pagescan {
namespace {

// A probe as vectors; without folding it costs one comparison.
template <class Vector, bool kFolds>
class ProbeVectors {
 public:
  explicit ProbeVectors(const ByteProbe& probe)
      : value_(Vector::fill(probe.value)), fold_(Vector::fill(probe.fold)) {}

  typename Vector::Type fits(const char* at) const {
    const auto bytes = Vector::load(at);
    return Vector::equal(kFolds ? Vector::either(bytes, fold_) : bytes, value_);
  }

 private:
  typename Vector::Type value_;
  typename Vector::Type fold_;
};

// Four vectors at a time; where one of them holds a pair, one by one.
template <class Vector, bool kFirstFolds, bool kSecondFolds>
const char* findPairFolding(const char* begin, const char* end, const PairProbe& probe) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const ProbeVectors<Vector, kFirstFolds> first(probe.first);
  const ProbeVectors<Vector, kSecondFolds> second(probe.second);
  const auto fitsAt = [&](const char* at) {
    return Vector::both(first.fits(at), second.fits(at + probe.distance));
  };
  const char* const start = begin;
  for (; end - begin >= 4 * kWidth; begin += 4 * kWidth) {
    const auto any =
        Vector::either(Vector::either(fitsAt(begin), fitsAt(begin + kWidth)),
                       Vector::either(fitsAt(begin + 2 * kWidth), fitsAt(begin + 3 * kWidth)));
    if (Vector::mask(any) != 0) break;
  }
  for (; end - begin >= kWidth; begin += kWidth) {
    const auto mask = Vector::mask(fitsAt(begin));
    if (mask != 0) return begin + std::countr_zero(mask);
  }
  if (begin < end && begin - start >= kWidth) {
    // The rest, with bytes before it that were looked at already.
    const auto mask = Vector::mask(fitsAt(end - kWidth));
    return mask != 0 ? end - kWidth + std::countr_zero(mask) : end;
  }
  for (; begin < end; ++begin) {
    if (probe.first.fits(*begin) && probe.second.fits(begin[probe.distance])) break;
  }
  return begin;
}

template <class Vector>
const char* findPair(const char* begin, const char* end, const PairProbe& probe) {
  const bool firstFolds = probe.first.fold != 0;
  const bool secondFolds = probe.second.fold != 0;
  if (firstFolds) {
    return secondFolds ? findPairFolding<Vector, true, true>(begin, end, probe)
                       : findPairFolding<Vector, true, false>(begin, end, probe);
  }
  return secondFolds ? findPairFolding<Vector, false, true>(begin, end, probe)
                     : findPairFolding<Vector, false, false>(begin, end, probe);
}

// One bit for each byte of 64 that is a "<" without a "/" behind it: closing tags are half of all.
template <class Vector>
std::uint64_t openings(const char* at) {
  const auto opening = Vector::fill('<');
  const auto slash = Vector::fill('/');
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < 64; i += Vector::kWidth) {
    const auto isOpening = Vector::equal(Vector::load(at + i), opening);
    const auto isClosing = Vector::equal(Vector::load(at + i + 1), slash);
    mask |= std::uint64_t{Vector::mask(Vector::butNot(isOpening, isClosing))} << i;
  }
  return mask;
}

template <class Vector>
const char* findTag(const char* begin, const char* end, const TagFilter& filter) {
  for (; end - begin >= 64; begin += 64) {
    for (std::uint64_t mask = openings<Vector>(begin); mask != 0; mask &= mask - 1) {
      const char* at = begin + std::countr_zero(mask);
      if (filter.passes(at)) return at;
    }
  }
  for (; begin < end; ++begin) {
    if (*begin == '<' && filter.passes(begin)) break;
  }
  return begin;
}

template <class Vector>
const char* skipWhiteSpace(const char* begin, const char* end) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  constexpr auto kAll = static_cast<typename Vector::Mask>(~std::uint64_t{0} >> (64 - kWidth));
  const auto is = [](typename Vector::Type bytes, char c) {
    return Vector::equal(bytes, Vector::fill(c));
  };
  for (; end - begin >= kWidth; begin += kWidth) {
    const auto bytes = Vector::load(begin);
    const auto mask =
        Vector::mask(Vector::either(Vector::either(is(bytes, ' '), is(bytes, '\n')),
                                    Vector::either(is(bytes, '\t'), is(bytes, '\r'))));
    if (mask != kAll) return begin + std::countr_one(mask);
  }
  return begin;
}

inline std::uint64_t wordAt(const char* words, std::size_t index) {
  std::uint64_t word;
  std::memcpy(&word, words + index * sizeof word, sizeof word);
  return word;
}

template <class Vector>
std::uint64_t xorWords(const char* words, std::size_t count) {
  constexpr std::size_t kWordsPerVector = Vector::kWidth / sizeof(std::uint64_t);
  auto even = Vector::fill(0);
  auto odd = even;
  std::size_t done = 0;
  for (; count - done >= 2 * kWordsPerVector; done += 2 * kWordsPerVector) {
    const char* at = words + done * sizeof(std::uint64_t);
    even = Vector::differ(even, Vector::load(at));
    odd = Vector::differ(odd, Vector::load(at + Vector::kWidth));
  }
  char lanes[Vector::kWidth];
  Vector::store(lanes, Vector::differ(even, odd));
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < kWordsPerVector; ++i) sum ^= wordAt(lanes, i);
  for (; done < count; ++done) sum ^= wordAt(words, done);
  return sum;
}

template <class Vector>
constexpr Kernels kernelsOver() {
  return {
      .findPair = findPair<Vector>,
      .findTag = findTag<Vector>,
      .skipWhiteSpace = skipWhiteSpace<Vector>,
      .xorWords = xorWords<Vector>,
      .countUtf8Pairs = countUtf8Pairs<Vector>,
      .copyAscii = copyAscii<Vector>,
      .decodeUrl = decodeUrl<typename Vector::Short>,
      .encodeUrl = encodeUrl<typename Vector::Short>,
  };
}

}  // namespace
}  // namespace pagescan

#endif
