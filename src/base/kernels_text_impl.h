// Kernels of the text conversions, over the vector types that kernels_impl.h describes.
#ifndef PAGESCAN_BASE_KERNELS_TEXT_IMPL_H
#define PAGESCAN_BASE_KERNELS_TEXT_IMPL_H

#include <bit>
#include <cstddef>
#include <cstring>

#include "base/kernels.h"
#include "base/percent.h"
#include "base/words.h"

namespace pagescan::internal {
namespace {

// The kinds of bytes as ranges of signed numbers: continuation, lead, ASCII.
constexpr char kFirstLead = -64;
constexpr char kFirstAscii = 0;

inline void countUtf8Pair(char previous, char current, PairCount& pairs) {
  const bool isContinuation = current < kFirstLead;
  if (previous >= kFirstAscii) {
    pairs.bad += isContinuation ? 1 : 0;
  } else if (previous >= kFirstLead) {
    ++(isContinuation ? pairs.good : pairs.bad);
  }
}

// Counts in every byte lane; a lane holds up to 255.
template <class Vector>
class PairLanes {
 public:
  void count(const char* current) {
    const auto continuation = Vector::less(Vector::load(current), firstLead_);
    const auto previous = Vector::load(current - 1);
    const auto afterContinuation = Vector::less(previous, firstLead_);
    const auto afterLead = Vector::without(Vector::less(previous, firstAscii_), afterContinuation);
    good_ = Vector::minus(good_, Vector::both(continuation, afterLead));
    bad_ = Vector::minus(
        bad_, Vector::without(Vector::differ(continuation, afterLead), afterContinuation));
  }

  void addTo(PairCount& pairs) {
    pairs.good += Vector::sum(good_);
    pairs.bad += Vector::sum(bad_);
    good_ = bad_ = Vector::fill(0);
  }

 private:
  typename Vector::Type firstLead_ = Vector::fill(kFirstLead);
  typename Vector::Type firstAscii_ = Vector::fill(kFirstAscii);
  typename Vector::Type good_ = Vector::fill(0);
  typename Vector::Type bad_ = Vector::fill(0);
};

template <class Vector>
bool isAscii(const char* at) {
  constexpr std::size_t kWidth = Vector::kWidth;
  const auto low = Vector::either(Vector::load(at), Vector::load(at + kWidth));
  const auto high = Vector::either(Vector::load(at + 2 * kWidth), Vector::load(at + 3 * kWidth));
  return Vector::mask(Vector::either(low, high)) == 0;
}

template <class Vector>
PairCount countUtf8Pairs(const char* begin, const char* end, std::size_t mostBad) {
  constexpr auto kBlock = static_cast<std::ptrdiff_t>(4 * Vector::kWidth);
  constexpr int kBlocksPerSum = 63;
  PairCount pairs{};
  PairLanes<Vector> lanes;
  const char* at = begin + 1;
  while (end - at >= kBlock && pairs.bad <= mostBad) {
    for (int blocks = 0; blocks < kBlocksPerSum && end - at >= kBlock; at += kBlock) {
      if (at[-1] >= kFirstAscii && isAscii<Vector>(at)) continue;
      for (std::ptrdiff_t i = 0; i < kBlock; i += kBlock / 4) lanes.count(at + i);
      ++blocks;
    }
    lanes.addTo(pairs);
  }
  for (; at < end && pairs.bad <= mostBad; ++at) countUtf8Pair(at[-1], *at, pairs);
  return pairs;
}

// Copies one vector and returns how many of its bytes come before the first one that is not ASCII.
template <class Vector>
std::ptrdiff_t copyAsciiVector(const char* begin, char* out) {
  const auto bytes = Vector::load(begin);
  Vector::store(out, bytes);
  const auto others = Vector::mask(bytes);
  return others == 0 ? static_cast<std::ptrdiff_t>(Vector::kWidth) : std::countr_zero(others);
}

// Copies four vectors and returns whether all are ASCII.
template <class Vector>
bool copyAsciiBlock(const char* begin, char* out) {
  constexpr std::size_t kWidth = Vector::kWidth;
  const auto a = Vector::load(begin);
  const auto b = Vector::load(begin + kWidth);
  const auto c = Vector::load(begin + 2 * kWidth);
  const auto d = Vector::load(begin + 3 * kWidth);
  Vector::store(out, a);
  Vector::store(out + kWidth, b);
  Vector::store(out + 2 * kWidth, c);
  Vector::store(out + 3 * kWidth, d);
  return Vector::mask(Vector::either(Vector::either(a, b), Vector::either(c, d))) == 0;
}

template <class Vector>
const char* copyAscii(const char* begin, const char* end, char* out) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  // Other bytes come close together as a rule: one vector before four at once.
  bool isFirst = true;
  while (end - begin >= kWidth) {
    const std::ptrdiff_t copied = copyAsciiVector<Vector>(begin, out);
    begin += copied;
    out += copied;
    if (copied < kWidth) return begin;
    while (isFirst && end - begin >= 4 * kWidth && copyAsciiBlock<Vector>(begin, out)) {
      begin += 4 * kWidth;
      out += 4 * kWidth;
    }
    isFirst = false;
  }
  while (begin < end && *begin >= kFirstAscii) *out++ = *begin++;
  return begin;
}

// Whether one of the bytes of a word is `c`.
inline bool holds(std::uint64_t word, char c) {
  constexpr std::uint64_t kOnes = ~std::uint64_t{0} / 255;
  constexpr std::uint64_t kLowBits = kOnes * 0x7f;  // all but the top one of each byte
  const std::uint64_t differences = word ^ (kOnes * static_cast<unsigned char>(c));
  // The top bit of each byte that is not 0 gets set.
  return (((differences & kLowBits) + kLowBits) | differences | kLowBits) != ~std::uint64_t{0};
}

// Less than 16 bytes: in two words that may overlap.
inline bool holdsEitherShort(const char* begin, const char* end, char a, char b) {
  const auto isIn = [&](std::uint64_t word) { return holds(word, a) || holds(word, b); };
  if (end - begin >= 8) {
    return isIn(loadWord<std::uint64_t>(begin)) || isIn(loadWord<std::uint64_t>(end - 8));
  }
  if (end - begin >= 4) {
    return isIn(std::uint64_t{loadWord<std::uint32_t>(begin)} << 32 |
                loadWord<std::uint32_t>(end - 4));
  }
  for (; begin < end; ++begin) {
    if (*begin == a || *begin == b) return true;
  }
  return false;
}

template <class Vector>
bool holdsEither(const char* begin, const char* end, char a, char b) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  if (end - begin < kWidth) return holdsEitherShort(begin, end, a, b);
  const auto isIn = [first = Vector::fill(a), second = Vector::fill(b)](const char* at) {
    const auto bytes = Vector::load(at);
    const auto found = Vector::either(Vector::equal(bytes, first), Vector::equal(bytes, second));
    return Vector::mask(found) != 0;
  };
  for (; end - begin > kWidth; begin += kWidth) {
    if (isIn(begin)) return true;
  }
  return isIn(end - kWidth);
}

// Copies up to the first "%", or as far as vectors go, and returns whether one was met.
template <class Vector>
bool copyUpToPercent(UrlDecoding& at, const char* end, char plus) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  const auto change = Vector::fill(static_cast<char>('+' ^ plus));
  const char* const start = at.source;
  auto pluses = Vector::fill(0);
  typename Vector::Mask percents = 0;
  while (percents == 0 && at.source < end) {
    if (const auto missing = kWidth - (end - at.source); missing > 0) {
      // The rest, with bytes before it that were copied already.
      if (at.source - start < missing) break;
      at.source -= missing;
      at.out -= missing;
    }
    const auto bytes = Vector::load(at.source);
    const auto isPlus = Vector::equal(bytes, Vector::fill('+'));
    Vector::store(at.out, Vector::differ(bytes, Vector::both(isPlus, change)));
    pluses = Vector::either(pluses, isPlus);
    percents = Vector::mask(Vector::equal(bytes, Vector::fill('%')));
    const auto copied = percents == 0 ? kWidth : std::countr_zero(percents);
    at.source += copied;
    at.out += copied;
  }
  // One after the "%" counts as well: it will be met in its turn.
  at.changed |= plus != '+' && Vector::mask(pluses) != 0;
  return percents != 0;
}

template <class Vector>
UrlDecoding decodeUrl(const char* begin, const char* end, char* out, char plus) {
  UrlDecoding at{begin, out, false};
  while (at.source < end) {
    if (*at.source == '%') {
      if (!isEscape(at.source, end)) break;
      *at.out++ = static_cast<char>(escapedByte(at.source));
      at.source += kEscapeLength;
      at.changed = true;
    } else if (!copyUpToPercent<Vector>(at, end, plus)) {
      while (at.source < end && *at.source != '%') {
        at.changed |= *at.source == '+' && plus != '+';
        *at.out++ = *at.source == '+' ? plus : *at.source;
        ++at.source;
      }
    }
  }
  return at;
}

// How to close the gaps in four cells of four bytes, "%", two digits and one more: of an escape the
// first three bytes stay, of other cells the first. One row for each set of escapes.
struct CellPacking {
  alignas(16) char places[16][16];
  unsigned char length[16];
};

inline constexpr CellPacking kCellPacking = [] {
  CellPacking packing{};
  for (unsigned escapes = 0; escapes < 16; ++escapes) {
    auto& length = packing.length[escapes];
    for (unsigned cell = 0; cell < 4; ++cell) {
      const unsigned bytes = (escapes >> cell & 1U) != 0 ? 3 : 1;
      for (unsigned i = 0; i < bytes; ++i) {
        packing.places[escapes][length++] = static_cast<char>(4 * cell + i);
      }
    }
  }
  return packing;
}();

template <class Vector>
char* packCells(typename Vector::Type cells, unsigned escapes, char* out) {
  const unsigned set = escapes & 15U;
  Vector::store(out, Vector::shuffle(cells, Vector::load(kCellPacking.places[set])));
  return out + kCellPacking.length[set];
}

// Sixteen bytes at a time, over vectors with a shuffle: each byte becomes a cell, the cells are
// packed. Returns what is left over, less than a vector.
template <class Vector>
UrlEncoded encodeVectors(const UrlForms& forms, const char* begin, const char* end, char* out) {
  const auto keepingRows = Vector::load(forms.keepingRows.data());
  const auto rowBits = Vector::load(UrlForms::kRowBits.data());
  const auto digits = Vector::load(forms.digits.data());
  const auto blank = Vector::fill(' ');
  const auto blankChange = Vector::fill(static_cast<char>(' ' ^ forms.keptBlank));
  for (; end - begin >= 16; begin += 16) {
    const auto bytes = Vector::load(begin);
    const auto low = Vector::lowNibbles(bytes);
    const auto high = Vector::highNibbles(bytes);
    const auto isKept =
        Vector::both(Vector::shuffle(keepingRows, low), Vector::shuffle(rowBits, high));
    const auto isEscaped = Vector::equal(isKept, Vector::fill(0));
    const auto kept = Vector::differ(bytes, Vector::both(Vector::equal(bytes, blank), blankChange));
    const unsigned escapes = Vector::mask(isEscaped);
    if (escapes == 0) {
      Vector::store(out, kept);
      out += 16;
      continue;
    }
    const auto first = Vector::select(isEscaped, Vector::fill('%'), kept);
    const auto second = Vector::shuffle(digits, high);
    const auto third = Vector::shuffle(digits, low);
    const auto lowPairs = Vector::interleaveLow(first, second);
    const auto highPairs = Vector::interleaveHigh(first, second);
    const auto lowRest = Vector::interleaveLow(third, third);
    const auto highRest = Vector::interleaveHigh(third, third);
    out = packCells<Vector>(Vector::interleaveLowPairs(lowPairs, lowRest), escapes, out);
    out = packCells<Vector>(Vector::interleaveHighPairs(lowPairs, lowRest), escapes >> 4, out);
    out = packCells<Vector>(Vector::interleaveLowPairs(highPairs, highRest), escapes >> 8, out);
    out = packCells<Vector>(Vector::interleaveHighPairs(highPairs, highRest), escapes >> 12, out);
  }
  return {begin, out};
}

template <class Vector>
char* encodeUrl(const UrlForms& forms, const char* begin, const char* end, char* out) {
  if constexpr (requires(typename Vector::Type v) { Vector::shuffle(v, v); }) {
    const UrlEncoded run = encodeVectors<Vector>(forms, begin, end, out);
    begin = run.source;
    out = run.out;
  }
  for (; begin < end; ++begin) {
    const UrlForm& form = forms.forms[toByte(*begin)];
    std::memcpy(out, &form, sizeof form);
    out += form.length;
  }
  return out;
}

}  // namespace
}  // namespace pagescan::internal

#endif
