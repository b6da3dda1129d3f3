// A search from a place that only moves forward: what was found is kept until the place has passed
// it, so that all the searches together read the text once.
#ifndef PAGESCAN_BASE_FORWARD_SEARCH_H
#define PAGESCAN_BASE_FORWARD_SEARCH_H

#include <utility>

#include "base/search.h"

namespace pagescan::internal {

// Find is called with (begin, end) and returns the first place that fits, or `end`.
template <class Find>
class ForwardSearch {
 public:
  ForwardSearch(const char* end, Find find) : find_(std::move(find)), end_(end) {}

  // The first occurrence at or after `at`, or the end. `at` must not lie before an earlier one.
  const char* from(const char* at) {
    if (!found_ || found_ < at) found_ = find_(at, end_);
    return found_;
  }

 private:
  Find find_;
  const char* end_;
  const char* found_ = nullptr;
};

// Finds a text ignoring case, or exactly where it holds no letter.
class TextFinder {
 public:
  explicit TextFinder(const CaselessText& text) : text_(text) {}

  const char* operator()(const char* begin, const char* end) const {
    return findIgnoringCase(begin, end, text_);
  }

 private:
  CaselessText text_;
};

using ForwardTextSearch = ForwardSearch<TextFinder>;

// Finds a byte, which stands nearby as a rule.
class ByteFinder {
 public:
  explicit ByteFinder(char byte) : byte_(byte) {}

  const char* operator()(const char* begin, const char* end) const {
    return findNearbyByte(begin, end, byte_);
  }

 private:
  char byte_;
};

using ForwardByteSearch = ForwardSearch<ByteFinder>;

}  // namespace pagescan::internal

#endif
