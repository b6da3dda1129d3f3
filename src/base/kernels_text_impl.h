// Kernels of the text conversions, over the vector types that kernels_impl.h describes.
#ifndef PAGESCAN_BASE_KERNELS_TEXT_IMPL_H
#define PAGESCAN_BASE_KERNELS_TEXT_IMPL_H

#include <bit>
#include <cstddef>

#include "base/kernels.h"

namespace pagescan {
namespace {

// The kinds of bytes as ranges of signed numbers: continuation, lead, ASCII.
constexpr char kFirstLead = -64;
constexpr char kFirstAscii = 0;

void countUtf8Pair(char previous, char current, PairCount& pairs) {
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

template <class Vector>
const char* copyAscii(const char* begin, const char* end, char* out) {
  constexpr auto kWidth = static_cast<std::ptrdiff_t>(Vector::kWidth);
  for (; end - begin >= kWidth; begin += kWidth, out += kWidth) {
    const auto bytes = Vector::load(begin);
    Vector::store(out, bytes);
    if (const auto others = Vector::mask(bytes)) return begin + std::countr_zero(others);
  }
  while (begin < end && *begin >= kFirstAscii) *out++ = *begin++;
  return begin;
}

}  // namespace
}  // namespace pagescan

#endif
