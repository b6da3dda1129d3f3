// A backtracking matcher of the small pattern language.
//
// Literal bytes; classes in brackets with ranges; in both the escapes \t, \r and \n, and a
// backslash before any other byte for that byte; "*", "+" and "?" after either; "^" as a pattern's
// first byte, which holds at offset 0 of the text alone. No alternation, groups, negated classes or
// back-references.
#ifndef PAGESCAN_TESTS_REFERENCE_REGEXP_H
#define PAGESCAN_TESTS_REFERENCE_REGEXP_H

#include <cstddef>
#include <string>

#include "reference/classic/strings.h"

namespace reference {

struct Match {
  std::size_t position = npos;
  std::size_t length = 0;
  bool operator==(const Match&) const = default;
};

// The match that begins first at or after start, and of these the longest. The position is npos
// where there is none, or where start lies beyond the length.
Match search(const std::string& text, const std::string& pattern, std::size_t start);

}  // namespace reference

#endif
