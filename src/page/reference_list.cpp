#include "page/reference_list.h"

#include <algorithm>
#include <utility>

namespace pagescan::internal {
namespace {

bool standsBefore(const Reference& a, const Reference& b) {
  return std::pair(a.span.begin, a.span.end) < std::pair(b.span.begin, b.span.end);
}

}  // namespace

void ReferenceList::startBlock() {
  const std::size_t block = size_ / kBlock;
  if (block == blocks_.size()) blocks_.push_back(std::make_unique<Reference[]>(kBlock));
  next_ = blocks_[block].get() + size_ % kBlock;
  blockEnd_ = blocks_[block].get() + kBlock;
}

void ReferenceList::truncate(std::size_t size) {
  size_ = size;
  next_ = blockEnd_ = nullptr;
}

std::vector<Reference> ReferenceList::take() {
  std::vector<Reference> all;
  all.reserve(size_);
  for (std::size_t i = 0; i < size_; i += kBlock) {
    const Reference* const block = blocks_[i / kBlock].get();
    all.insert(all.end(), block, block + std::min(kBlock, size_ - i));
  }
  blocks_.clear();
  truncate(0);
  // Text of an SVG style element is read after the elements inside it.
  if (!std::is_sorted(all.begin(), all.end(), standsBefore)) {
    std::stable_sort(all.begin(), all.end(), standsBefore);
  }
  return all;
}

}  // namespace pagescan::internal
