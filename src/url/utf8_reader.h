// Reads UTF-8 as the Encoding Standard's decoder does.
#ifndef PAGESCAN_URL_UTF8_READER_H
#define PAGESCAN_URL_UTF8_READER_H

#include <string_view>

#include "encoding/utf8.h"

namespace pagescan::internal {

// The character at `at`, which moves past it. Of malformed bytes, the longest beginning of a
// character counts as one U+FFFD.
// at   less than text.size()
char32_t readUtf8(std::string_view text, std::size_t& at);

// Whether every character is well-formed.
bool isWellFormedUtf8(std::string_view text);

}  // namespace pagescan::internal

#endif
