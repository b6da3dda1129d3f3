#include "page/marked_bytes.h"

#include <algorithm>

#include "page/tag_scanner.h"

namespace pagescan::internal {

void MarkedBytes::mark(const char* from) {
  const auto blocks = static_cast<std::size_t>(end_ - from) / TagMarks::kBlock;
  const std::size_t count = std::min(blocks, TagMarks::kMostBlocks);
  kernels().markTags(from, count, marks_);
  marks_.openings[count] = marks_.nameEnds[count] = marks_.quotes[count] = 0;
  begin_ = from;
  marked_ = count * TagMarks::kBlock;
}

ScannedName MarkedBytes::tagNameFarther(const char* name) {
  return markFrom(name) ? tagName(name) : scanTagName(name, end_);
}

ScannedName MarkedBytes::attributeNameFarther(const char* name) {
  return markFrom(name) ? attributeName(name) : scanAttributeName(name, end_);
}

// What is text for long needs no marks: they start again at the next tag.
const char* MarkedBytes::openingFarther(const char* from) {
  const auto place = static_cast<std::size_t>(from - begin_);
  if (place < marked_) {
    for (auto i = place / TagMarks::kBlock + 1; i < marked_ / TagMarks::kBlock; ++i) {
      if (marks_.openings[i] == 0) continue;
      return begin_ + i * TagMarks::kBlock + std::countr_zero(marks_.openings[i]);
    }
    from = begin_ + marked_;
  }
  const char* const found = skipTo(from, end_, '<');
  markFrom(found);
  return found;
}

const char* MarkedBytes::quoteFarther(const char* from, char quote) {
  if (quote == '"' && markFrom(from)) return this->quote(from, quote);
  return skipTo(from, end_, quote);
}

}  // namespace pagescan::internal
