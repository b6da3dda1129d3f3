// References while they are being found.
#ifndef PAGESCAN_PAGE_REFERENCE_LIST_H
#define PAGESCAN_PAGE_REFERENCE_LIST_H

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "pagescan/page.h"

namespace pagescan::internal {

// Grows by blocks, so that the peak is twice what the references need, whatever their number: the
// blocks and the vector that take() makes of them.
class ReferenceList {
 public:
  std::size_t size() const { return size_; }

  // i    less than size()
  Reference& operator[](std::size_t i) { return blocks_[i / kBlock][i % kBlock]; }
  const Reference& operator[](std::size_t i) const { return blocks_[i / kBlock][i % kBlock]; }

  void append(const Reference& reference) {
    if (next_ == blockEnd_) startBlock();
    *next_++ = reference;
    ++size_;
  }

  // Drops all from index `size` on.
  void truncate(std::size_t size);

  // Moves them out, in the order of span.begin, then of span.end.
  // Cost   linear where they came in that order, as nearly always
  std::vector<Reference> take();

 private:
  static constexpr std::size_t kBlock = 256;

  // Goes on in the block that the next reference belongs into.
  void startBlock();

  std::vector<std::unique_ptr<Reference[]>> blocks_;
  std::size_t size_ = 0;
  Reference* next_ = nullptr;  // where the next one goes, in a block that ends there:
  Reference* blockEnd_ = nullptr;
};

}  // namespace pagescan::internal

#endif
