// The tokens of CSS that are passed over as a whole: strings, urls without quotes, comments.
//
// Texts and offsets are those of css_characters.h.
// Source   CSS Syntax Module Level 3, 4.3 "Tokenizer Algorithms"
#ifndef PAGESCAN_PAGE_CSS_TOKENS_H
#define PAGESCAN_PAGE_CSS_TOKENS_H

#include <cstddef>
#include <string_view>

namespace pagescan::internal {

// Where the content of a string or url ends, and where what follows the token begins.
struct CssContentEnd {
  static constexpr std::size_t kBad = static_cast<std::size_t>(-1);

  std::size_t end;  // kBad: the token is a bad one and has no content
  std::size_t next;
};

// Reads a string. A new line breaks it, and is what follows.
// begin    after its opening quote
CssContentEnd readCssString(std::string_view css, std::size_t begin);

// Reads a url without quotes up to its ")".
// begin    after "url(" and its white space
CssContentEnd readCssUrl(std::string_view css, std::size_t begin);

// After the comment that begins at `at`.
std::size_t cssCommentEnd(std::string_view css, std::size_t at);

// After the white space, comments, "<!--" and "-->" at `at`.
std::size_t cssBlankEnd(std::string_view css, std::size_t at);

}  // namespace pagescan::internal

#endif
