// The kernels, written over a vector type that offers
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

#include "base/kernels.h"
#include "base/kernels_text_impl.h"

namespace pagescan {
namespace {

template <class Vector>
class ProbeVectors {
 public:
  explicit ProbeVectors(const ByteProbe& probe)
      : value_(Vector::fill(probe.value)), fold_(Vector::fill(probe.fold)) {}

  typename Vector::Type fits(const char* at) const {
    return Vector::equal(Vector::either(Vector::load(at), fold_), value_);
  }

 private:
  typename Vector::Type value_;
  typename Vector::Type fold_;
};

template <class Vector>
const char* findPair(const char* begin, const char* end, const PairProbe& probe) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const ProbeVectors<Vector> first(probe.first);
  const ProbeVectors<Vector> second(probe.second);
  const auto fitsAt = [&](const char* at) {
    return Vector::both(first.fits(at), second.fits(at + probe.distance));
  };
  for (; end - begin >= 2 * kWidth; begin += 2 * kWidth) {
    const auto low = fitsAt(begin);
    const auto high = fitsAt(begin + kWidth);
    if (Vector::mask(Vector::either(low, high)) == 0) continue;
    const auto lowMask = Vector::mask(low);
    return lowMask != 0 ? begin + std::countr_zero(lowMask)
                        : begin + kWidth + std::countr_zero(Vector::mask(high));
  }
  for (; begin < end; ++begin) {
    if (probe.first.fits(*begin) && probe.second.fits(begin[probe.distance])) break;
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
      .xorWords = xorWords<Vector>,
      .countUtf8Pairs = countUtf8Pairs<Vector>,
      .copyAscii = copyAscii<Vector>,
  };
}

}  // namespace
}  // namespace pagescan

#endif
