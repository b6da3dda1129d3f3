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
// Where comparisons yield something else than vectors, the searches take that.
// Included by one source for each vector type, never elsewhere.
#ifndef PAGESCAN_BASE_KERNELS_IMPL_H
#define PAGESCAN_BASE_KERNELS_IMPL_H

#include <bit>
#include <cstdint>

#include "base/kernels.h"
#include "base/kernels_lines_impl.h"
#include "base/kernels_style_impl.h"
#include "base/kernels_style_walk_impl.h"
#include "base/kernels_tags_impl.h"
#include "base/kernels_text_impl.h"
#include "base/kernels_url_impl.h"

namespace pagescan::internal {
namespace {

// No call and no table of another source: this one may be compiled for a machine that others lack.
constexpr char foldedLetter(char c) {
  return static_cast<unsigned char>(c - 'A') < 26 ? static_cast<char>(c | 0x20) : c;
}

inline bool standsAt(const char* at, const Needle& needle) {
  for (std::size_t i = 0; i < needle.length; ++i) {
    const bool fits = at[i] == needle.text[i] ||
                      (needle.ignoresCase && foldedLetter(at[i]) == foldedLetter(needle.text[i]));
    if (!fits) return false;
  }
  return true;
}

// As many bytes as a mask has bits.
constexpr std::ptrdiff_t kBlock = 64;

// Which bytes of a vector may be the first of the needle's two. Without folding a probe costs one
// comparison.
template <class Vector, bool kFirstFolds, bool kSecondFolds>
class NeedleFilter {
 public:
  explicit NeedleFilter(const Needle& needle)
      : first_(Vector::fill(needle.first.value)),
        firstFold_(Vector::fill(needle.first.fold)),
        second_(Vector::fill(needle.second.value)),
        secondFold_(Vector::fill(needle.second.fold)),
        distance_(needle.distance) {}

  // Whether a place in whole vectors fits.
  bool fitsIn(const char* begin, std::ptrdiff_t length) const {
    auto any = at(begin);
    for (const char* next = begin + kWidth; next < begin + length; next += kWidth) {
      any = Vector::either(any, at(next));
    }
    return Vector::mask(any) != 0;
  }

  // Of a block, a bit for each place that fits.
  std::uint64_t placesIn(const char* block) const {
    std::uint64_t places = 0;
    for (std::ptrdiff_t i = 0; i < kBlock; i += kWidth) {
      places |= std::uint64_t{Vector::mask(at(block + i))} << i;
    }
    return places;
  }

  auto at(const char* at) const {
    const auto near = Vector::load(at);
    const auto far = Vector::load(at + distance_);
    return Vector::both(
        Vector::equal(kFirstFolds ? Vector::either(near, firstFold_) : near, first_),
        Vector::equal(kSecondFolds ? Vector::either(far, secondFold_) : far, second_));
  }

 private:
  static constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);

  typename Vector::Type first_;
  typename Vector::Type firstFold_;
  typename Vector::Type second_;
  typename Vector::Type secondFold_;
  std::size_t distance_;
};

// The first of the candidates in a vector at `at` that is accepted, or null.
template <class Mask, class Accept>
const char* firstOf(Mask candidates, const char* at, Accept& accept) {
  for (; candidates != 0; candidates &= candidates - 1) {
    const char* candidate = at + std::countr_zero(candidates);
    if (accept(candidate)) return candidate;
  }
  return nullptr;
}

// The first aligned place after `at`.
template <class Vector>
const char* alignedAfter(const char* at) {
  return at + (Vector::kWidth - reinterpret_cast<std::uintptr_t>(at) % Vector::kWidth);
}

// The first place in [at, last) where both probes fit and that is accepted, or null. 128 bytes at a
// time; the first vector and the last one together with bytes that are looked at once more.
template <class Vector, bool kFirstFolds, bool kSecondFolds, class Accept>
const char* findProbesFolding(const char* at, const char* last, const Needle& probes,
                              Accept& accept) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const NeedleFilter<Vector, kFirstFolds, kSecondFolds> filter(probes);
  const auto firstIn = [&](const char* vector) {
    return firstOf(Vector::mask(filter.at(vector)), vector, accept);
  };
  if (last - at < kWidth) {
    for (; at < last; ++at) {
      if (accept(at)) return at;
    }
    return nullptr;
  }
  if (const char* found = firstIn(at)) return found;
  at = alignedAfter<Vector>(at);
  for (; last - at >= 2 * kBlock; at += 2 * kBlock) {
    if (!filter.fitsIn(at, 2 * kBlock)) continue;
    for (const char* block : {at, at + kBlock}) {
      if (const char* found = firstOf(filter.placesIn(block), block, accept)) return found;
    }
  }
  for (; at < last; at += kWidth) {
    if (last - at < kWidth) at = last - kWidth;
    if (const char* found = firstIn(at)) return found;
  }
  return nullptr;
}

template <class Vector, class Accept>
const char* findProbes(const char* at, const char* last, const Needle& probes, Accept accept) {
  const bool firstFolds = probes.first.fold != 0;
  const bool secondFolds = probes.second.fold != 0;
  if (firstFolds) {
    return secondFolds ? findProbesFolding<Vector, true, true>(at, last, probes, accept)
                       : findProbesFolding<Vector, true, false>(at, last, probes, accept);
  }
  return secondFolds ? findProbesFolding<Vector, false, true>(at, last, probes, accept)
                     : findProbesFolding<Vector, false, false>(at, last, probes, accept);
}

// What searches call is made part of them: after a call, g++ 12 may take the wide registers for
// clean and leave them dirty, which slows down what comes next by some dozens of ns.
template <class Vector>
[[gnu::flatten]] const char* findText(const char* begin, const char* end, const Needle& needle) {
  const char* last = end - (needle.length - 1) + needle.lead;  // after the last candidate
  const char* found =
      findProbes<Vector>(begin + needle.lead, last, needle,
                         [&needle](const char* at) { return standsAt(at - needle.lead, needle); });
  return found ? found - needle.lead : end;
}

// Both delimiters in one pass. Where a closing one was found first, the search ends at the next
// place that is too late for an opening one.
template <class Vector>
[[gnu::flatten]] Region findRegion(const char* begin, const char* end, const Needle& open,
                                   const Needle& close) {
  Region region{};
  const auto takes = [begin, end](const char* at, const Needle& needle) {
    return at - begin >= static_cast<std::ptrdiff_t>(needle.lead) &&
           end - at >= static_cast<std::ptrdiff_t>(needle.length - needle.lead) &&
           standsAt(at - needle.lead, needle);
  };
  const auto accept = [&](const char* at) {
    const bool isTooLate = region.close && at - open.lead >= region.close;
    if (!region.open && !isTooLate && takes(at, open)) region.open = at - open.lead;
    if (!region.close && takes(at, close)) region.close = at - close.lead;
    return region.close && (region.open || isTooLate);
  };
  findProbesFolding<Vector, false, false>(begin, end - open.distance, open, accept);
  return region;
}

// One bit for each byte of 64 that is a "<" without a "/" after it: closing tags are half of all.
template <class Vector>
std::uint64_t openings(const char* at) {
  const auto opening = Vector::fill('<');
  const auto slash = Vector::fill('/');
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < 64; i += Vector::kWidth) {
    const auto isOpening = Vector::equal(Vector::load(at + i), opening);
    const auto isClosing = Vector::equal(Vector::load(at + i + 1), slash);
    mask |= std::uint64_t{Vector::mask(Vector::without(isOpening, isClosing))} << i;
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

// Whether a delimiter of a script or of a comment may begin here: "<sc", "</sc", "<!" or "-->".
// Three bytes must be readable.
inline bool mayBeMark(const char* at, const char* end) {
  const char third = foldedLetter(at[2]);
  if (at[0] == '-') return at[1] == '-' && third == '>';
  if (at[0] != '<') return false;
  if (at[1] == '/') return third == 's' && end - at > 3 && foldedLetter(at[3]) == 'c';
  return at[1] == '!' || (foldedLetter(at[1]) == 's' && third == 'c');
}

// One bit for each byte of 64 that may pass mayBeMark.
template <class Vector>
std::uint64_t marks(const char* at) {
  const auto fold = Vector::fill(0x20);
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < 64; i += Vector::kWidth) {
    const auto second = Vector::either(Vector::load(at + i + 1), fold);
    const auto third = Vector::either(Vector::load(at + i + 2), fold);
    const auto isOpening = Vector::equal(Vector::load(at + i), Vector::fill('<'));
    const auto isWanted = Vector::either(Vector::either(Vector::equal(second, Vector::fill('!')),
                                                        Vector::equal(second, Vector::fill('s'))),
                                         Vector::equal(third, Vector::fill('s')));
    const auto isEnd = Vector::both(Vector::equal(second, Vector::fill('-')),
                                    Vector::equal(third, Vector::fill('>')));
    mask |= std::uint64_t{Vector::mask(Vector::either(Vector::both(isOpening, isWanted), isEnd))}
            << i;
  }
  return mask;
}

template <class Vector>
const char* findMark(const char* begin, const char* limit, const char* end) {
  constexpr std::ptrdiff_t kLength = 3;  // of the shortest delimiter
  for (; begin < limit && end - begin >= 64 + kLength - 1; begin += 64) {
    for (std::uint64_t mask = marks<Vector>(begin); mask != 0; mask &= mask - 1) {
      const char* at = begin + std::countr_zero(mask);
      if (at >= limit) return limit;
      if (mayBeMark(at, end)) return at;
    }
  }
  for (; begin < limit && end - begin >= kLength; ++begin) {
    if (mayBeMark(begin, end)) return begin;
  }
  return limit;
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

template <class Vector>
std::uint64_t xorWords(const char* words, std::size_t count) {
  using Word = std::uint64_t;
  constexpr std::size_t kWordsPerVector = Vector::kWidth / sizeof(Word);
  auto even = Vector::fill(0);
  auto odd = even;
  std::size_t done = 0;
  for (; count - done >= 2 * kWordsPerVector; done += 2 * kWordsPerVector) {
    const char* at = words + done * sizeof(Word);
    even = Vector::differ(even, Vector::load(at));
    odd = Vector::differ(odd, Vector::load(at + Vector::kWidth));
  }
  char lanes[Vector::kWidth];
  Vector::store(lanes, Vector::differ(even, odd));
  Word sum = 0;
  for (std::size_t i = 0; i < kWordsPerVector; ++i) sum ^= loadWord<Word>(lanes + i * sizeof(Word));
  for (; done < count; ++done) sum ^= loadWord<Word>(words + done * sizeof(Word));
  return sum;
}

template <class Vector>
constexpr Kernels kernelsOver() {
  return {
      .findText = findText<Vector>,
      .findRegion = findRegion<Vector>,
      .findTag = findTag<Vector>,
      .findMark = findMark<Vector>,
      .markTags = markTags<Vector>,
      .tagMarksPay = Vector::kWidth > 16,  // as measured
      .skipWhiteSpace = skipWhiteSpace<Vector>,
      .xorWords = xorWords<Vector>,
      .countUtf8Pairs = countUtf8Pairs<Vector>,
      .copyAscii = copyAscii<Vector>,
      .countLineEnds = countLineEnds<Vector>,
      .holdsEither = holdsEither<typename Vector::Short>,
      .decodeUrl = decodeUrl<typename Vector::Short>,
      .encodeUrl = encodeUrl<typename Vector::Short>,
      .findStyleMark = findStyleMark<Vector>,
      .findStringMark = findMarkOf<Vector, StringMarks>,
      .findUrlMark = findMarkOf<Vector, UrlMarks>,
      .urlBytes = urlBytes<Vector>,
  };
}

}  // namespace
}  // namespace pagescan::internal

#endif
