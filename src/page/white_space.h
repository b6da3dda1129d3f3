// Steps over bytes of a set in a text, by offset; and white space.
#ifndef PAGESCAN_PAGE_WHITE_SPACE_H
#define PAGESCAN_PAGE_WHITE_SPACE_H

#include <cstddef>
#include <string_view>

#include "base/byte_class.h"
#include "encoding/ascii.h"

namespace pagescan::internal {

// The first place from `at` on that holds a byte of the set, or no byte of it; or the size.
inline std::size_t findIn(std::string_view text, std::size_t at, const ByteClass& bytes) {
  while (at < text.size() && !bytes.contains(text[at])) ++at;
  return at;
}
inline std::size_t skipAll(std::string_view text, std::size_t at, const ByteClass& bytes) {
  while (at < text.size() && bytes.contains(text[at])) ++at;
  return at;
}

// Whether a text is empty or white space alone.
inline bool isBlank(std::string_view text) {
  return skipAll(text, 0, kAsciiWhiteSpace) == text.size();
}

}  // namespace pagescan::internal

#endif
