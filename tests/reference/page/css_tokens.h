// CSS Syntax 3, section 4: a style text as tokens, a code point at a time.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_CSS_TOKENS_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_CSS_TOKENS_H

#include <cstdint>
#include <string>
#include <vector>

#include "reference/page/text.h"

namespace reference::page {

struct CssToken {
  enum class Kind {
    whitespace,
    ident,
    function,  // its "(" included
    atKeyword,
    string,
    badString,
    url,
    badUrl,
    comment,
    cdo,        // <!--
    cdc,        // -->
    other,      // numbers, hashes
    delimiter,  // one character: `code`
  };

  Kind kind = Kind::other;
  std::string name;  // of an ident, function or at-keyword, in lower case
  char32_t code = 0;
  // Of a string or url: what it spells, and where.
  Text value;
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

std::vector<CssToken> cssTokens(const Text& text);

}  // namespace reference::page

#endif
