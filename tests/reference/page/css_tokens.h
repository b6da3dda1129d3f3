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
    cdo,  // <!--
    cdc,  // -->
    hash,
    number,
    percentage,
    dimension,
    delimiter,  // one character: `code`
  };

  Kind kind = Kind::delimiter;
  char32_t code = 0;
  std::uint32_t tokenBegin = 0;
  std::uint32_t tokenEnd = 0;
  // Of an ident, function, at-keyword or hash, and the unit of a dimension.
  std::string written;  // its escapes decoded
  std::string name;     // in lower case, too
  bool isId = false;    // of a hash: whether what is after the "#" is an identifier
  // Of a number, percentage or dimension.
  double number = 0;
  char sign = 0;  // "+" or "-" where one is written
  bool isInteger = false;
  // Of a string or url: what it spells, and where.
  Text value;
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

std::vector<CssToken> cssTokens(const Text& text);

}  // namespace reference::page

#endif
