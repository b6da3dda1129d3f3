// The kernel that counts lines. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_LINES_IMPL_H
#define PAGESCAN_BASE_KERNELS_LINES_IMPL_H

#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/kernels.h"

namespace pagescan::internal {
namespace {

constexpr std::ptrdiff_t kLinesBlock = 64;

// A bit for each of 64 bytes that ends a line. The byte after them is looked at, too.
template <class Vector>
std::uint64_t lineEndsInBlock(const char* block) {
  const auto lf = Vector::fill('\n');
  const auto cr = Vector::fill('\r');
  std::uint64_t ends = 0;
  for (std::size_t i = 0; i < kLinesBlock; i += Vector::kWidth) {
    const auto bytes = Vector::load(block + i);
    const auto loneCrs =
        Vector::without(Vector::equal(bytes, cr), Vector::equal(Vector::load(block + i + 1), lf));
    ends |= std::uint64_t{Vector::mask(Vector::either(Vector::equal(bytes, lf), loneCrs))} << i;
  }
  return ends;
}

template <class Vector>
[[gnu::flatten]] LineEnds countLineEnds(const char* begin, const char* end, const char* limit) {
  LineEnds found = {0, nullptr};
  const char* at = begin;
  for (; at < end && limit - at > kLinesBlock; at += kLinesBlock) {
    std::uint64_t ends = lineEndsInBlock<Vector>(at);
    if (end - at < kLinesBlock) ends &= ~(~std::uint64_t{0} << (end - at));
    found.count += static_cast<std::size_t>(std::popcount(ends));
    if (ends != 0) found.last = at + std::bit_width(ends) - 1;
  }
  for (; at < end; ++at) {
    const bool isBeforeLf = limit - at > 1 && at[1] == '\n';
    if (*at != '\n' && (*at != '\r' || isBeforeLf)) continue;
    ++found.count;
    found.last = at;
  }
  return found;
}

}  // namespace
}  // namespace pagescan::internal

#endif
