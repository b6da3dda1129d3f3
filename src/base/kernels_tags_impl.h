// The kernel that marks what matters in tags. Included by kernels_impl.h alone.
#ifndef PAGESCAN_BASE_KERNELS_TAGS_IMPL_H
#define PAGESCAN_BASE_KERNELS_TAGS_IMPL_H

#include <cstddef>
#include <cstdint>

#include "base/kernels.h"

namespace pagescan::internal {
namespace {

// A bit for each byte of a block; bytesOf(vector) tells which count.
template <class Vector, class BytesOf>
std::uint64_t marksOfBlock(const char* block, const BytesOf& bytesOf) {
  std::uint64_t marks = 0;
  for (std::size_t i = 0; i < TagMarks::kBlock; i += Vector::kWidth) {
    marks |= std::uint64_t{Vector::mask(bytesOf(Vector::load(block + i)))} << i;
  }
  return marks;
}

template <class Vector>
void markTags(const char* blocks, std::size_t count, TagMarks& marks) {
  using Type = typename Vector::Type;
  const auto is = [](Type bytes, char c) { return Vector::equal(bytes, Vector::fill(c)); };
  const auto isOpening = [&](Type bytes) { return is(bytes, '<'); };
  const auto isQuote = [&](Type bytes) { return is(bytes, '"'); };
  const auto endsName = [&](Type bytes) {
    const Type lines = Vector::either(is(bytes, '\n'), is(bytes, '\r'));
    const Type blanks = Vector::either(is(bytes, ' '), is(bytes, '\t'));
    const Type space = Vector::either(Vector::either(lines, blanks), is(bytes, '\f'));
    const Type rest = Vector::either(is(bytes, '>'), is(bytes, '='));
    return Vector::either(Vector::either(space, rest), is(bytes, '/'));
  };
  for (std::size_t i = 0; i < count; ++i, blocks += TagMarks::kBlock) {
    marks.openings[i] = marksOfBlock<Vector>(blocks, isOpening);
    marks.nameEnds[i] = marksOfBlock<Vector>(blocks, endsName);
    marks.quotes[i] = marksOfBlock<Vector>(blocks, isQuote);
  }
}

}  // namespace
}  // namespace pagescan::internal

#endif
