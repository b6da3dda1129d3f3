// Small questions about attribute values: words, and texts without regard to ASCII case.
#ifndef PAGESCAN_PAGE_WORDS_H
#define PAGESCAN_PAGE_WORDS_H

#include <cstddef>
#include <string_view>

#include "base/byte_class.h"
#include "page/white_space.h"

namespace pagescan::internal {

// Whether two texts are equal, ASCII case ignored.
constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (toLower(a[i]) != toLower(b[i])) return false;
  }
  return true;
}

inline std::string_view withoutSpaceAround(std::string_view text) {
  text.remove_prefix(skipAll(text, 0, kAsciiWhiteSpace));
  while (!text.empty() && kAsciiWhiteSpace.contains(text.back())) text.remove_suffix(1);
  return text;
}

// Takes the next word of a list between white space off the front of `text`; empty at the end.
inline std::string_view takeWord(std::string_view& text) {
  const std::size_t begin = skipAll(text, 0, kAsciiWhiteSpace);
  const std::size_t end = findIn(text, begin, kAsciiWhiteSpace);
  const std::string_view word = text.substr(begin, end - begin);
  text.remove_prefix(end);
  return word;
}

// Whether one of the words of a list is `word`, ASCII case ignored.
inline bool hasWord(std::string_view list, std::string_view word) {
  for (std::string_view next = takeWord(list); !next.empty(); next = takeWord(list)) {
    if (equalsIgnoringCase(next, word)) return true;
  }
  return false;
}

}  // namespace pagescan::internal

#endif
