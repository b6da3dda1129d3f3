// Finds regions of a text by their opening and closing delimiters.
#ifndef PAGESCAN_BASE_REGION_FINDER_H
#define PAGESCAN_BASE_REGION_FINDER_H

#include <string_view>

#include "base/search.h"

namespace pagescan {

// From the first byte of the opening delimiter to the first one of the closing delimiter.
struct Region {
  std::size_t start;
  std::size_t close;
};

// Delimiters are matched ignoring case. Where the two have some bytes in common ("--" in "<!--" and
// "-->"), these are what is searched for, so that both are found in one reading of the text.
class RegionFinder {
 public:
  // The delimiters must outlive the finder.
  RegionFinder(std::string_view open, std::string_view close);

  // The first `close` at or after `pos` and the first `open` there. False when there is no `close`,
  // or when no `open` begins before it.
  // Cost   linear in the bytes up to the `close`, or in the text when there is none.
  bool find(std::string_view text, std::size_t pos, Region& region) const;

 private:
  bool findByCore(const char* from, const char* end, const char*& open, const char*& close) const;
  bool findApart(const char* from, const char* end, const char*& open, const char*& close) const;

  CaselessText open_;
  CaselessText close_;
  CaselessText core_;  // empty when the two are searched for apart
  std::size_t coreInOpen_ = 0;
  std::size_t coreInClose_ = 0;
};

}  // namespace pagescan

#endif
